#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <httplib.h>

#include "WorkerPool.h"

namespace radiounit {

/// A connection as the HTTP library sees it, with a limit on time and bytes for the whole request, so that one which
/// trickles in cannot hold a thread for long.
class HttpStream : public httplib::Stream {
public:
    /// @param workers  told while a client is waited for
    /// @param hurrying set when a client that does not take its answer is to be given up soon
    HttpStream(int descriptor, std::chrono::milliseconds patience, std::size_t byteLimit, WorkerPool& workers,
               const std::atomic<bool>& hurrying);

    bool is_readable() const override;
    bool is_writable() const override;
    ssize_t read(char* target, std::size_t size) override;
    ssize_t write(const char* bytes, std::size_t size) override;
    void get_remote_ip_and_port(std::string& ip, int& port) const override;
    void get_local_ip_and_port(std::string& ip, int& port) const override;
    socket_t socket() const override { return m_descriptor; }

    /// Ends the answer and throws away what the client still sends, so that the answer reaches it.
    void finish(bool awaitClient);

private:
    bool await(short events) const;

    int m_descriptor;
    std::chrono::milliseconds m_patience;
    mutable std::chrono::steady_clock::time_point m_deadline;
    std::size_t m_bytesLeft;
    WorkerPool& m_workers;
    const std::atomic<bool>& m_hurrying;
    std::array<char, 4096> m_buffer{};
    std::size_t m_read = 0;
    std::size_t m_filled = 0;
};

} // namespace radiounit
