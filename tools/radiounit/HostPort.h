#pragma once

#include <asio/ip/tcp.hpp>
#include <string>

namespace radiounit {

/// An address to listen on, as the command line gives it and as the socket needs it.
struct HostPort {
    std::string host; ///< as given, without the brackets of an IPv6 address
    asio::ip::tcp::endpoint endpoint;
};

/// Reads "HOST:PORT"; an IPv6 address stands in brackets. A host that is no address is `localhost` or, with
/// `allowRemote`, a name that the system resolves.
/// @throws UsageError for anything else, and for an address that is not loopback without `allowRemote`
HostPort parseHostPort(const std::string& option, const std::string& text, bool allowRemote);

/// "127.0.0.1:23043", "[::1]:23043".
std::string toText(const asio::ip::tcp::endpoint& endpoint);

/// A socket that listens on `endpoint`; `option` names the setting in the error.
/// @throws Failure naming the address and what to do, for example when it is in use
asio::ip::tcp::acceptor listenOn(asio::io_context& io, const std::string& option,
                                 const asio::ip::tcp::endpoint& endpoint);

} // namespace radiounit
