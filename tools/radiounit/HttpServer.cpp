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
constexpr std::chrono::seconds patience{10};          ///< for a request to arrive, and for an answer to be taken
constexpr std::chrono::milliseconds acceptRest{100};  ///< when the system has no descriptor left
constexpr std::size_t headerAllowance = 256U * 1024U; ///< bytes of request line, headers and chunk marks

} // namespace

HttpServer::HttpServer(asio::ip::tcp::acceptor acceptor, std::vector<HttpRoute> routes)
    : m_acceptor{std::move(acceptor)}, m_retry{m_acceptor.get_executor()}, m_routes{std::move(routes)},
      m_hosts{m_acceptor.local_endpoint()}, m_workers{workerCount}
{
}

void HttpServer::accept()
{
    m_acceptor.async_accept([this](asio::error_code error, asio::ip::tcp::socket socket) {
        if (error == asio::error::operation_aborted) {
            return;
        }
        if (error) {
            acceptLater();
            return;
        }
        awaitRequest(std::move(socket));
        accept();
    });
}

void HttpServer::acceptLater()
{
    m_retry.expires_after(acceptRest);
    m_retry.async_wait([this](asio::error_code error) {
        if (!error) {
            accept();
        }
    });
}

void HttpServer::awaitRequest(asio::ip::tcp::socket socket)
{
    struct Newcomer {
        asio::ip::tcp::socket socket;
        asio::steady_timer timer;
    };
    const auto newcomer = std::make_shared<Newcomer>(Newcomer{std::move(socket), asio::steady_timer{m_acceptor.get_executor()}});
    newcomer->timer.expires_after(patience);
    newcomer->timer.async_wait([newcomer](asio::error_code error) {
        if (!error) {
            newcomer->socket.close(error);
        }
    });
    newcomer->socket.async_wait(asio::ip::tcp::socket::wait_read, [this, newcomer](asio::error_code error) {
        newcomer->timer.cancel();
        if (error) {
            return;
        }
        const std::lock_guard lock{m_mutex};
        if (!m_stopping) {
            const int descriptor = newcomer->socket.release();
            m_descriptors.insert(descriptor);
            m_workers.run([this, descriptor] { serve(descriptor); });
        }
    });
}

void HttpServer::serve(int descriptor)
{
    std::function<void()> afterwards;
    {
        HttpStream stream{descriptor, patience, headerAllowance + HttpExchange::bodyLimit};
        afterwards = HttpExchange{m_routes, m_hosts}.run(stream);
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

void HttpServer::close()
{
    m_retry.cancel();
    asio::error_code ignored;
    m_acceptor.close(ignored);
}

} // namespace radiounit

#endif
