#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

#include "Deadline.h"

/// One run of the node console, with what it writes. Every wait has a deadline; a run that is still going when this object
/// goes is killed.
class NodectlRun {
public:
    struct Outcome {
        int exitCode = -1; ///< -1 where the run was killed by a signal or by a deadline
        std::string out;
        std::string err;
    };

    /// @param input what stands on its standard input, at most the 64 kB that a pipe holds
    explicit NodectlRun(const std::vector<std::string>& arguments, const std::string& input = {});
    NodectlRun(const NodectlRun&) = delete;
    NodectlRun& operator=(const NodectlRun&) = delete;
    ~NodectlRun();

    /// Waits until standard output has the text; false where it has not in time.
    bool waitForOutput(const std::string& text);
    void signal(int number) const;
    Outcome finish();

private:
    bool readMore(const Deadline& deadline);

    pid_t m_pid = -1;
    int m_out = -1;
    int m_err = -1;
    std::string m_outText;
    std::string m_errText;
};

/// Runs the console to its end.
NodectlRun::Outcome nodectl(const std::vector<std::string>& arguments, const std::string& input = {});

/// Hexadecimal text as the console prints it, written with blanks between the fields.
std::string packed(const std::string& hexadecimal);

/// The text of these lines.
std::string lines(const std::vector<std::string>& all);
