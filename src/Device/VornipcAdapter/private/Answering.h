#pragma once

#include "MessagePrinter.h"
#include "RadioChannel.h"
#include "Trace.h"
#include "VornipcMessageHandler.h"

/// What every handler does with requests and answers, written once.
namespace kro::device::vornipc {

/// The channel that a message concerns; any number may come.
template <WireMessage Message>
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

/// The line that shows a received message.
template <WireMessage Request>
void traceReceived(const Trace& trace, const Request& request, const CallSite& site = CallSite::here())
{
    trace.at(TraceLevel::Dump, site) << "Received: " << request;
}

/// Both of them, as most requests of the equipment area begin.
template <WireMessage Request>
void traceRequest(const Trace& trace, const Request& request, const CallSite& site = CallSite::here())
{
    traceCalled<Request>(trace, site);
    traceReceived(trace, request, site);
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

/// Answers a request of the equipment area that this radio does not act upon, with the answer's initial values.
/// @param stubbed what the trace says of it
template <WireMessage Response, WireMessage Request>
void answerFixed(VornipcMessageHandler& messageHandler, const Trace& trace, const Request& request, const char* stubbed,
                 const CallSite& site = CallSite::here())
{
    traceRequest(trace, request, site);
    trace.at(TraceLevel::Call, site) << stubbed;
    auto response = responseTo<Response>(request);
    respond(messageHandler, trace, response, site);
}

/// A fresh spontaneous message about a channel, with the unit's slot and a sequence number of its own.
template <WireMessage Message>
Message spontaneous(VornipcMessageHandler& messageHandler, RadioChannel ct)
{
    Message message;
    message.slot = messageHandler.getSlotNumber();
    message.seqNr = messageHandler.getSpontaneousMessageSequenceNumber();
    message.ct = static_cast<std::uint32_t>(ct);
    return message;
}

} // namespace kro::device::vornipc
