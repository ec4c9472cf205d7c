#pragma once

#include "PlatformApi.h"
#include "RadioChannel.h"

/// What a radio reports to whoever has registered for its channel. Called on platform threads, which may overlap.
class PLATFORM_API IRadioCallback {
public:
    virtual ~IRadioCallback() = default;

    /// The radio's inventory can be read from now on.
    virtual void radioCapabilitiesAvailable(RadioChannel ct) = 0;
    virtual void radioUp(RadioChannel ct) = 0;
    virtual void radioDown(RadioChannel ct) = 0;

    /// Tells the output power, in whole dBm.
    virtual void radioOutputPowerNotification(RadioChannel /*ct*/, int /*power*/) {}

protected:
    IRadioCallback() = default;
    IRadioCallback(const IRadioCallback&) = default;
    IRadioCallback& operator=(const IRadioCallback&) = default;
};
