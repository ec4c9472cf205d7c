#pragma once

#include <atomic>
#include <cstdint>

#include "AlarmMessages.h"
#include "IAlarmHandler.h"
#include "IAlarmSignalHandlerCallback.h"
#include "InterfaceLookup.h"
#include "ResultCodes.h"
#include "Trace.h"
#include "VornipcMessageHandler.h"

namespace kro::device::vornipc {

/// The alarm area: tells the node which faults come and go on the radio, in the node's own numbering, and logs the
/// faults that the node tells. Faults are not remembered: each signal of the platform makes at most one message.
///
/// Threads: the platform calls `signalFault` on threads of its own, which may overlap; `onFaultFromAds` runs on the
/// reader thread, `onModuleInit` on the framework's; the rest may be called from any thread.
class AlarmSignalHandler : public IAlarmSignalHandlerCallback {
public:
    /// @param numberOfChannels more than 2 is logged and counts as 2
    AlarmSignalHandler(std::uint8_t numberOfChannels, VornipcMessageHandler& messageHandler);
    AlarmSignalHandler(const AlarmSignalHandler&) = delete;
    AlarmSignalHandler& operator=(const AlarmSignalHandler&) = delete;

    /// Withdraws the callback and waits for calls of it in flight.
    ~AlarmSignalHandler() override;

    /// Registers the receiver, then the callback with the platform's alarm handler.
    Result onModuleInit();

    void signalFault(FaultSignal signal, int ct, bool active) override;
    void onFaultFromAds(SetFaultIPC* message);

    /// Sends a fault to the node. Dropped without a word while the whitelist is active.
    void notifyFault(unsigned ct, FaultId_T faultId, FaultStatus_T status);

    /// Name of a fault for log texts, "fiUnKnownC" for one without a name.
    static const char* faultIdToString(FaultId_T faultId);

    /// Whether faults tell when they were sent; on at first.
    void enableTimeStamp(bool on);

private:
    static const Trace m_trace;

    [[maybe_unused]] std::uint8_t m_numberOfChannels; ///< faults of any channel are told
    VornipcMessageHandler& m_messageHandler;
    std::atomic<bool> m_timeStampEnabled = true;
    PlatformInterface<IAlarmHandler> m_alarmHandler;
};

} // namespace kro::device::vornipc
