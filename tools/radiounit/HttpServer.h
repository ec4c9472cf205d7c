#pragma once

#include <asio/ip/tcp.hpp>
#include <atomic>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

#include "HostCheck.h"
#include "HttpRoute.h"
#include "Listener.h"
#include "WorkerPool.h"

namespace radiounit {

/// Serves JSON over HTTP, one request a connection. Accepting runs on the io thread, requests on worker threads; a
/// client that sends nothing holds none.
class HttpServer {
public:
    HttpServer(asio::ip::tcp::acceptor acceptor, std::vector<HttpRoute> routes);
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;
    ~HttpServer() { stop(); }

    asio::ip::tcp::endpoint endpoint() const { return m_listener.endpoint(); }

    void accept() { m_listener.accept(); }

    /// A route that waits for something says so with WorkerPool::Waiting.
    WorkerPool& workers() { return m_workers; }

    /// Takes no request any more, and returns when those in hand have been answered. Not on the io thread.
    void stop();

    /// Accepts nobody any more. On the io thread.
    void close() { m_listener.close(); }

private:
    void awaitRequest(asio::ip::tcp::socket socket);
    void take(asio::ip::tcp::socket& socket);
    void serve(int descriptor);

    Listener m_listener;
    const std::vector<HttpRoute> m_routes;
    const HostCheck m_hosts;

    std::mutex m_mutex;                   ///< guards the two members below, and that nobody touches a closed descriptor
    std::set<int> m_descriptors;          ///< of the connections whose request is in hand
    std::atomic<bool> m_stopping = false; ///< set under the mutex, read without it

    WorkerPool m_workers;
};

} // namespace radiounit
