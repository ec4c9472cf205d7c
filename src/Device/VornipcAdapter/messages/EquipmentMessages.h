#pragma once

#include "WireMessage.h"

// Unit states and the link ------------------------------------------------------------------------------------------

/// Both ways: the radio of channel `ct` is gone.
struct RAULostIPC : HeaderOnlyMessage<0x200002> {};

/// Node to radio: the node's processor board goes down.
struct ADSNpuDownIPC : HeaderOnlyMessage<0x200008> {};

/// Node to radio: state of the modem unit. In service opens the gate on outgoing messages, out of service closes it.
struct MMUStateIPC : ModuleStateMessage<0x200009> {};

/// Node to radio: state of the radio of channel `ct`.
struct RAUStateIPC : ModuleStateMessage<0x200010> {};

/// Node to radio: state of the terminal; reduced service counts as up.
struct TermStateIPC : ModuleStateMessage<0x200011> {};

/// Radio to node, spontaneous: one line for the node's system log.
struct RLaprintExtIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200012;

    std::uint32_t printCode = 0; ///< 8 in every line that the radio sends
    std::uint32_t printSpare = 0;
    std::array<std::uint8_t, 160> printText{}; ///< text, always ended by a zero byte

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(printCode), CEREAL_NVP(printSpare), CEREAL_NVP(printText));
    }
};

/// Node to radio: the node has restarted.
struct VornRestartedIPC : HeaderOnlyMessage<0x200019> {};

/// Node to radio: close the link. Closes the gate; answered with ADSClosePciResIPC through the closed gate.
struct ADSClosePciReqIPC : HeaderOnlyMessage<0x200039> {};

struct ADSClosePciResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200040;

    std::uint32_t eClosePciRes = 0; ///< always 0

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eClosePciRes));
    }
};

// Self test and software status -------------------------------------------------------------------------------------

/// Capability words that node and radio exchange in the self test, one an area.
struct CompatibilityCodes_T {
    std::uint32_t capabilityRL = 0;
    std::uint32_t capabilityTF = 0;
    std::uint32_t capabilityPR = 0;
    std::uint32_t capabilityPH = 0;
    std::uint32_t capabilityFM = 0;
    std::uint32_t capabilityEH = 0;
    std::uint32_t capabilitySU = 0;
    std::uint32_t capabilityATPC = 0;
    std::uint32_t capabilityFF = 0;
    std::uint32_t capabilitySpare02 = 0;
    std::uint32_t capabilitySpare03 = 0;
    std::uint32_t capabilitySpare04 = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(capabilityRL), CEREAL_NVP(capabilityTF), CEREAL_NVP(capabilityPR), CEREAL_NVP(capabilityPH),
                CEREAL_NVP(capabilityFM), CEREAL_NVP(capabilityEH), CEREAL_NVP(capabilitySU),
                CEREAL_NVP(capabilityATPC), CEREAL_NVP(capabilityFF), CEREAL_NVP(capabilitySpare02),
                CEREAL_NVP(capabilitySpare03), CEREAL_NVP(capabilitySpare04));
    }
};

/// Node to radio: self test that carries the node's capabilities. Answered with ADSSelftestResIPC.
struct ADSSelftestReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200004;

    std::uint32_t eSelftestType = 0; ///< 0 makes the next self test exchange capabilities again
    CompatibilityCodes_T tCompatibilityCodes;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eSelftestType), CEREAL_NVP(tCompatibilityCodes));
    }
};

struct ADSSelftestResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200005;

    std::uint32_t eSelftestResult = 0;        ///< 2 for a self test of type 0, else 1
    CompatibilityCodes_T tCompatibilityCodes; ///< the radio's, in the first answer after an exchange was due; else 0

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eSelftestResult), CEREAL_NVP(tCompatibilityCodes));
    }
};

/// Node to radio. Answered with ADSSwStatusResIPC.
struct ADSSwStatusReqIPC : HeaderOnlyMessage<0x200006> {};
struct ADSSwStatusResIPC : HeaderOnlyMessage<0x200007> {};
