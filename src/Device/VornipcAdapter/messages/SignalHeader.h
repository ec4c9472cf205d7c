#pragma once

#include <cereal/cereal.hpp>
#include <cstdint>

/// Header of every ordinary message, 24 bytes.
struct SignalHeader {
    static constexpr const char* headerName = "SignalHeader";
    static constexpr bool everyFieldOnce = true; ///< holds for all messages; see archives/WireFields.h

    std::uint32_t slot = 0;     ///< slot of the radio unit in the node
    std::uint32_t sigId = 0;    ///< signal id
    std::uint32_t senderId = 0; ///< sender id
    std::uint32_t seqNr = 0;    ///< an answer carries its request's; the top bit marks a spontaneous message
    std::uint32_t spare1 = 0;
    std::uint32_t ct = 0; ///< radio channel concerned, 1 or 2; 0 where none

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(slot), CEREAL_NVP(sigId), CEREAL_NVP(senderId), CEREAL_NVP(seqNr), CEREAL_NVP(spare1),
                CEREAL_NVP(ct));
    }
};
