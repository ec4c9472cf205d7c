#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "RadioChannel.h"
#include "Trace.h"

namespace kro::device::vornipc {

/// Most radio channels that a unit has.
inline constexpr unsigned maximumChannels = 2;

/// Whether `ct` is the number of a channel that a unit can have.
constexpr bool isChannel(RadioChannel ct)
{
    return ct >= 1 && ct <= static_cast<int>(maximumChannels);
}

/// How many channels a handler serves of those that the unit is said to have; logs that there are too many.
/// @param site the handler's constructor
inline std::uint8_t servedChannels(const Trace& trace, std::uint8_t numberOfChannels,
                                   const CallSite& site = CallSite::here())
{
    if (numberOfChannels > maximumChannels) {
        trace.at(TraceLevel::Error, site) << site.method << "(): Number of channels " << unsigned{numberOfChannels}
                                          << " is larger than maximum number of channels " << maximumChannels;
        return maximumChannels;
    }
    return numberOfChannels;
}

/// Something that every channel has, by channel number. Any number may be asked for: one that no unit has gives an
/// entry of its own that stays as it was made, so that interfaces in it are missing.
template <class T>
class PerChannel {
public:
    T& operator[](RadioChannel ct) { return m_entries[position(ct)]; }
    const T& operator[](RadioChannel ct) const { return m_entries[position(ct)]; }

private:
    static std::size_t position(RadioChannel ct) { return isChannel(ct) ? static_cast<std::size_t>(ct) : 0; }

    std::array<T, maximumChannels + 1> m_entries{}; ///< entry 0 for all that is no channel
};

} // namespace kro::device::vornipc
