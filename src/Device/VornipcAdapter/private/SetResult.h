#pragma once

#include <cstdint>

namespace kro::device::vornipc {

/// Result word of the answers to requests that set something. Fixed by the node protocol.
inline constexpr std::uint32_t setDone = 0;
inline constexpr std::uint32_t setFailed = 1;

} // namespace kro::device::vornipc
