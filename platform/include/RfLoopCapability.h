#pragma once

#include "PlatformApi.h"

#include <cstdint>

struct PLATFORM_API RfLoopCapability {
    std::uint32_t loopType = 0; ///< kind of loop hardware, as the radio numbers it
    bool rfLoopAvailable = false;
};
