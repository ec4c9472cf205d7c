#pragma once

#include "WireMessage.h"

/// Capability words of a radio, one an area.
struct RauCompatibilityCodes {
    std::uint32_t RAUcapabilityRL = 0;
    std::uint32_t RAUcapabilityTF = 0;
    std::uint32_t RAUcapabilityPR = 0;
    std::uint32_t RAUcapabilityPH = 0;
    std::uint32_t RAUcapabilityFM = 0;
    std::uint32_t RAUcapabilityEH = 0;
    std::uint32_t RAUcapabilitySU = 0;
    std::uint32_t RAUcapabilityATPC = 0;
    std::uint32_t RAUcapabilitySpare01 = 0;
    std::uint32_t RAUcapabilitySpare02 = 0;
    std::uint32_t RAUcapabilitySpare03 = 0;
    std::uint32_t RAUcapabilitySpare04 = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(RAUcapabilityRL), CEREAL_NVP(RAUcapabilityTF), CEREAL_NVP(RAUcapabilityPR),
                CEREAL_NVP(RAUcapabilityPH), CEREAL_NVP(RAUcapabilityFM), CEREAL_NVP(RAUcapabilityEH),
                CEREAL_NVP(RAUcapabilitySU), CEREAL_NVP(RAUcapabilityATPC), CEREAL_NVP(RAUcapabilitySpare01),
                CEREAL_NVP(RAUcapabilitySpare02), CEREAL_NVP(RAUcapabilitySpare03), CEREAL_NVP(RAUcapabilitySpare04));
    }
};

/// Shape of the messages that carry a radio's capability words.
template <std::uint32_t Id>
struct RauCapabilityMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    RauCompatibilityCodes rauCompatibilityCodes;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(rauCompatibilityCodes));
    }
};

/// Node to radio; its codes are not used. Answered with GetRAUCapabilityResIPC.
struct GetRAUCapabilityReqIPC : RauCapabilityMessage<0x200056> {};
struct GetRAUCapabilityResIPC : RauCapabilityMessage<0x200057> {};

/// One sub-band index, in a word of its own.
struct RauSubBand {
    std::uint32_t value = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(value));
    }
};

/// Node to radio: which sub-bands the radio supports. Answered with GetRAUIndexCapabilitiesResIPC.
struct GetRAUIndexCapabilitiesReqIPC : HeaderOnlyMessage<0x200123> {};

struct GetRAUIndexCapabilitiesResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200124;

    std::uint32_t rauSubBandsNum = 0; ///< valid entries of `rauSubBands`; the others are 0
    std::array<RauSubBand, 101> rauSubBands{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(rauSubBandsNum), CEREAL_NVP(rauSubBands));
    }
};

/// Node to radio: move to another sub-band. Answered with SetRAUIndexCapabilitiesResIPC.
struct SetRAUIndexCapabilitiesReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200125;

    std::uint32_t rauSubBand = 0; ///< the low byte counts

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(rauSubBand));
    }
};

struct SetRAUIndexCapabilitiesResIPC : SetResultMessage<0x200126> {};

/// Radio to node, spontaneous: the radio of channel `ct` is there. Inventory texts are filled up with zero bytes.
struct RauDetected1IPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200131;

    std::array<std::uint8_t, 32> productName{};
    std::array<std::uint8_t, 22> hwProductNumber{};
    std::array<std::uint8_t, 16> hwRevision{};
    std::array<std::uint8_t, 32> serialNumber{};
    std::array<std::uint8_t, 22> swProductNumber{};
    std::array<std::uint8_t, 16> swRevision{};
    std::uint32_t frequencyBand = 0;
    std::uint32_t subBand = 0;
    std::uint32_t rfBaseTxFrequency = 0;
    std::uint32_t rfBaseRxFrequency = 0;
    std::uint32_t rfStepLimitLowTx = 0;
    std::uint32_t rfStepLimitHighTx = 0;
    std::uint32_t rfStepSizeTx = 0;
    std::uint32_t rfStepLimitLowRx = 0;
    std::uint32_t rfStepLimitHighRx = 0;
    std::uint32_t rfStepSizeRx = 0;    ///< always as `rfStepSizeTx`
    std::uint32_t rfLoopAvailable = 0; ///< 2 yes, 3 no
    std::uint32_t resetType = 0;
    std::uint32_t supplyVoltage = 0; ///< the node's numbering, 0 to 4

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(productName), CEREAL_NVP(hwProductNumber), CEREAL_NVP(hwRevision),
                         CEREAL_NVP(serialNumber), CEREAL_NVP(swProductNumber), CEREAL_NVP(swRevision),
                         CEREAL_NVP(frequencyBand), CEREAL_NVP(subBand), CEREAL_NVP(rfBaseTxFrequency),
                         CEREAL_NVP(rfBaseRxFrequency), CEREAL_NVP(rfStepLimitLowTx), CEREAL_NVP(rfStepLimitHighTx),
                         CEREAL_NVP(rfStepSizeTx), CEREAL_NVP(rfStepLimitLowRx), CEREAL_NVP(rfStepLimitHighRx),
                         CEREAL_NVP(rfStepSizeRx), CEREAL_NVP(rfLoopAvailable), CEREAL_NVP(resetType),
                         CEREAL_NVP(supplyVoltage));
    }
};
