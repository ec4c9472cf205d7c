#include "Listener.h"

namespace radiounit {
namespace {

/// How long accepting rests when the system has no descriptor left. Our own choice.
constexpr std::chrono::milliseconds rest{100};

} // namespace

Listener::Listener(asio::ip::tcp::acceptor acceptor, Accepted accepted)
    : m_acceptor{std::move(acceptor)},
      m_retry{m_acceptor.get_executor()},
      m_endpoint{m_acceptor.local_endpoint()},
      m_accepted{std::move(accepted)}
{
}

void Listener::accept()
{
    m_acceptor.async_accept([this](asio::error_code error, asio::ip::tcp::socket socket) {
        if (error == asio::error::operation_aborted) {
            return;
        }
        if (error) {
            acceptLater();
            return;
        }
        accept();
        m_accepted(std::move(socket));
    });
}

void Listener::acceptLater()
{
    m_retry.expires_after(rest);
    m_retry.async_wait([this](asio::error_code error) {
        if (!error) {
            accept();
        }
    });
}

void Listener::close()
{
    m_retry.cancel();
    asio::error_code ignored;
    m_acceptor.close(ignored);
}

} // namespace radiounit
