#include "RemoteMibHandler.h"

#include <algorithm>
#include <cstddef>

#include "Answering.h"

namespace kro::device::vornipc {

namespace {

/// Bytes that a message carries.
constexpr std::size_t hopDataCapacity = sizeof HopRxIPC::aHopDataArr;
constexpr std::size_t hccDataCapacity = sizeof HccRxIPC::aHCCDataArr;

/// Whether data that came over the radio link are there and fit into a message; logs why not.
bool fit(const Trace& trace, int length, std::size_t capacity, const std::uint8_t* data,
         const CallSite& site = CallSite::here())
{
    if (length < 0 || static_cast<std::size_t>(length) > capacity) {
        trace.at(TraceLevel::Error, site)
            << site.method << "(): length " << length
            << (length < 0 ? " is below 0, the capacity is " : " is above the capacity ") << capacity;
        return false;
    }
    if (length > 0 && data == nullptr) {
        trace.at(TraceLevel::Error, site)
            << site.method << "(): length " << length << " without data, the capacity is " << capacity;
        return false;
    }
    return true;
}

} // namespace

const Trace RemoteMibHandler::m_trace{"KRO.VORNIPC.RM"};

RemoteMibHandler::RemoteMibHandler(VornipcMessageHandler& messageHandler) : m_messageHandler(messageHandler) {}

Result RemoteMibHandler::onModuleInit()
{
    return resultOk;
}

void RemoteMibHandler::notifyHopRx(EChannelSelector channel, int length, const std::uint8_t* data)
{
    m_trace.at(TraceLevel::Call) << "notifyHopRx()";
    if (!channelInRange(m_trace, channel) || !fit(m_trace, length, hopDataCapacity, data)) {
        return;
    }
    auto message = spontaneousWithoutSlot<HopRxIPC>(m_messageHandler, channel);
    message.iHopDataLength = length;
    std::copy_n(data, length, message.aHopDataArr.begin());
    sendNotification(m_messageHandler, m_trace, message);
}

void RemoteMibHandler::notifyHccRx(EChannelSelector channel, int wanOffset, HCCHandler_T handler, int length,
                                   const std::uint8_t* data)
{
    m_trace.at(TraceLevel::Call) << "notifyHccRx()";
    if (!channelInRange(m_trace, channel) || !fit(m_trace, length, hccDataCapacity, data)) {
        return;
    }
    auto message = spontaneousWithoutSlot<HccRxIPC>(m_messageHandler, channel);
    message.iRLWanOffset = wanOffset;
    message.iHCCHandler = handler;
    message.iHCCDataLength = length;
    std::copy_n(data, length, message.aHCCDataArr.begin());
    sendNotification(m_messageHandler, m_trace, message);
}

void RemoteMibHandler::onHopTx(HopTxIPC* message)
{
    traceMethodRequest(m_trace, *message);
    m_trace.at(TraceLevel::Dump) << "No response";
}

void RemoteMibHandler::onHccTx(HccTxIPC* message)
{
    traceMethodRequest(m_trace, *message);
    m_trace.at(TraceLevel::Dump) << "No response";
}

} // namespace kro::device::vornipc
