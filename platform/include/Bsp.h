#pragma once

#include "PlatformApi.h"

#include <cstdint>

// Board support.
extern "C" {

/// Tells the board the slot of the node's subrack that it sits in.
PLATFORM_API void Bsp_setSlotId(unsigned slot);

PLATFORM_API std::uint32_t Bsp_getProductId();

} // extern "C"
