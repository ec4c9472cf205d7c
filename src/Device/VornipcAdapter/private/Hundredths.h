#pragma once

#include <cstdint>

/// The node counts power in whole dB and dBm, the platform in hundredths.
namespace kro::device::vornipc {

inline constexpr int hundredthsPerWhole = 100;

/// Wraps around where the result needs more than 32 bits, as the radio counts.
constexpr std::int32_t toHundredths(std::int32_t whole)
{
    return static_cast<std::int32_t>(std::int64_t{whole} * hundredthsPerWhole);
}

/// Truncates toward zero.
constexpr std::int32_t toWhole(std::int32_t hundredths)
{
    return hundredths / hundredthsPerWhole;
}

} // namespace kro::device::vornipc
