#include "HostCheck.h"

#include <algorithm>
#include <array>
#include <asio/ip/address.hpp>
#include <cctype>
#include <fmt/format.h>
#include <ifaddrs.h>
#include <memory>
#include <netinet/in.h>
#include <optional>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace radiounit {
namespace {

struct Authority {
    std::string host; ///< in lower case, without brackets
    std::string port; ///< empty where none is given
};

std::optional<Authority> split(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    const auto hostEnd = text.starts_with('[') ? text.find(']') : text.find(':');
    if (text.starts_with('[') && hostEnd == std::string::npos) {
        return std::nullopt;
    }
    const bool bracketed = text.starts_with('[');
    const std::string rest = hostEnd == std::string::npos ? "" : text.substr(hostEnd + (bracketed ? 1 : 0));
    if (!rest.empty() && !rest.starts_with(':')) {
        return std::nullopt;
    }
    return Authority{bracketed ? text.substr(1, hostEnd - 1) : text.substr(0, hostEnd),
                     rest.empty() ? "" : rest.substr(1)};
}

bool isInterfaceAddress(const asio::ip::address& address)
{
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) {
        return false;
    }
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> list{first, &freeifaddrs};
    for (const ifaddrs* one = first; one != nullptr; one = one->ifa_next) {
        if (one->ifa_addr == nullptr) {
            continue;
        }
        asio::ip::tcp::endpoint endpoint;
        const auto family = one->ifa_addr->sa_family;
        if (family == AF_INET || family == AF_INET6) {
            const std::size_t size = family == AF_INET ? sizeof(sockaddr_in) : sizeof(sockaddr_in6);
            std::copy_n(reinterpret_cast<const char*>(one->ifa_addr), size, reinterpret_cast<char*>(endpoint.data()));
            if (endpoint.address() == address) {
                return true;
            }
        }
    }
    return false;
}

bool isHostName(const std::string& host)
{
    std::array<char, 256> name{};
    const bool known = gethostname(name.data(), name.size() - 1) == 0;
    return known && split(name.data())->host == host;
}

} // namespace

bool HostCheck::isThisMachine(const std::string& authority) const
{
    const auto parts = split(authority);
    if (!parts) {
        return false;
    }
    if (parts->host == "localhost") {
        return true;
    }
    asio::error_code noAddress;
    const auto address = asio::ip::make_address(parts->host, noAddress);
    if (!noAddress && address.is_loopback()) {
        return true;
    }
    if (m_own.address().is_loopback()) {
        return false;
    }
    return noAddress ? isHostName(parts->host) : isInterfaceAddress(address);
}

bool HostCheck::isOwnOrigin(const std::string& origin) const
{
    constexpr std::string_view scheme = "http://";
    if (!origin.starts_with(scheme)) {
        return false;
    }
    const std::string authority = origin.substr(scheme.size());
    const auto parts = split(authority);
    constexpr const char* schemePort = "80";
    return parts && isThisMachine(authority) &&
           (parts->port.empty() ? schemePort : parts->port) == fmt::format("{}", m_own.port());
}

} // namespace radiounit
