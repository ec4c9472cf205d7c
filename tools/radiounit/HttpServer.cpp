#include "CommandLine.h"

#if VORNIPC_WITH_CONTROL

#include "HttpServer.h"

#include <sys/socket.h>
#include <unistd.h>

#include "HttpExchange.h"
#include "HttpStream.h"

namespace radiounit {
namespace {

// Our own choices.
constexpr std::size_t workerCount = 16;
constexpr std::chrono::seconds patience{10};       ///< for a request to arrive, and for an answer to be taken
constexpr std::size_t headerAllowance = 1U << 18U; ///< bytes of request line, headers and chunk marks

} // namespace

HttpServer::HttpServer(asio::ip::tcp::acceptor acceptor, std::vector<HttpRoute> routes)
    : m_listener{std::move(acceptor), [this](asio::ip::tcp::socket socket) { awaitRequest(std::move(socket)); }},
      m_routes{std::move(routes)},
      m_hosts{m_listener.endpoint()},
      m_workers{workerCount}
{
}

void HttpServer::awaitRequest(asio::ip::tcp::socket socket)
{
    struct Newcomer {
        asio::ip::tcp::socket socket;
        asio::steady_timer timer;
    };
    const auto newcomer =
        std::make_shared<Newcomer>(Newcomer{std::move(socket), asio::steady_timer{m_listener.executor()}});
    newcomer->timer.expires_after(patience);
    newcomer->timer.async_wait([newcomer](asio::error_code error) {
        if (!error) {
            newcomer->socket.close(error);
        }
    });
    newcomer->socket.async_wait(asio::ip::tcp::socket::wait_read, [this, newcomer](asio::error_code error) {
        newcomer->timer.cancel();
        if (!error) {
            take(newcomer->socket);
        }
    });
}

/// The connection goes over to a worker.
void HttpServer::take(asio::ip::tcp::socket& socket)
{
    const std::lock_guard lock{m_mutex};
    if (!m_stopping) {
        const int descriptor = socket.release();
        m_descriptors.insert(descriptor);
        m_workers.run([this, descriptor] { serve(descriptor); });
    }
}

void HttpServer::serve(int descriptor)
{
    std::function<void()> afterwards;
    {
        HttpStream stream{descriptor, patience, headerAllowance + HttpExchange::bodyLimit, m_workers, m_stopping};
        try {
            afterwards = HttpExchange{m_routes, m_hosts}.run(stream);
        } catch (const WorkerPool::TooManyWaiting&) {
            // A slow client more than can be waited for: its connection goes.
        }
    }
    {
        const std::lock_guard lock{m_mutex};
        m_descriptors.erase(descriptor);
        ::close(descriptor);
    }
    if (afterwards) {
        afterwards();
    }
}

void HttpServer::stop()
{
    {
        const std::lock_guard lock{m_mutex};
        m_stopping = true;
        for (const int descriptor : m_descriptors) {
            shutdown(descriptor, SHUT_RD); // who is still being read ends, who is being answered gets the answer
        }
    }
    m_workers.finish();
}

} // namespace radiounit

#endif
