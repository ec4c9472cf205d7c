#pragma once

#include <stdexcept>
#include <string>

namespace nodectl {

/// What scripts see of a run; fixed for users.
enum class ExitCode : int {
    done = 0,
    refused = 1,     ///< no answer in time, or what was asked for cannot be done
    wrongUsage = 2,  ///< command line, message name or body
    noConnection = 3 ///< no unit there, or it went away
};

/// Ends a command. The text says what was wrong and what to do; it goes to standard error.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode exitCode, const std::string& text) : std::runtime_error(text), m_exitCode(exitCode) {}

    ExitCode exitCode() const { return m_exitCode; }

private:
    ExitCode m_exitCode;
};

} // namespace nodectl
