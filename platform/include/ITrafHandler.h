#pragma once

#include "IInterface.h"
#include "PlatformApi.h"
#include "RadioChannel.h"

#include <string>

/// Traffic of the unit's channels; registered as "ITrafHandler". Both operations return 0 when done.
class PLATFORM_API ITrafHandler : public IInterface {
public:
    static std::string interfaceName() { return "ITrafHandler"; }

    /// Opens or closes a channel for traffic.
    virtual int enableTraffic(RadioChannel channel, bool enable) = 0;

    /// Brings a channel's traffic to rest in good order, or lets it run again.
    virtual int quiesceChannel(RadioChannel channel, bool quiesce) = 0;
};
