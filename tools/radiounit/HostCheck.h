#pragma once

#include <asio/ip/tcp.hpp>
#include <string>

namespace radiounit {

/// Tells requests to this machine from those that a foreign web page makes a browser send: a page's own name may be
/// made to point here, but the browser still tells that name, and the page's origin.
class HostCheck {
public:
    /// @param own where the interface listens; other machines' view of it counts only where it is no loopback address
    explicit HostCheck(asio::ip::tcp::endpoint own) : m_own{std::move(own)} {}

    /// @param authority "HOST" or "HOST:PORT"; any port, since it may have been forwarded
    bool isThisMachine(const std::string& authority) const;

    /// @param origin as browsers send it: scheme, host and port, or "null". Only the interface's own address passes.
    bool isOwnOrigin(const std::string& origin) const;

private:
    asio::ip::tcp::endpoint m_own;
};

} // namespace radiounit
