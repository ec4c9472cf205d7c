#pragma once

#include "PlatformApi.h"

#include <array>
#include <cstdint>

/// What a radio unit says of itself. Texts are UTF-8, filled up with zeros; one of the full width has no terminating
/// zero.
struct PLATFORM_API RadioInventory {
    /// As the radio numbers them; 1 to 4 are known, any byte may come.
    enum SupplyVoltages : std::uint8_t {};

    std::array<char, 32> productName{};
    std::array<char, 22> hwProductNumber{};
    std::array<char, 16> hwRevision{};
    std::array<char, 32> serialNumber{};
    std::array<char, 22> swProductNumber{};
    std::array<char, 16> swRevision{};
    std::uint32_t resetType = 0; ///< why the radio last started
    SupplyVoltages supplyVoltage{};
};
