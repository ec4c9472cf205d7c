#pragma once

#include <cstdint>

namespace kro::device::vornipc {

/// Position of a message in the whitelist, 0 to 71.
enum class VornipcWhiteList : std::uint32_t {};

/// Whether a message may pass, inbound or outbound, while the whitelist is active. PS messages are not asked about.
bool isInVornipcWhiteList(std::uint32_t messageId);

} // namespace kro::device::vornipc
