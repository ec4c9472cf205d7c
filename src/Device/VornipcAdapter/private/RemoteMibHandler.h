#pragma once

#include <cstdint>

#include "EChannelSelector.h"
#include "RemoteMibMessages.h"
#include "ResultCodes.h"
#include "Trace.h"
#include "VornipcMessageHandler.h"

namespace kro::device::vornipc {

/// The remote MIB area: relays management data that came over the radio link to the node. Nothing is relayed the other
/// way, and the node's messages for it are not received.
///
/// Threads: the notifications may be called from any thread, `onModuleInit` from the framework's.
class RemoteMibHandler {
public:
    explicit RemoteMibHandler(VornipcMessageHandler& messageHandler);

    /// Has nothing to register.
    Result onModuleInit();

    /// Sends hop data of a channel to the node. Refused, with a log line, for a channel other than 1 and 2, a length
    /// that is not 0 to 256, and data that are missing.
    /// @param length bytes
    /// @param data   may be null where the length is 0
    void notifyHopRx(EChannelSelector channel, int length, const std::uint8_t* data);

    /// The same for HCC data, of which 1440 bytes fit.
    /// @param wanOffset radio link WAN offset, handed on
    /// @param handler   endpoint that the data belong to, handed on
    void notifyHccRx(EChannelSelector channel, int wanOffset, HCCHandler_T handler, int length,
                     const std::uint8_t* data);

    // Traces alone; not registered, so that the node's messages meet the path of unknown ids.
    void onHopTx(HopTxIPC* message);
    void onHccTx(HccTxIPC* message);

private:
    static const Trace m_trace;

    VornipcMessageHandler& m_messageHandler;
};

} // namespace kro::device::vornipc
