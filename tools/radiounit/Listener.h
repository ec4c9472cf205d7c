#pragma once

#include <asio/ip/tcp.hpp>
#include <asio/steady_timer.hpp>
#include <functional>

namespace radiounit {

/// Accepts connections on the io thread for as long as it is open, and rests for a while where the system has no
/// descriptor left for another one.
class Listener {
public:
    using Accepted = std::function<void(asio::ip::tcp::socket)>;

    Listener(asio::ip::tcp::acceptor acceptor, Accepted accepted);

    asio::ip::tcp::endpoint endpoint() const { return m_endpoint; }
    asio::any_io_executor executor() { return m_acceptor.get_executor(); }

    void accept();

    /// On the io thread.
    void close();

private:
    void acceptLater();

    asio::ip::tcp::acceptor m_acceptor;
    asio::steady_timer m_retry;
    const asio::ip::tcp::endpoint m_endpoint;
    const Accepted m_accepted;
};

} // namespace radiounit
