#include "CommandLine.h"

#if VORNIPC_WITH_CONTROL

#include "HttpStream.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

namespace radiounit {
namespace {

using Clock = std::chrono::steady_clock;

/// How long a refused client may go on sending before the connection is closed under it. Our own choice.
constexpr std::chrono::seconds leaveTaking{2};

/// How long a client is waited for when the unit stops, and how often a wait looks whether it does. Our own choices.
constexpr std::chrono::milliseconds lastPatience{500};
constexpr std::chrono::milliseconds lookRoundEvery{100};

} // namespace

HttpStream::HttpStream(int descriptor, std::chrono::milliseconds patience, std::size_t byteLimit, WorkerPool& workers,
                       const std::atomic<bool>& hurrying)
    : m_descriptor{descriptor},
      m_patience{patience},
      m_deadline{Clock::now() + patience},
      m_bytesLeft{byteLimit},
      m_workers{workers},
      m_hurrying{hurrying}
{
}

bool HttpStream::await(short events) const
{
    pollfd entry{m_descriptor, events, 0};
    if (poll(&entry, 1, 0) > 0) {
        return true;
    }
    const WorkerPool::Waiting waiting{m_workers};
    bool hurried = false;
    for (;;) {
        if (m_hurrying && !hurried) {
            hurried = true;
            m_deadline = std::min(m_deadline, Clock::now() + lastPatience);
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_deadline - Clock::now());
        const int ready =
            left.count() > 0 ? poll(&entry, 1, static_cast<int>(std::min(left, lookRoundEvery).count())) : 0;
        const bool goesOn = ready == 0 ? left.count() > 0 : errno == EINTR;
        if (ready > 0 || !goesOn) {
            return ready > 0;
        }
    }
}

bool HttpStream::is_readable() const
{
    return m_read < m_filled || await(POLLIN);
}

bool HttpStream::is_writable() const
{
    return await(POLLOUT);
}

ssize_t HttpStream::read(char* target, std::size_t size)
{
    if (m_read == m_filled) {
        if (m_bytesLeft == 0 || !await(POLLIN)) {
            return -1;
        }
        const auto taken = recv(m_descriptor, m_buffer.data(), std::min(m_buffer.size(), m_bytesLeft), MSG_DONTWAIT);
        if (taken <= 0) {
            return taken;
        }
        m_read = 0;
        m_filled = static_cast<std::size_t>(taken);
        m_bytesLeft -= m_filled;
    }
    const std::size_t count = std::min(size, m_filled - m_read);
    std::copy_n(m_buffer.data() + m_read, count, target);
    m_read += count;
    return static_cast<ssize_t>(count);
}

ssize_t HttpStream::write(const char* bytes, std::size_t size)
{
    m_deadline = Clock::now() + m_patience; // the request is in; a route may have taken long
    std::size_t sent = 0;
    while (sent < size) {
        const auto taken = send(m_descriptor, bytes + sent, size - sent, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (taken > 0) {
            sent += static_cast<std::size_t>(taken);
        } else if ((errno != EAGAIN && errno != EINTR) || !await(POLLOUT)) {
            return -1;
        }
    }
    return static_cast<ssize_t>(sent);
}

void HttpStream::get_remote_ip_and_port(std::string& ip, int& port) const
{
    ip.clear(); // nothing asks for it
    port = 0;
}

void HttpStream::get_local_ip_and_port(std::string& ip, int& port) const
{
    ip.clear();
    port = 0;
}

void HttpStream::finish(bool awaitClient)
{
    shutdown(m_descriptor, SHUT_WR);
    m_deadline = Clock::now() + leaveTaking;
    for (;;) {
        const auto taken = recv(m_descriptor, m_buffer.data(), m_buffer.size(), MSG_DONTWAIT);
        const bool nothingYet = taken < 0 && (errno == EAGAIN || errno == EINTR);
        if (taken == 0 || (taken < 0 && !nothingYet) || Clock::now() > m_deadline) {
            return;
        }
        if (nothingYet && (!awaitClient || !await(POLLIN))) {
            return;
        }
    }
}

} // namespace radiounit

#endif
