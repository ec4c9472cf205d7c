#pragma once

#include <cstdint>

#include "ITiDisableModulation.h"
#include "PsMessages.h"
#include "ResultCodes.h"
#include "Trace.h"
#include "VornipcMessageHandler.h"

namespace kro::device::vornipc {

/// The PS device's requests to the radio link's object groups: continuous wave, that is a carrier without modulation, on
/// or off; entries of the WAN interface group are traced only. Answers go to the PS device, whatever became of the
/// request, and so pass the closed gate.
///
/// Threads: the methods for messages run on the reader thread, `onModuleInit` on the framework's.
class DevPsRlpsHandler {
public:
    /// @param numberOfChannels  more than 2 is logged and counts as 2
    /// @param disableModulation borrowed
    DevPsRlpsHandler(std::uint8_t numberOfChannels, VornipcMessageHandler& messageHandler,
                     ITiDisableModulation& disableModulation);

    /// Registers the receivers.
    Result onModuleInit();

    void onHandleXfRlWanIfEntryGroupReq(HandleXfRlWanIfEntryGroupReqIPC* message);
    void onHandleContinuousWaveGroupReq(HandleContinuousWaveGroupReqIPC* request);

private:
    static bool isValidSet(const HandleContinuousWaveGroupReqIPC& request, const CallSite& site = CallSite::here());
    bool setContinuousWave(const HandleContinuousWaveGroupReqIPC& request, const CallSite& site = CallSite::here());

    static const Trace m_trace;

    [[maybe_unused]] std::uint8_t m_numberOfChannels; ///< both channels are accepted in any case
    VornipcMessageHandler& m_messageHandler;
    ITiDisableModulation& m_disableModulation;
};

} // namespace kro::device::vornipc
