#pragma once

#include <memory>
#include <mutex>
#include <shared_mutex>
#include <streambuf>
#include <unordered_map>
#include <vector>

#include "messagehandler/MessageReceiver.h"

namespace vrel::kro::messagehandler {

/// Stands for "whoever sends" where a message handler needs no sender type of its own.
struct DefaultSender {};

/// The table of message receivers. Registration and look-up may happen at the same time: messages arrive while the
/// handlers still register. The table owns the receivers; they live as long as it does, replaced ones included, since a
/// dispatch to one may be under way.
template <class Sender>
class MessageHandler {
public:
    MessageHandler() = default;
    MessageHandler(const MessageHandler&) = delete;
    MessageHandler& operator=(const MessageHandler&) = delete;
    virtual ~MessageHandler() = default;

    /// Entry of the framework for buffers without a message id: they go to the receiver of the framework's own id.
    virtual void messageReceived(const char* data, unsigned length)
    {
        constexpr int frameworkMessageId = 23;
        if (MessageReceiverBase* const receiver = findReceiver(frameworkMessageId)) {
            BytesView bytes(data, length);
            cereal::BinaryBigEndianInputArchive archive(bytes);
            receiver->messageReceivedCallback(archive);
        }
    }

    /// Enters a receiver for a message id; a receiver that is already there is replaced.
    void registerReceiver(int messageId, std::unique_ptr<MessageReceiverBase> receiver)
    {
        const std::unique_lock lock(m_mutex);
        m_receivers.push_back(std::move(receiver)); // owned first, found then
        m_receiverTable.insert_or_assign(messageId, m_receivers.back().get());
    }

protected:
    /// Null where nobody has registered.
    MessageReceiverBase* findReceiver(int messageId) const
    {
        const std::shared_lock lock(m_mutex);
        const auto entry = m_receiverTable.find(messageId);
        return entry != m_receiverTable.end() ? entry->second : nullptr;
    }

private:
    struct BytesView : std::streambuf {
        BytesView(const char* data, std::size_t size)
        {
            char* const begin = const_cast<char*>(data); // a get area is only read from
            setg(begin, begin, begin + size);
        }
    };

    mutable std::shared_mutex m_mutex; ///< guards the two below; never held while a receiver runs
    std::unordered_map<int, MessageReceiverBase*> m_receiverTable;
    std::vector<std::unique_ptr<MessageReceiverBase>> m_receivers;
};

} // namespace vrel::kro::messagehandler
