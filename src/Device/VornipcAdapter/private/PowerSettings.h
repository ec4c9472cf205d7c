#pragma once

#include <cstdint>

#include "Trace.h"

namespace kro::device::vornipc {

/// Highest input power threshold the radio accepts, whole dBm. Fixed by the node protocol.
inline constexpr std::int32_t highestInputPowerThreshold = -30;

/// The last two arguments of every notification of requested power settings. Their meaning is the platform's.
inline constexpr std::int32_t powerSettingsSpare0 = 0;
inline constexpr std::int32_t powerSettingsSpare1 = 1;

/// Whether a threshold that the node asks for is within the limit; logs that it is not.
inline bool acceptsInputPowerThreshold(const Trace& trace, std::int32_t threshold,
                                       const CallSite& site = CallSite::here())
{
    if (threshold > highestInputPowerThreshold) {
        trace.at(TraceLevel::Error, site) << site.method << "(): Requested RfInputPowerThreshold = " << threshold
                                          << " is above the limit = " << highestInputPowerThreshold;
        return false;
    }
    return true;
}

} // namespace kro::device::vornipc
