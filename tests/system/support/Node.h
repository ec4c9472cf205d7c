#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Deadline.h"

/// Bytes written as hexadecimal text, blanks ignored.
std::string bytes(const std::string& hexadecimal);
std::string hexadecimal(const std::string& bytes);

/// A big-endian word.
std::string word(std::uint32_t value);

/// A TCP connection to this machine, as bare as it gets.
class Socket {
public:
    explicit Socket(const std::string& address);
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket();

    void send(const std::string& data) const;

    /// @return false where nothing could be sent within the time
    bool sendWithin(const std::string& data, std::chrono::milliseconds howLong) const;

    /// @return exactly `count` bytes, or what had come by the end of the connection or of the patience
    std::string receive(std::size_t count, std::chrono::milliseconds howLong = patience) const;

    /// Throws away what comes until the other side closes.
    bool closedByPeer(std::chrono::milliseconds howLong = patience) const;

    /// Ends this side's direction, as behind `nc -N`.
    void endSending() const;

    /// Ends the connection with a reset, as a crashed machine's successor would.
    void reset();

private:
    int m_descriptor;
};

/// A node on the link.
class Node : public Socket {
public:
    using Socket::Socket;

    static std::string frame(std::uint32_t device, const std::string& buffer);

    void sendFrame(std::uint32_t device, const std::string& buffer) const { send(frame(device, buffer)); }

    /// @return the next frame without its length, nothing where none came
    std::optional<std::string> receiveFrame(std::chrono::milliseconds howLong = patience) const;
};
