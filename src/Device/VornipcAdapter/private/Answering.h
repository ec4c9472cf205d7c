#pragma once

#include "EChannelSelector.h"
#include "MessagePrinter.h"
#include "PerChannel.h"
#include "RadioChannel.h"
#include "Trace.h"
#include "VornipcMessageHandler.h"

/// What every handler does with requests and answers, written once.
namespace kro::device::vornipc {

/// The channel that a message concerns; any number may come.
template <class Message>
RadioChannel channelOf(const Message& message)
{
    return RadioChannel{static_cast<std::int32_t>(message.ct)};
}

/// The line that a request of the equipment area begins with.
template <WireMessage Request>
void traceCalled(const Trace& trace, const CallSite& site = CallSite::here())
{
    trace.at(TraceLevel::Call, site) << "called (id: 0x" << hex(Request::messageId) << ")";
}

/// The line that a request of the other areas begins with; its text names the method too.
template <WireMessage Request>
void traceMethodCalled(const Trace& trace, const CallSite& site = CallSite::here())
{
    trace.at(TraceLevel::Call, site) << site.method << "() called (id: 0x" << hex(Request::messageId) << ")";
}

/// The line that shows a received message.
template <WireMessage Request>
void traceReceived(const Trace& trace, const Request& request, const CallSite& site = CallSite::here())
{
    trace.at(TraceLevel::Dump, site) << "Received: " << request;
}

/// How most requests of the equipment area begin.
template <WireMessage Request>
void traceRequest(const Trace& trace, const Request& request, const CallSite& site = CallSite::here())
{
    traceCalled<Request>(trace, site);
    traceReceived(trace, request, site);
}

/// How most requests of the other areas begin that show what they received before they act.
template <WireMessage Request>
void traceMethodRequest(const Trace& trace, const Request& request, const CallSite& site = CallSite::here())
{
    traceMethodCalled<Request>(trace, site);
    traceReceived(trace, request, site);
}

/// The line that refuses a request for a channel that there is not.
inline void traceIncorrectChannel(const Trace& trace, std::uint32_t ct, const CallSite& site = CallSite::here())
{
    trace.at(TraceLevel::Error, site) << " Incorrect ct number " << ct << " ()";
}

/// A fresh answer with the header of its request.
template <WireMessage Response, WireMessage Request>
Response responseTo(const Request& request)
{
    Response response;
    const HeaderOf<Response>& header = request;
    static_cast<HeaderOf<Response>&>(response) = header;
    return response;
}

/// Traces an answer and sends it to the node's equipment software.
template <WireMessage Response>
void respond(VornipcMessageHandler& messageHandler, const Trace& trace, Response& response,
             const CallSite& site = CallSite::here())
{
    trace.at(TraceLevel::Dump, site) << "Respond with: " << response;
    messageHandler.send(response, VornipcDeviceId::ads);
}

/// The same in the areas that show the request only now.
template <WireMessage Request, WireMessage Response>
void respond(VornipcMessageHandler& messageHandler, const Trace& trace, const Request& request, Response& response,
             const CallSite& site = CallSite::here())
{
    traceReceived(trace, request, site);
    respond(messageHandler, trace, response, site);
}

/// Answers a request that this radio does not act upon, with the answer's initial values.
template <WireMessage Response, WireMessage Request>
void answerFixed(VornipcMessageHandler& messageHandler, const Trace& trace, const Request& request,
                 const CallSite& site = CallSite::here())
{
    auto response = responseTo<Response>(request);
    respond(messageHandler, trace, response, site);
}

/// A fresh spontaneous message about a channel, with a sequence number of its own and no slot.
template <WireMessage Message>
Message spontaneousWithoutSlot(VornipcMessageHandler& messageHandler, std::uint32_t ct)
{
    Message message;
    message.seqNr = messageHandler.getSpontaneousMessageSequenceNumber();
    message.ct = ct;
    return message;
}

/// The same with the unit's slot.
template <WireMessage Message>
Message spontaneous(VornipcMessageHandler& messageHandler, RadioChannel ct)
{
    auto message = spontaneousWithoutSlot<Message>(messageHandler, static_cast<std::uint32_t>(ct));
    message.slot = messageHandler.getSlotNumber();
    return message;
}

/// Whether a channel that another component of the radio software wants to tell the node about can be one; logs that it
/// cannot.
inline bool channelInRange(const Trace& trace, EChannelSelector channel, const CallSite& site = CallSite::here())
{
    if (!isChannel(RadioChannel{static_cast<std::int32_t>(channel)})) {
        trace.at(TraceLevel::Error, site) << site.method << "(): channelId = " << channel << " is out of range";
        return false;
    }
    return true;
}

/// Sends what another component of the radio software wants the node to know.
template <WireMessage Message>
void sendNotification(VornipcMessageHandler& messageHandler, const Trace& trace, Message& message,
                      const CallSite& site = CallSite::here())
{
    trace.at(TraceLevel::Dump, site) << "Sending spontaneous message: " << messageName<Message>();
    messageHandler.send(message, VornipcDeviceId::ads);
}

} // namespace kro::device::vornipc
