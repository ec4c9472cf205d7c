#pragma once

#include "PlatformApi.h"

#include <cstdint>

/// Frequencies that a radio can be tuned to: base + step number x step size, each direction with its own base and its
/// own lowest and highest step. All frequencies are in one unit, which is the radio's.
struct PLATFORM_API RfChannelPlan {
    std::uint32_t frequencyBand = 0;
    std::uint32_t subBand = 0;
    std::uint32_t stepSize = 0; ///< of both directions
    std::uint32_t rfBaseTxFrequency = 0;
    std::uint32_t rfBaseRxFrequency = 0;
    std::uint32_t rfStepLimitLowTx = 0;
    std::uint32_t rfStepLimitHighTx = 0;
    std::uint32_t rfStepLimitLowRx = 0;
    std::uint32_t rfStepLimitHighRx = 0;
};
