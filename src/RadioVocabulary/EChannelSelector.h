#pragma once

#include <cstdint>

/// Channel 1 or 2, as components of the radio software name it to each other. Any other value is refused by whoever
/// uses it.
enum EChannelSelector : std::uint32_t {};
