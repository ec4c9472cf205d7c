#pragma once

#include <cstdint>
#include <vector>

/// Number of a radio channel as the platform and the node count: 1 for the first channel, 2 for the second. Any other
/// value may arrive from outside and is refused by whoever uses it. Not to be confused with the 0-based index that some
/// platform calls take: that one is a plain `int`.
enum RadioChannel : std::int32_t {};

/// The channels of a unit with `count` radio channels in ascending order: {1} for 1, {1, 2} for 2, none for any other
/// count.
std::vector<RadioChannel> getRadioChannelIds(unsigned int count);
