#pragma once

#include <asio/ip/tcp.hpp>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "DriverThread.h"
#include "Listener.h"
#include "NodeConnection.h"

namespace radiounit {

/// The simulated PCI link: nodes connect over TCP, what they send is delivered to the driver's callback, what the module
/// sends goes to each of them. Accepting and reading run on the io thread, deliveries on the driver's own thread,
/// sending on whoever sends.
///
/// To stop: `stopDelivering`, destroy the module, `joinDriver`, unload the module, `close`.
class LinkServer {
public:
    /// Gives one buffer to whoever registered with the driver.
    using Deliver = std::function<void(const char* data, unsigned length, unsigned deviceFlag)>;

    LinkServer(asio::ip::tcp::acceptor acceptor, Deliver deliver);

    asio::ip::tcp::endpoint endpoint() const { return m_listener.endpoint(); }

    /// Nodes can connect; until `startDelivering` each is read as far as one frame.
    void accept() { m_listener.accept(); }

    void startDelivering() { m_driver.start(); }
    void stopDelivering() { m_driver.stop(); }
    void joinDriver() { m_driver.join(); }

    /// Sends one buffer to every node; all of them see the buffers in the same order. From any thread.
    /// @return its length, -1 when no node is connected
    int send(const char* data, unsigned length);

    std::size_t nodes() const;

    /// Accepts nobody any more, and closes each connection once its node has read what waits for it. On the io thread.
    void close();

private:
    void add(asio::ip::tcp::socket socket);
    void deliver(const std::shared_ptr<NodeConnection>& connection, NodeConnection::Frame frame);

    Listener m_listener;
    const Deliver m_deliver;
    DriverThread m_driver;

    mutable std::mutex m_mutex; ///< guards the list, and the order in which buffers reach the nodes
    std::vector<std::shared_ptr<NodeConnection>> m_connections;
};

} // namespace radiounit
