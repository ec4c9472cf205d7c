#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <streambuf>
#include <string>

#include "IVornipcRxCallback.h"
#include "IVornipcSender.h"
#include "SpontaneousNumbers.h"
#include "Trace.h"
#include "VornipcMessageClientOnTarget.h"
#include "WireMessage.h"
#include "archives/BinaryBigEndianOutputArchive.h"
#include "messagehandler/MessageHandler.h"

namespace kro::device::vornipc {

/// Hub of the link to the node. Inbound it finds the receiver of each message by its id; outbound it encodes messages,
/// applies the gate and the whitelist and hands them to the sender. It keeps what all handlers share of the link.
///
/// Threads: `onMessageReceived` runs on the reader thread and with it every handler method; all else may be called from
/// any thread, `connect` and `stopDispatching` on the framework's.
class VornipcMessageHandler
    : public vrel::kro::messagehandler::MessageHandler<vrel::kro::messagehandler::DefaultSender>,
      public IVornipcRxCallback {
public:
    /// With an address, creates the client, which becomes the sender, and starts its reader: messages arrive from then
    /// on.
    /// @param mmuAddress address of the modem unit; empty: no client, `sender` stays
    /// @param sender may be null
    VornipcMessageHandler(const std::string& mmuAddress, std::shared_ptr<IVornipcSender> sender);
    ~VornipcMessageHandler() override;

    void onMessageReceived(const char* data, unsigned length, VornipcDeviceId device) override;

    /// Binds each method to the messages that it takes; the ids come from the message types, all different.
    template <class Handler, class... Messages>
    void registerReceivers(Handler& handler, void (Handler::*... methods)(Messages*));

    /// Encodes a message and sends it to a device of the node. To the node's equipment software it leaves only while the
    /// gate is open (a few answers pass the closed gate) and the whitelist, if active, knows it; a message that does not
    /// leave is logged and dropped.
    template <WireMessage Message>
    void send(Message& message, VornipcDeviceId device);

    /// Has no effect with the PCI driver.
    void connect(VornipcMessageClient::Type type) const;

    /// Number for the next spontaneous message, top bit set; the first is 0x80000000.
    std::uint32_t getSpontaneousMessageSequenceNumber();
    void resetSpontaneousMessageSequenceNumber();

    std::uint8_t getSlotNumber() const;
    void setSlotNumber(std::uint8_t slotNumber);
    std::uint32_t getSenderID() const;
    void setSenderID(std::uint32_t senderId);

    void enableVornipcWhiteList(bool enable);
    bool vornipcWhiteListActive() const;

    /// The gate on messages to the node's equipment software; closed at first.
    void setOutgoingIpcMessagesAllowed(bool allowed);
    bool outgoingIpcMessagesAllowed() const;

    /// Puts a line into the node's system log. What does not fit into 159 bytes is cut.
    void sendToNpuSyslog(const std::string& text);
    void sendToNpuSyslog(const std::string& text, RadioChannel ct);

    /// Ends receiving and dispatching for good. Sending goes on.
    void stopDispatching();

    ReaderState readerState() const;

private:
    /// A stream buffer of exactly the size of one message with its envelope, on the stack of who sends.
    template <std::size_t Size>
    class WireBuffer : public std::streambuf {
    public:
        WireBuffer() { setp(m_bytes.data(), m_bytes.data() + m_bytes.size()); }
        const char* data() const { return m_bytes.data(); }
        unsigned length() const { return static_cast<unsigned>(pptr() - pbase()); }

    private:
        std::array<char, Size> m_bytes; // NOLINT(*-member-init): written before it is read
    };

    bool mayLeave(std::uint32_t messageId, const CallSite& site) const;
    void handOver(const char* data, unsigned length, std::uint32_t messageId, bool allowed, const CallSite& site);
    void sendSyslogLine(const std::string& line, std::uint32_t ct);

    static const Trace m_trace;

    std::shared_ptr<VornipcMessageClient> m_client;
    std::shared_ptr<IVornipcSender> m_vornipcSender;
    std::string m_mmuAddress;

    SpontaneousNumbers m_spontaneousNumbers;
    std::atomic<bool> m_outgoingMessagesAllowed = false; ///< read for every message sent

    mutable std::mutex m_mutex; ///< guards the three values below; no other object is called under it but the trace
    std::uint8_t m_slotNumber = 0;
    std::uint32_t m_senderId = 0;
    bool m_whiteListActive = false;
};

namespace message_handler_detail {

template <class... Messages>
constexpr bool allIdsDiffer()
{
    constexpr std::array ids{Messages::messageId...};
    for (std::size_t i = 0; i < ids.size(); ++i) {
        for (std::size_t j = i + 1; j < ids.size(); ++j) {
            if (ids[i] == ids[j]) {
                return false;
            }
        }
    }
    return true;
}

} // namespace message_handler_detail

template <class Handler, class... Messages>
void VornipcMessageHandler::registerReceivers(Handler& handler, void (Handler::*... methods)(Messages*))
{
    static_assert((WireMessage<Messages> && ...));
    static_assert(message_handler_detail::allIdsDiffer<Messages...>(), "two methods for one message id");
    const auto registerOne = [this, &handler]<class Message>(void (Handler::*method)(Message*)) {
        auto receiver = std::make_unique<vrel::kro::messagehandler::MessageReceiver<Handler, Message>>();
        receiver->registerCallback(&handler, method);
        registerReceiver(static_cast<int>(Message::messageId), std::move(receiver));
    };
    (registerOne(methods), ...);
}

template <WireMessage Message>
void VornipcMessageHandler::send(Message& message, VornipcDeviceId device)
{
    WireBuffer<sizeof device + sizeof Message::messageId + wireSize<Message>> buffer;
    bool allowed = true;
    if (device == VornipcDeviceId::ads) {
        allowed = mayLeave(Message::messageId, CallSite::here());
        cereal::BinaryBigEndianOutputArchive::write(buffer, device, Message::messageId);
    } else {
        cereal::BinaryBigEndianOutputArchive::write(buffer, device);
    }
    cereal::BinaryBigEndianOutputArchive::write(buffer, message); // also a message that will not leave
    handOver(buffer.data(), buffer.length(), Message::messageId, allowed, CallSite::here());
}

} // namespace kro::device::vornipc
