#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <thread>

/// A unit that does what a test says: listens on a free port of this machine and plays a script with the first node that
/// connects. Bytes are hexadecimal text throughout. Waits have a deadline, behind which the script goes on with nothing.
class FakeUnit {
public:
    class Node {
    public:
        explicit Node(int socket) : m_socket(socket) {}

        /// Device word and buffer of the node's next frame; empty at the end of the connection.
        std::string receive() const;

        /// Waits for bytes of the node and leaves them unread.
        void awaitBytes() const;

        /// A frame: the length word, then device word and buffer as given.
        void send(const std::string& frame) const;

        /// Bytes as they stand, each in a segment of its own.
        void sendSingleBytes(const std::string& stream) const;

    private:
        std::string receiveBytes(std::size_t count) const;

        int m_socket;
    };

    explicit FakeUnit(std::function<void(const Node&)> script);
    FakeUnit(const FakeUnit&) = delete;
    FakeUnit& operator=(const FakeUnit&) = delete;
    ~FakeUnit();

    std::string address() const { return "127.0.0.1:" + m_port; }

private:
    int m_listener;
    std::string m_port;
    std::thread m_thread;
};
