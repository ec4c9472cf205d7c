#pragma once

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "Deadline.h"

/// A folder of its own for a test's files, removed with all it holds.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::string& path() const { return m_path; }

    /// @return path of the new file
    std::string write(const std::string& name, const std::string& content) const;

private:
    std::string m_path;
};

/// A program running as a process of its own. What it writes goes to files, so that it never waits for its reader. Killed
/// by the destructor where it still runs.
class Program {
public:
    explicit Program(const std::vector<std::string>& command);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    void signal(int number) const;

    /// @return exit code, 128 and the signal's number where a signal ended it, nothing where it still runs
    std::optional<int> waitForExit(std::chrono::milliseconds howLong = patience);

    /// Waits until the file is there, or the program has ended.
    bool waitForFile(const std::string& path) const;

    std::string output() const; ///< what it has written to stdout so far
    std::string errors() const; ///< what it has written to stderr so far

    pid_t pid() const { return m_pid; }

private:
    TemporaryFolder m_folder;
    pid_t m_pid = -1;
    int m_pidDescriptor = -1;
    std::optional<int> m_exitCode;
};

std::string readFile(const std::string& path);
