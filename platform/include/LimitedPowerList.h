#pragma once

#include "EModulationAndCodeType.h"
#include "PlatformApi.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// Highest output power that a radio allows for one modulation and code.
struct PLATFORM_API LimitedPower {
    EModulationAndCodeType modulation{};
    std::int32_t maximumOutputPower = 0; ///< hundredths of a dBm
};

struct PLATFORM_API LimitedPowerList {
    /// One for every modulation and code there is.
    static constexpr std::size_t capacity = 43;

    std::uint32_t count = 0; ///< entries of `pairs` in use
    std::array<LimitedPower, capacity> pairs{};
};
