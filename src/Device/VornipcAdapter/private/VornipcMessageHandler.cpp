#include "VornipcMessageHandler.h"

#include <algorithm>
#include <utility>

#include "ConstCharArrayBuffer.h"
#include "EquipmentMessages.h"
#include "PsSignalHeader.h"
#include "VornipcWhiteList.h"
#include "archives/BigEndianInputArchives.h"

namespace kro::device::vornipc {

namespace {

/// Port of the modem unit for connections other than PCI.
constexpr int mmuPort = 23043;

/// What every line in the node's system log begins with, and its code. Fixed by the node protocol.
constexpr const char* syslogPrefix = "[RL_ADS] ";
constexpr std::uint32_t syslogPrintCode = 8;

/// Answers that the node waits for while the gate is still, or already, closed.
constexpr bool passesClosedGate(std::uint32_t messageId)
{
    return messageId == ADSSelftestResIPC::messageId || messageId == ADSSwStatusResIPC::messageId ||
           messageId == ADSClosePciResIPC::messageId;
}

} // namespace

const Trace VornipcMessageHandler::m_trace{"KRO.VORNIPC.MH"};

VornipcMessageHandler::VornipcMessageHandler(const std::string& mmuAddress, std::shared_ptr<IVornipcSender> sender)
    : m_vornipcSender(std::move(sender)), m_mmuAddress(mmuAddress)
{
    if (m_mmuAddress.empty()) {
        return;
    }
    m_trace.at(TraceLevel::Action) << "Initialize with mmuip " << m_mmuAddress;
    m_client = std::make_shared<VornipcMessageClient>(this);
    m_vornipcSender = m_client; // before the reader runs: the first request may have to be answered
    m_client->startReadThread();
}

VornipcMessageHandler::~VornipcMessageHandler()
{
    stopDispatching(); // the reader uses all of the members
}

void VornipcMessageHandler::onMessageReceived(const char* data, unsigned length, VornipcDeviceId device)
{
    std::uint32_t messageId = 0;
    if (length < sizeof messageId) {
        return;
    }
    ConstCharArrayBuffer bytes(data, length);
    cereal::BinaryBigEndianInputArchive archive(bytes);
    switch (device) {
    case VornipcDeviceId::ps: {
        ConstCharArrayBuffer headerBytes(data, length);
        cereal::BinaryBigEndianInputArchive headerArchive(headerBytes);
        PsSignalHeader header;
        headerArchive(header);
        if (header.ps != PsKind::groupRequest) {
            m_trace.at(TraceLevel::Call) << "Message with device id PS of unhandled type received";
            return;
        }
        messageId = header.groupId;
        break;
    }
    case VornipcDeviceId::ads:
    case VornipcDeviceId::adsAlternate:
        archive(messageId);
        if (vornipcWhiteListActive() && !isInVornipcWhiteList(messageId)) {
            m_trace.at(TraceLevel::Error)
                << "Discarded received Vornipc message since it is not in the white list, Id: " << hex(messageId);
            return;
        }
        break;
    default:
        m_trace.at(TraceLevel::Error) << "Message with unknown device id received";
        return;
    }

    m_trace.at(TraceLevel::Dump) << "Message with id " << hex(messageId)
                                 << " received on device: " << hex(static_cast<std::uint32_t>(device));
    if (auto* const receiver = findReceiver(static_cast<int>(messageId))) {
        receiver->messageReceivedCallback(archive);
    } else {
        m_trace.at(TraceLevel::Call) << "*********** No handler found for id " << hex(messageId);
    }
}

bool VornipcMessageHandler::mayLeave(std::uint32_t messageId, const CallSite& site) const
{
    const bool allowed = passesClosedGate(messageId) || m_outgoingMessagesAllowed.load(std::memory_order_relaxed);
    if (vornipcWhiteListActive() && !isInVornipcWhiteList(messageId)) {
        m_trace.at(TraceLevel::Error, site)
            << "Outgoing Vornipc message discarded since the message Id is not in the white list, Id: "
            << hex(messageId);
        return false;
    }
    return allowed;
}

void VornipcMessageHandler::handOver(const char* data, unsigned length, std::uint32_t messageId, bool allowed,
                                     const CallSite& site)
{
    if (!allowed) {
        m_trace.at(TraceLevel::Error, site) << "Send is not allowed since MMU state is not in service "
                                            << "or PCI has been disabled, Id:" << messageId;
    } else if (m_vornipcSender) {
        m_vornipcSender->send(data, length);
    } else {
        m_trace.at(TraceLevel::Error, site) << "m_vornipcSender is null, msg not sent! Id:" << messageId;
    }
}

void VornipcMessageHandler::connect(VornipcMessageClient::Type type) const
{
    if (m_client) {
        m_client->connect2Vornipc(m_mmuAddress.c_str(), mmuPort, type);
    }
}

std::uint32_t VornipcMessageHandler::getSpontaneousMessageSequenceNumber()
{
    return m_spontaneousNumbers.take();
}

void VornipcMessageHandler::resetSpontaneousMessageSequenceNumber()
{
    m_spontaneousNumbers.reset();
}

std::uint8_t VornipcMessageHandler::getSlotNumber() const
{
    const std::scoped_lock lock(m_mutex);
    return m_slotNumber;
}

void VornipcMessageHandler::setSlotNumber(std::uint8_t slotNumber)
{
    const std::scoped_lock lock(m_mutex);
    m_slotNumber = slotNumber;
}

std::uint32_t VornipcMessageHandler::getSenderID() const
{
    const std::scoped_lock lock(m_mutex);
    return m_senderId;
}

void VornipcMessageHandler::setSenderID(std::uint32_t senderId)
{
    const std::scoped_lock lock(m_mutex);
    m_senderId = senderId;
}

void VornipcMessageHandler::enableVornipcWhiteList(bool enable)
{
    const std::scoped_lock lock(m_mutex);
    m_trace.at(TraceLevel::Action) << (enable ? "Enabling" : "Disabling") << " Vornipc white list for ANS RL5";
    m_whiteListActive = enable;
}

bool VornipcMessageHandler::vornipcWhiteListActive() const
{
    const std::scoped_lock lock(m_mutex);
    return m_whiteListActive;
}

void VornipcMessageHandler::setOutgoingIpcMessagesAllowed(bool allowed)
{
    m_outgoingMessagesAllowed = allowed;
}

bool VornipcMessageHandler::outgoingIpcMessagesAllowed() const
{
    return m_outgoingMessagesAllowed;
}

void VornipcMessageHandler::sendToNpuSyslog(const std::string& text)
{
    sendSyslogLine(syslogPrefix + text, 0);
}

void VornipcMessageHandler::sendToNpuSyslog(const std::string& text, RadioChannel ct)
{
    sendSyslogLine(std::string(syslogPrefix) + "RAU CH: " + std::to_string(ct) + " - " + text,
                   static_cast<std::uint32_t>(ct));
}

void VornipcMessageHandler::sendSyslogLine(const std::string& line, std::uint32_t ct)
{
    RLaprintExtIPC message;
    message.seqNr = getSpontaneousMessageSequenceNumber();
    message.slot = getSlotNumber();
    message.ct = ct;
    message.printCode = syslogPrintCode;
    const std::size_t length = std::min(line.size(), message.printText.size() - 1);
    std::copy_n(line.begin(), length, message.printText.begin());
    send(message, VornipcDeviceId::ads);
}

void VornipcMessageHandler::stopDispatching()
{
    if (m_client) {
        m_client->stop();
    }
}

ReaderState VornipcMessageHandler::readerState() const
{
    return m_client ? m_client->readerState() : ReaderState{};
}

} // namespace kro::device::vornipc
