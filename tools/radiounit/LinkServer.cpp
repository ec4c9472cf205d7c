#include "LinkServer.h"

#include <algorithm>
#include <asio/post.hpp>

#include "BigEndian.h"

namespace radiounit {

LinkServer::LinkServer(asio::ip::tcp::acceptor acceptor, Deliver deliver)
    : m_listener{std::move(acceptor), [this](asio::ip::tcp::socket socket) { add(std::move(socket)); }},
      m_deliver{std::move(deliver)}
{
}

void LinkServer::add(asio::ip::tcp::socket socket)
{
    const auto connection = std::make_shared<NodeConnection>(
        std::move(socket), [this](std::shared_ptr<NodeConnection> sender, NodeConnection::Frame frame) {
            m_driver.put([this, sender = std::move(sender), frame = std::move(frame)]() mutable {
                deliver(sender, std::move(frame));
            });
        });
    {
        const std::lock_guard lock{m_mutex};
        std::erase_if(m_connections, [](const auto& one) { return one->isGone(); });
        m_connections.push_back(connection);
    }
    connection->start();
}

void LinkServer::deliver(const std::shared_ptr<NodeConnection>& connection, NodeConnection::Frame frame)
{
    const std::uint32_t deviceFlag = bigEndianWord(frame.data());
    constexpr auto deviceWord = sizeof(deviceFlag);
    m_deliver(frame.data() + deviceWord, static_cast<unsigned>(frame.size() - deviceWord), deviceFlag);
    asio::post(m_listener.executor(),
               [connection, spent = std::move(frame)]() mutable { connection->delivered(std::move(spent)); });
}

int LinkServer::send(const char* data, unsigned length)
{
    const auto prefix = bigEndianBytes(length);
    std::vector<char> frame;
    frame.reserve(prefix.size() + length);
    frame.insert(frame.end(), prefix.begin(), prefix.end());
    frame.insert(frame.end(), data, data + length);

    const std::lock_guard lock{m_mutex};
    std::ptrdiff_t sentTo = 0;
    for (const auto& connection : m_connections) {
        sentTo += connection->send(frame) ? 1 : 0;
    }
    return sentTo > 0 ? static_cast<int>(length) : -1;
}

std::size_t LinkServer::nodes() const
{
    const std::lock_guard lock{m_mutex};
    return static_cast<std::size_t>(
        std::count_if(m_connections.begin(), m_connections.end(), [](const auto& one) { return one->isOpen(); }));
}

void LinkServer::close()
{
    m_listener.close();
    const std::lock_guard lock{m_mutex};
    for (const auto& connection : m_connections) {
        connection->closeOnceSent();
    }
    m_connections.clear();
}

} // namespace radiounit
