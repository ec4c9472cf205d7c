#pragma once

#include <array>
#include <asio/ip/tcp.hpp>
#include <asio/steady_timer.hpp>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace radiounit {

/// One node on the link. Frames come in one at a time: the next body is read only after the one before has been
/// delivered, so that TCP holds the node back. `send`, `isOpen` and `isGone` may be called from any thread, all else runs on the
/// io thread.
class NodeConnection : public std::enable_shared_from_this<NodeConnection> {
public:
    using Frame = std::vector<char>;

    static constexpr std::uint32_t shortestFrame = 4; ///< the device word alone
    static constexpr std::uint32_t longestFrame = 65536;

    /// Bytes that may wait for a node that does not read, before it is cut off.
    static constexpr std::size_t waitingLimit = 4U << 20U;

    /// Takes one frame: device word and buffer. The connection reads on after `delivered`.
    using Received = std::function<void(std::shared_ptr<NodeConnection>, Frame)>;

    NodeConnection(asio::ip::tcp::socket socket, Received received);

    void start();

    /// The frame given to `Received` has been delivered; its memory comes back for a later one.
    void delivered(Frame frame);

    /// Sends at once what the socket takes and keeps the rest.
    /// @return false where the node is gone, or is cut off by this
    bool send(std::span<const char> bytes);

    /// Whether the node is there: false from the moment that it has said that it will send no more.
    bool isOpen() const;

    /// Whether nothing can be sent any more.
    bool isGone() const;

    void close();

    /// Closes as soon as the node has been sent what waits for it.
    void closeOnceSent();

private:
    void readHeader();
    void headerRead(const asio::error_code& error);
    void readBody(std::uint32_t length);
    void bodyRead(const asio::error_code& error);
    void awaitReset();
    void leave();
    void closeAfterAnswers();
    void sendWaiting();
    void endLocked();
    void closeLocked();
    std::optional<std::size_t> sendSome(std::span<const char> bytes);
    void reportClosing(const std::string& why) const;

    asio::ip::tcp::socket m_socket;
    asio::steady_timer m_leaveTimer;
    const Received m_received;
    const std::string m_peer;

    std::array<char, 4> m_header{};
    Frame m_frame;                            ///< being read
    bool m_hasSent = false;                   ///< a whole frame has come
    bool m_inHand = false;                    ///< a frame waits for its delivery or is being delivered
    std::optional<std::uint32_t> m_announced; ///< length of the frame behind the one in hand

    mutable std::mutex m_mutex; ///< guards what follows, and that nobody sends on a closed socket
    bool m_open = true;
    bool m_leaving = false;      ///< the node has ended its direction; it may still hear answers
    bool m_closing = false;      ///< nothing is left but to send what waits
    std::vector<char> m_waiting; ///< what the socket did not take
    std::size_t m_sent = 0;      ///< bytes of `m_waiting` that it has taken since
};

} // namespace radiounit
