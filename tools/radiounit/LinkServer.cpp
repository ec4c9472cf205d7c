#include "LinkServer.h"

#include <algorithm>
#include <asio/post.hpp>

#include "BigEndian.h"

namespace radiounit {
namespace {

/// How long accepting rests when the system has no descriptor left for another connection. Our own choice.
constexpr std::chrono::milliseconds acceptRest{100};

} // namespace

LinkServer::LinkServer(asio::ip::tcp::acceptor acceptor, Deliver deliver)
    : m_acceptor{std::move(acceptor)}, m_retry{m_acceptor.get_executor()}, m_deliver{std::move(deliver)}
{
}

void LinkServer::accept()
{
    m_acceptor.async_accept([this](asio::error_code error, asio::ip::tcp::socket socket) {
        if (error == asio::error::operation_aborted) {
            return;
        }
        if (error) {
            acceptLater();
            return;
        }
        add(std::move(socket));
        accept();
    });
}

void LinkServer::acceptLater()
{
    m_retry.expires_after(acceptRest);
    m_retry.async_wait([this](asio::error_code error) {
        if (!error) {
            accept();
        }
    });
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
        std::erase_if(m_connections, [](const auto& one) { return !one->isOpen(); });
        m_connections.push_back(connection);
    }
    connection->start();
}

void LinkServer::deliver(const std::shared_ptr<NodeConnection>& connection, NodeConnection::Frame frame)
{
    const std::uint32_t deviceFlag = bigEndianWord(frame.data());
    constexpr auto deviceWord = sizeof(deviceFlag);
    m_deliver(frame.data() + deviceWord, static_cast<unsigned>(frame.size() - deviceWord), deviceFlag);
    asio::post(m_acceptor.get_executor(), [connection, spent = std::move(frame)]() mutable {
        connection->delivered(std::move(spent));
    });
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
    m_retry.cancel();
    asio::error_code ignored;
    m_acceptor.close(ignored);
    const std::lock_guard lock{m_mutex};
    for (const auto& connection : m_connections) {
        connection->closeOnceSent();
    }
    m_connections.clear();
}

} // namespace radiounit
