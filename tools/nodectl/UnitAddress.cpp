#include "UnitAddress.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>
#include <system_error>

#include "Failure.h"
#include "Suggestion.h"

namespace nodectl {

namespace {

bool isPort(const std::string& text)
{
    std::uint16_t port = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, port);
    return error == std::errc() && rest == end && port != 0;
}

} // namespace

UnitAddress unitAddressFrom(const std::string& text)
{
    const std::size_t colon = text.rfind(':');
    if (colon != std::string::npos && colon != 0) {
        std::string host = text.substr(0, colon);
        std::string port = text.substr(colon + 1);
        const bool bracketed = host.starts_with('[') && host.ends_with(']') && host.size() > 2;
        if (isPort(port) && (bracketed || host.find_first_of(":[] \t") == std::string::npos)) {
            return {bracketed ? host.substr(1, host.size() - 2) : host, port};
        }
    }
    throw Failure(
        ExitCode::wrongUsage,
        fmt::format("--unit: {} is no HOST:PORT with a port of 1 to 65535, as 127.0.0.1:23043", inQuotes(text)));
}

std::string toString(const UnitAddress& address)
{
    const bool bracketed = address.host.find(':') != std::string::npos;
    return fmt::format("{}{}{}:{}", bracketed ? "[" : "", address.host, bracketed ? "]" : "", address.port);
}

} // namespace nodectl
