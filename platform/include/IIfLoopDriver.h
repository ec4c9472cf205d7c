#pragma once

#include "IInterface.h"
#include "PlatformApi.h"
#include "RadioChannel.h"

#include <string>

/// Loop of one channel on the intermediate frequency; registered as "IIfLoopDriver_1" and "IIfLoopDriver_2". Both
/// operations return 0 when done.
class PLATFORM_API IIfLoopDriver : public IInterface {
public:
    /// Always with the channel, 0 included.
    static std::string interfaceName(RadioChannel channel)
    {
        return "IIfLoopDriver_" + std::to_string(static_cast<int>(channel));
    }

    /// @param active left as it is when the driver fails
    virtual int getIfLoopState(bool& active) = 0;

    /// @param channelIndex 0 or 1, the channel number less one
    virtual int setIfLoop(bool on, int channelIndex) = 0;
};
