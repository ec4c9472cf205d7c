#pragma once

#include "IInterface.h"
#include "PlatformApi.h"
#include "RadioChannel.h"
#include "ResultCodes.h"
#include "RfChannelPlan.h"
#include "RfLoopCapability.h"

#include <string>

/// What the radio of one channel can do; registered as "IRadioCapability_1" and "IRadioCapability_2".
class PLATFORM_API IRadioCapability : public IInterface {
public:
    /// Always with the channel, 0 included.
    static std::string interfaceName(RadioChannel channel)
    {
        return "IRadioCapability_" + std::to_string(static_cast<int>(channel));
    }

    virtual Result getRfChannelPlan(RfChannelPlan& plan) = 0;
    virtual Result getRfLoopCapability(RfLoopCapability& capability) = 0;
};
