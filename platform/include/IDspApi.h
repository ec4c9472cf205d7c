#pragma once

#include "IInterface.h"
#include "PlatformApi.h"
#include "RadioChannel.h"

#include <string>

/// @return the broker's key of a channel's signal processor, always with the channel
template <class Channel>
std::string DspApiInterfaceName(const Channel& channel)
{
    return "IDspApi_" + std::to_string(static_cast<int>(channel));
}

/// Signal processor of one channel; registered as "IDspApi_1" and "IDspApi_2". Modules only check that it is there.
class PLATFORM_API IDspApi : public IInterface {
public:
    static std::string interfaceName(RadioChannel channel) { return DspApiInterfaceName(channel); }
};
