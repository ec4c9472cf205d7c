#pragma once

#include "WireMessage.h"

// Messages of the PS device; their id is the group of the object that they concern.

/// The continuous-wave group: switches an unmodulated carrier on a radio channel.
struct ContinuousWaveGroupMessage : PsSignalHeader {
    static constexpr std::uint32_t messageId = 8434;

    std::uint32_t ct = 0;     ///< radio channel, 1 or 2
    std::uint32_t attrib = 0; ///< 1, the switch, is the group's only attribute
    std::uint32_t enable = 0; ///< continuous wave on unless 0

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(ct), CEREAL_NVP(attrib), CEREAL_NVP(enable));
    }
};

/// Node to radio. Answered with HandleContinuousWaveGroupResIPC.
struct HandleContinuousWaveGroupReqIPC : ContinuousWaveGroupMessage {};
struct HandleContinuousWaveGroupResIPC : ContinuousWaveGroupMessage {};

/// Node to radio, not answered: an entry of the radio link's WAN interface group.
struct HandleXfRlWanIfEntryGroupReqIPC : PsSignalHeader {
    static constexpr std::uint32_t messageId = 8409;

    std::uint32_t data1 = 0;
    std::uint32_t data2 = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(data1), CEREAL_NVP(data2));
    }
};
