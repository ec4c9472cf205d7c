#pragma once

#include "PlatformApi.h"

#include <cstdint>

/// Receiver of the unit's faults. Called on platform threads, which may overlap.
class PLATFORM_API IAlarmSignalHandlerCallback {
public:
    /// The platform's fault numbers; any byte may come.
    enum FaultSignal : std::uint8_t {};

    virtual ~IAlarmSignalHandlerCallback() = default;

    /// @param ct     channel that the fault belongs to; any value may come
    /// @param active false when the fault has gone
    virtual void signalFault(FaultSignal signal, int ct, bool active) = 0;

protected:
    IAlarmSignalHandlerCallback() = default;
    IAlarmSignalHandlerCallback(const IAlarmSignalHandlerCallback&) = default;
    IAlarmSignalHandlerCallback& operator=(const IAlarmSignalHandlerCallback&) = default;
};
