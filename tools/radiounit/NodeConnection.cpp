#include "NodeConnection.h"

#include <asio/post.hpp>
#include <asio/read.hpp>
#include <cerrno>
#include <fmt/format.h>
#include <poll.h>
#include <sys/socket.h>

#include "BigEndian.h"
#include "Errors.h"
#include "HostPort.h"

namespace radiounit {
namespace {

/// Bytes that the system may keep for a node on top of what waits here. Our own choice.
constexpr int systemBuffer = 256 * 1024;

/// How long a node that has ended its direction of the connection still hears answers to what it has sent. Our own choice.
constexpr std::chrono::milliseconds answerTime{300};

std::string nameOf(const asio::ip::tcp::socket& socket)
{
    asio::error_code gone;
    const auto endpoint = socket.remote_endpoint(gone);
    return gone ? "(gone)" : toText(endpoint);
}

} // namespace

NodeConnection::NodeConnection(asio::ip::tcp::socket socket, Received received)
    : m_socket{std::move(socket)},
      m_leaveTimer{m_socket.get_executor()},
      m_received{std::move(received)},
      m_peer{nameOf(m_socket)}
{
    asio::error_code ignored; // a node that has gone already shows when it is read
    m_socket.set_option(asio::ip::tcp::no_delay{true}, ignored);
    m_socket.set_option(asio::socket_base::send_buffer_size{systemBuffer}, ignored);
}

void NodeConnection::start()
{
    readHeader();
    awaitReset();
}

/// A node that resets its connection is noticed also while nothing is read from it.
void NodeConnection::awaitReset()
{
    m_socket.async_wait(asio::ip::tcp::socket::wait_error, [self = shared_from_this()](asio::error_code error) {
        if (error) {
            return;
        }
        pollfd entry{self->m_socket.native_handle(), 0, 0};
        if (poll(&entry, 1, 0) > 0) {
            self->close();
        } else {
            self->awaitReset();
        }
    });
}

void NodeConnection::readHeader()
{
    asio::async_read(m_socket, asio::buffer(m_header),
                     [self = shared_from_this()](asio::error_code error, std::size_t) { self->headerRead(error); });
}

void NodeConnection::headerRead(const asio::error_code& error)
{
    if (error) {
        error == asio::error::eof&& m_hasSent ? leave() : close();
        return;
    }
    const std::uint32_t length = bigEndianWord(m_header.data());
    if (length < shortestFrame || length > longestFrame) {
        reportClosing(
            fmt::format("announced a frame of {} bytes, allowed are {} to {}", length, shortestFrame, longestFrame));
        close();
    } else if (m_inHand) {
        m_announced = length;
    } else {
        readBody(length);
    }
}

void NodeConnection::readBody(std::uint32_t length)
{
    m_frame.resize(length);
    asio::async_read(m_socket, asio::buffer(m_frame),
                     [self = shared_from_this()](asio::error_code error, std::size_t) { self->bodyRead(error); });
}

void NodeConnection::bodyRead(const asio::error_code& error)
{
    if (error) {
        close();
        return;
    }
    m_inHand = true;
    m_hasSent = true;
    m_received(shared_from_this(), std::move(m_frame));
    readHeader(); // notices meanwhile when the node hangs up
}

void NodeConnection::delivered(Frame frame)
{
    m_inHand = false;
    m_frame = std::move(frame);
    if (m_announced && isOpen()) {
        readBody(*std::exchange(m_announced, std::nullopt));
    } else if (!isOpen() && !isGone()) {
        closeAfterAnswers();
    }
}

/// The node sends no more, as behind `nc -N`, but may still listen.
void NodeConnection::leave()
{
    {
        const std::lock_guard lock{m_mutex};
        m_leaving = true;
    }
    if (!m_inHand) {
        closeAfterAnswers();
    }
}

void NodeConnection::closeAfterAnswers()
{
    m_leaveTimer.expires_after(answerTime);
    m_leaveTimer.async_wait([self = shared_from_this()](asio::error_code error) {
        if (!error) {
            self->closeOnceSent();
        }
    });
}

bool NodeConnection::send(std::span<const char> bytes)
{
    const std::lock_guard lock{m_mutex};
    if (!m_open) {
        return false;
    }
    const bool queued = !m_waiting.empty();
    const auto sent = queued ? std::size_t{0} : sendSome(bytes);
    if (!sent) {
        endLocked();
        return false;
    }
    const auto rest = bytes.subspan(*sent);
    if (m_waiting.size() - m_sent + rest.size() > waitingLimit) {
        reportClosing(fmt::format("does not read, {} bytes wait for it", waitingLimit));
        endLocked();
        return false;
    }
    if (!rest.empty()) {
        m_waiting.insert(m_waiting.end(), rest.begin(), rest.end());
        if (!queued) {
            asio::post(m_socket.get_executor(), [self = shared_from_this()] { self->sendWaiting(); });
        }
    }
    return true;
}

void NodeConnection::sendWaiting()
{
    const std::lock_guard lock{m_mutex};
    if (!m_open) {
        return;
    }
    const auto sent = sendSome(std::span{m_waiting}.subspan(m_sent));
    if (!sent) {
        closeLocked();
        return;
    }
    m_sent += *sent;
    if (m_sent == m_waiting.size()) {
        m_waiting.clear();
        m_sent = 0;
        if (m_closing) {
            closeLocked();
        }
        return;
    }
    if (m_sent > m_waiting.size() / 2) {
        m_waiting.erase(m_waiting.begin(), m_waiting.begin() + static_cast<std::ptrdiff_t>(m_sent));
        m_sent = 0;
    }
    m_socket.async_wait(asio::ip::tcp::socket::wait_write, [self = shared_from_this()](asio::error_code error) {
        if (!error) {
            self->sendWaiting();
        }
    });
}

/// @return bytes that the socket took, nothing where the node is gone
std::optional<std::size_t> NodeConnection::sendSome(std::span<const char> bytes)
{
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const auto taken =
            ::send(m_socket.native_handle(), bytes.data() + sent, bytes.size() - sent, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (taken >= 0) {
            sent += static_cast<std::size_t>(taken);
        } else if (errno == EAGAIN) {
            return sent;
        } else if (errno != EINTR) {
            return std::nullopt;
        }
    }
    return sent;
}

bool NodeConnection::isOpen() const
{
    const std::lock_guard lock{m_mutex};
    return m_open && !m_leaving;
}

bool NodeConnection::isGone() const
{
    const std::lock_guard lock{m_mutex};
    return !m_open;
}

void NodeConnection::close()
{
    const std::lock_guard lock{m_mutex};
    closeLocked();
}

void NodeConnection::closeOnceSent()
{
    const std::lock_guard lock{m_mutex};
    m_closing = true;
    if (m_waiting.empty()) {
        closeLocked();
    }
}

/// Nobody sends any more; the io thread closes.
void NodeConnection::endLocked()
{
    m_open = false;
    asio::post(m_socket.get_executor(), [self = shared_from_this()] { self->close(); });
}

void NodeConnection::closeLocked()
{
    m_open = false;
    m_leaveTimer.cancel();
    asio::error_code ignored;
    m_socket.shutdown(asio::ip::tcp::socket::shutdown_both, ignored);
    m_socket.close(ignored);
}

void NodeConnection::reportClosing(const std::string& why) const
{
    report(fmt::format("node {} {}; its connection is closed", m_peer, why));
}

} // namespace radiounit
