#include "FakeUnit.h"

#include <cstdint>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

#include "Deadline.h"
#include "Node.h"

namespace {

bool readable(int descriptor)
{
    pollfd wanted{descriptor, POLLIN, 0};
    return ::poll(&wanted, 1, Deadline(patience).milliseconds()) == 1;
}

void sendBytes(int socket, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

} // namespace

std::string FakeUnit::Node::receive() const
{
    const std::string length = receiveBytes(4);
    return length.empty() ? std::string() : hexadecimal(receiveBytes(std::stoul(hexadecimal(length), nullptr, 16)));
}

void FakeUnit::Node::awaitBytes() const
{
    readable(m_socket);
}

void FakeUnit::Node::send(const std::string& frame) const
{
    const std::string content = bytes(frame);
    sendBytes(m_socket, word(static_cast<std::uint32_t>(content.size())) + content);
}

void FakeUnit::Node::sendSingleBytes(const std::string& stream) const
{
    for (const char byte : bytes(stream)) {
        sendBytes(m_socket, {&byte, 1});
    }
}

std::string FakeUnit::Node::receiveBytes(std::size_t count) const
{
    std::string received(count, '\0');
    std::size_t filled = 0;
    while (filled < count && readable(m_socket)) {
        const auto got = ::recv(m_socket, received.data() + filled, count - filled, 0);
        if (got <= 0) {
            break;
        }
        filled += static_cast<std::size_t>(got);
    }
    return filled == count ? received : std::string();
}

FakeUnit::FakeUnit(std::function<void(const Node&)> script)
    : m_listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const anyAddress = reinterpret_cast<sockaddr*>(&address);
    if (::bind(m_listener, anyAddress, size) != 0 || ::listen(m_listener, 1) != 0 ||
        ::getsockname(m_listener, anyAddress, &size) != 0) {
        throw std::runtime_error("no port to listen on");
    }
    m_port = std::to_string(ntohs(address.sin_port));
    m_thread = std::thread([this, play = std::move(script)] {
        if (!readable(m_listener)) {
            return;
        }
        const int socket = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        const int on = 1;
        ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        play(Node(socket));
        ::close(socket);
    });
}

FakeUnit::~FakeUnit()
{
    ::shutdown(m_listener, SHUT_RDWR); // lets a script that nobody came for end
    m_thread.join();
    ::close(m_listener);
}
