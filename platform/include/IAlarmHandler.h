#pragma once

#include "IAlarmSignalHandlerCallback.h"
#include "IInterface.h"
#include "PlatformApi.h"
#include "RadioChannel.h"

#include <string>

/// The unit's alarm handling; registered as "IAlarmHandler". It wants to know the units' service states, since faults of
/// a unit that is not in service are no news.
class PLATFORM_API IAlarmHandler : public IInterface {
public:
    static std::string interfaceName() { return "IAlarmHandler"; }

    virtual void setMmuInService(bool inService) = 0;
    virtual void setRauInService(RadioChannel channel, bool inService) = 0;
    virtual void setTerminalUp(bool up) = 0;
    virtual void notifyNodeRestart() = 0;

    /// Told before the module restarts a radio, so that the radio's absence raises no alarm.
    virtual void notifyRauRestart(RadioChannel channel) = 0;

    /// @param callback called from now on for every fault; null withdraws the one before and returns when no call of it
    ///                 is in flight
    virtual void registerFaultCallback(IAlarmSignalHandlerCallback* callback) = 0;
};
