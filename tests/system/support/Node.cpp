#include "Node.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cctype>
#include <cerrno>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace {

bool await(int descriptor, short events, const Deadline& deadline)
{
    pollfd entry{descriptor, events, 0};
    return poll(&entry, 1, deadline.milliseconds()) > 0;
}

} // namespace

std::string bytes(const std::string& hexadecimal)
{
    std::string digits;
    std::copy_if(hexadecimal.begin(), hexadecimal.end(), std::back_inserter(digits),
                 [](unsigned char c) { return std::isxdigit(c) != 0; });
    std::string result;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        result += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return result;
}

std::string hexadecimal(const std::string& bytes)
{
    constexpr const char* digits = "0123456789abcdef";
    std::string result;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        result += digits[value / 16];
        result += digits[value % 16];
    }
    return result;
}

std::string word(std::uint32_t value)
{
    return {static_cast<char>(value >> 24U), static_cast<char>(value >> 16U), static_cast<char>(value >> 8U),
            static_cast<char>(value)};
}

Socket::Socket(const std::string& address) : m_descriptor{socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)}
{
    const auto colon = address.rfind(':');
    sockaddr_in target{};
    target.sin_family = AF_INET;
    target.sin_port = htons(static_cast<std::uint16_t>(std::stoul(address.substr(colon + 1))));
    inet_pton(AF_INET, address.substr(0, colon).c_str(), &target.sin_addr);
    if (connect(m_descriptor, reinterpret_cast<const sockaddr*>(&target), sizeof(target)) != 0) {
        const int error = errno;
        close(m_descriptor);
        throw std::system_error{error, std::generic_category(), "connect to " + address};
    }
}

Socket::~Socket()
{
    close(m_descriptor);
}

void Socket::send(const std::string& data) const
{
    if (!sendWithin(data, patience)) {
        throw std::runtime_error{"the unit takes no bytes"};
    }
}

bool Socket::sendWithin(const std::string& data, std::chrono::milliseconds howLong) const
{
    const Deadline deadline{howLong};
    std::size_t sent = 0;
    while (sent < data.size()) {
        const auto taken = ::send(m_descriptor, data.data() + sent, data.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (taken > 0) {
            sent += static_cast<std::size_t>(taken);
        } else if (errno != EAGAIN || !await(m_descriptor, POLLOUT, deadline)) {
            return false;
        }
    }
    return true;
}

std::string Socket::receive(std::size_t count, std::chrono::milliseconds howLong) const
{
    const Deadline deadline{howLong};
    std::string result;
    std::array<char, 65536> buffer{};
    while (result.size() < count && await(m_descriptor, POLLIN, deadline)) {
        const auto taken = recv(m_descriptor, buffer.data(), std::min(buffer.size(), count - result.size()), 0);
        if (taken <= 0) {
            break;
        }
        result.append(buffer.data(), static_cast<std::size_t>(taken));
    }
    return result;
}

bool Socket::closedByPeer(std::chrono::milliseconds howLong) const
{
    const Deadline deadline{howLong};
    std::array<char, 65536> buffer{};
    while (await(m_descriptor, POLLIN, deadline)) {
        if (recv(m_descriptor, buffer.data(), buffer.size(), 0) <= 0) {
            return true;
        }
    }
    return false;
}

void Socket::endSending() const
{
    shutdown(m_descriptor, SHUT_WR);
}

void Socket::reset()
{
    const linger atOnce{1, 0};
    setsockopt(m_descriptor, SOL_SOCKET, SO_LINGER, &atOnce, sizeof(atOnce));
    close(m_descriptor);
    m_descriptor = -1;
}

std::string Node::frame(std::uint32_t device, const std::string& buffer)
{
    return word(static_cast<std::uint32_t>(4 + buffer.size())) + word(device) + buffer;
}

std::optional<std::string> Node::receiveFrame(std::chrono::milliseconds howLong) const
{
    const std::string length = receive(4, howLong);
    if (length.size() < 4) {
        return std::nullopt;
    }
    std::uint32_t size = 0;
    for (const char byte : length) {
        size = size << 8U | static_cast<unsigned char>(byte);
    }
    return receive(size, howLong);
}
