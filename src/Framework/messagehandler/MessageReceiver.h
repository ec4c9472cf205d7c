#pragma once

#include "archives/BigEndianInputArchives.h"

namespace vrel::kro::messagehandler {

/// What the message handler holds for a message id: decodes one kind of message and hands it on. Called on the thread
/// that dispatches.
class MessageReceiverBase {
public:
    MessageReceiverBase() = default;
    MessageReceiverBase(const MessageReceiverBase&) = delete;
    MessageReceiverBase& operator=(const MessageReceiverBase&) = delete;
    virtual ~MessageReceiverBase() = default;

    /// Decodes the message at which the archive stands, header first, and hands it to whom it is bound. Where the
    /// archive ends before the message does, `cereal::Exception` passes through and nobody is called.
    virtual void messageReceivedCallback(cereal::BinaryBigEndianInputArchive& archive) = 0;
    virtual void messageReceivedCallback(cereal::FixedSizeBigEndianInputArchive& archive) = 0;
};

/// Binds messages of one type to a method of a handler, which it borrows.
template <class Handler, class Message>
class MessageReceiver : public MessageReceiverBase {
public:
    using Method = void (Handler::*)(Message*);

    void messageReceivedCallback(cereal::BinaryBigEndianInputArchive& archive) override { decodeAndCall(archive); }
    void messageReceivedCallback(cereal::FixedSizeBigEndianInputArchive& archive) override { decodeAndCall(archive); }

    /// The message that the method gets lives until the method returns.
    virtual void registerCallback(Handler* handler, Method method)
    {
        m_method = method;
        m_handler = handler;
    }

private:
    template <class Archive>
    void decodeAndCall(Archive& archive)
    {
        Message message;
        archive(message);
        if (m_handler != nullptr && m_method != nullptr) {
            (m_handler->*m_method)(&message);
        }
    }

    Method m_method = nullptr;
    Handler* m_handler = nullptr;
};

} // namespace vrel::kro::messagehandler
