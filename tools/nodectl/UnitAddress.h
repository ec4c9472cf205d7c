#pragma once

#include <string>

namespace nodectl {

/// Where a radio unit's link listens.
struct UnitAddress {
    std::string host = "127.0.0.1";
    std::string port = "23043"; ///< the unit's default
};

/// "HOST:PORT", with an IPv6 address in brackets; both are names or numbers that need not be resolvable. Throws Failure
/// (wrong usage) for anything else.
UnitAddress unitAddressFrom(const std::string& text);

std::string toString(const UnitAddress& address);

} // namespace nodectl
