#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>

namespace radiounit {

/// The unit was asked for something that it does not do: exit code 2.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The unit could not do what it was asked for: exit code 1.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Tells whoever watches the unit; where nobody can be told, it runs on.
inline void report(const std::string& text)
{
    std::fputs(("radiounit: " + text + "\n").c_str(), stderr);
}

} // namespace radiounit
