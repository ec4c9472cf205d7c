#include "HostPort.h"

#include <asio/ip/address.hpp>
#include <charconv>
#include <fmt/format.h>

#include "Errors.h"

namespace radiounit {
namespace {

using asio::ip::tcp;

std::uint16_t parsePort(const std::string& option, const std::string& text, const std::string& port)
{
    std::uint16_t number = 0;
    const char* end = port.data() + port.size();
    const auto [stopped, error] = std::from_chars(port.data(), end, number);
    if (error != std::errc{} || stopped != end) {
        throw UsageError{fmt::format("{} {}: the port must be a number from 0 to 65535, not \"{}\"; 0 takes a free one",
                                     option, text, port)};
    }
    return number;
}

asio::ip::address resolve(const std::string& option, const std::string& host, bool allowRemote)
{
    asio::error_code error;
    if (auto address = asio::ip::make_address(host, error); !error) {
        return address;
    }
    if (host == "localhost") {
        return asio::ip::address_v4::loopback();
    }
    if (!allowRemote) {
        throw UsageError{fmt::format("{}: \"{}\" is not a loopback address; use 127.0.0.1, [::1] or localhost, or add "
                                     "--allow-remote to serve other machines",
                                     option, host)};
    }
    asio::io_context io;
    const auto found = tcp::resolver{io}.resolve(host, "", error);
    if (error || found.empty()) {
        throw UsageError{fmt::format("{}: host \"{}\" cannot be resolved ({}); give an address of this machine", option,
                                     host, error.message())};
    }
    return found.begin()->endpoint().address();
}

} // namespace

HostPort parseHostPort(const std::string& option, const std::string& text, bool allowRemote)
{
    const auto colon = text.rfind(':');
    std::string host = text.substr(0, colon);
    const bool bracketed = host.size() > 2 && host.front() == '[' && host.back() == ']';
    if (bracketed) {
        host = host.substr(1, host.size() - 2);
    }
    if (colon == std::string::npos || host.empty() || (!bracketed && host.find(':') != std::string::npos)) {
        throw UsageError{fmt::format(
            "{} {}: expected HOST:PORT such as 127.0.0.1:0, with an IPv6 address in brackets, or none", option, text)};
    }
    const std::uint16_t port = parsePort(option, text, text.substr(colon + 1));
    const auto address = resolve(option, host, allowRemote);
    if (!allowRemote && !address.is_loopback()) {
        throw UsageError{fmt::format("{}: {} is not a loopback address; other machines could reach the unit there. Use "
                                     "127.0.0.1 or [::1], or add --allow-remote",
                                     option, host)};
    }
    return {host, tcp::endpoint{address, port}};
}

std::string toText(const tcp::endpoint& endpoint)
{
    const auto address = endpoint.address().to_string();
    return endpoint.address().is_v6() ? fmt::format("[{}]:{}", address, endpoint.port())
                                      : fmt::format("{}:{}", address, endpoint.port());
}

tcp::acceptor listenOn(asio::io_context& io, const std::string& option, const tcp::endpoint& endpoint)
{
    try {
        return tcp::acceptor{io, endpoint, true};
    } catch (const std::system_error& error) {
        throw Failure{fmt::format("{} {}: {}; give another address, or port 0 for a free one", option, toText(endpoint),
                                  error.code().message())};
    }
}

} // namespace radiounit
