#pragma once

#include "PlatformApi.h"

#include <cstdint>

extern "C" {

/// Limits the highest modulation that the transmitter of one channel may use.
/// @param channelIndex 0 or 1, the channel number less one
/// @param limit        in the node's numbering of the modulations
PLATFORM_API void TrfMlm_setTxMaxAcmLimit(std::int32_t channelIndex, std::uint32_t limit);

} // extern "C"
