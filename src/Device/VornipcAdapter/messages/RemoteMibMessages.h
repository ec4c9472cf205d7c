#pragma once

#include "WireMessage.h"

/// Endpoint that HCC data belong to; the radio only carries it.
enum HCCHandler_T : std::uint32_t {};

/// Shape of the messages that carry HCC data. The array always travels in full.
template <std::uint32_t Id>
struct HccMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    std::int32_t iRLWanOffset = 0;
    HCCHandler_T iHCCHandler{};
    std::int32_t iHCCDataLength = 0; ///< valid bytes of `aHCCDataArr`
    std::array<std::uint8_t, 1440> aHCCDataArr{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(iRLWanOffset), CEREAL_NVP(iHCCHandler), CEREAL_NVP(iHCCDataLength),
                         CEREAL_NVP(aHCCDataArr));
    }
};

/// Shape of the messages that carry hop data. The array always travels in full.
template <std::uint32_t Id>
struct HopMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    std::int32_t iHopDataLength = 0; ///< valid bytes of `aHopDataArr`
    std::array<std::uint8_t, 256> aHopDataArr{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(iHopDataLength), CEREAL_NVP(aHopDataArr));
    }
};

/// Radio to node, spontaneous: HCC data have come over the radio link.
struct HccRxIPC : HccMessage<0x500001> {};

/// Node to radio: HCC data to be sent over the radio link. Not received by this radio.
struct HccTxIPC : HccMessage<0x500002> {};

/// Radio to node, spontaneous: hop data have come over the radio link.
struct HopRxIPC : HopMessage<0x500101> {};

/// Node to radio: hop data to be sent over the radio link. Not received by this radio.
struct HopTxIPC : HopMessage<0x500102> {};
