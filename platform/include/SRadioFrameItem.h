#pragma once

#include "PlatformApi.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

/// A modulation and code that a frame format offers.
struct PLATFORM_API SRadioFrameMode {
    std::string name;          ///< modulation and code, "64QAM_LIGHT"
    std::int32_t capacity = 0; ///< 0 behind the last mode in use
};

/// One frame format.
struct PLATFORM_API SRadioFrameItem {
    static constexpr std::size_t capacity = 20;

    std::uint32_t frameId = 0;
    std::array<SRadioFrameMode, capacity> modes{};
};
