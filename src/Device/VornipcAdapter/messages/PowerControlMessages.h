#pragma once

#include "WireMessage.h"

// ATPC fallback -----------------------------------------------------------------------------------------------------

/// Node to radio. Answered with ConfigureAtpcFallbackResIPC.
struct ConfigureAtpcFallbackReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x300017;

    std::int32_t tConfigureAtpcFallback = 0;
    std::int32_t tFadingTime = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(tConfigureAtpcFallback), CEREAL_NVP(tFadingTime));
    }
};

struct ConfigureAtpcFallbackResIPC : SetResultMessage<0x300018> {};

/// Node to radio. Answered with ActivateAtpcFallbackResIPC.
struct ActivateAtpcFallbackReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x300019;

    std::uint32_t tActivateAtpcFallback = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(tActivateAtpcFallback));
    }
};

struct ActivateAtpcFallbackResIPC : SetResultMessage<0x300020> {};

// Power inventory and current power ---------------------------------------------------------------------------------

/// What the radio can transmit, a maximum for each modulation; powers in whole dBm, 255 where not known.
struct RauPowerInventory {
    std::uint32_t atpcVersion = 0;
    std::uint32_t atpcUpdateRate = 0;
    std::int32_t rfMinOutputPower = 0;
    std::int32_t rfMaxOutputPower4QAM = 0;
    std::int32_t rfMaxOutputPower16QAM = 0;
    std::int32_t rfMaxOutputPower32QAM = 0;
    std::int32_t rfMaxOutputPower64QAM = 0;
    std::int32_t rfMaxOutputPower128QAM = 0;
    std::int32_t rfMaxOutputPower256QAM = 0;
    std::int32_t rfMaxOutputPower512QAM = 0;
    std::int32_t rfMaxOutputPower1024QAM = 0;
    std::int32_t rfMaxOutputPower2048QAM = 0;
    std::int32_t rfMaxOutputPower4096QAM = 0;
    std::int32_t rfMaxOutputPowerNotLimited = 0;
    std::uint32_t rfMaxOutputPowerPossible = 0;
    std::uint32_t txOnPossible = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(atpcVersion), CEREAL_NVP(atpcUpdateRate), CEREAL_NVP(rfMinOutputPower),
                CEREAL_NVP(rfMaxOutputPower4QAM), CEREAL_NVP(rfMaxOutputPower16QAM), CEREAL_NVP(rfMaxOutputPower32QAM),
                CEREAL_NVP(rfMaxOutputPower64QAM), CEREAL_NVP(rfMaxOutputPower128QAM),
                CEREAL_NVP(rfMaxOutputPower256QAM), CEREAL_NVP(rfMaxOutputPower512QAM),
                CEREAL_NVP(rfMaxOutputPower1024QAM), CEREAL_NVP(rfMaxOutputPower2048QAM),
                CEREAL_NVP(rfMaxOutputPower4096QAM), CEREAL_NVP(rfMaxOutputPowerNotLimited),
                CEREAL_NVP(rfMaxOutputPowerPossible), CEREAL_NVP(txOnPossible));
    }
};

/// Node to radio. Answered with GetRauPowerInventoryResIPC; not answered for an unknown channel.
struct GetRauPowerInventoryReqIPC : HeaderOnlyMessage<0x300021> {};

struct GetRauPowerInventoryResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x300022;

    RauPowerInventory getRauPowerInventory;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(getRauPowerInventory));
    }
};

/// Current power of one channel.
struct RfPowerReading {
    std::int32_t RfCurrentOutputPower = 0; ///< whole dBm
    std::int32_t RfCurrentInputPower = 0;  ///< tenths of a dBm

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(RfCurrentOutputPower), CEREAL_NVP(RfCurrentInputPower));
    }
};

/// Node to radio. Answered with GetRfPowerResIPC; not answered for an unknown channel.
struct GetRfPowerReqIPC : HeaderOnlyMessage<0x300023> {};

struct GetRfPowerResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x300024;

    RfPowerReading getRfPower;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(getRfPower));
    }
};

// Power settings ----------------------------------------------------------------------------------------------------

/// The node's truth values; whatever is not true counts as false.
enum TruthValue_T : std::uint32_t { truthValueTrue = 1, truthValueFalse = 2 };

/// RF taps; whatever is not on counts as off.
enum RfTaps_T : std::uint32_t { rfTapsOn = 2, rfTapsNotUsed = 4 };

/// Output power and ATPC settings asked for one channel, in whole dBm.
struct RfPowerSettings {
    std::int32_t RfSelectedMinOutputPower = 0;
    std::int32_t RfSelectedMaxOutputPower = 0;
    std::int32_t RfAtpcTargetInputPowerFE = 0; ///< wanted input power at the far end
    std::int32_t RfInputPowerThreshold = 0;    ///< -30 and below are accepted

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(RfSelectedMinOutputPower), CEREAL_NVP(RfSelectedMaxOutputPower),
                CEREAL_NVP(RfAtpcTargetInputPowerFE), CEREAL_NVP(RfInputPowerThreshold));
    }
};

/// Shape of the answers to the settings below; all three set-power requests share one answer id.
template <std::uint32_t Id>
struct SetPowerResultMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    std::uint32_t setRes = 0; ///< 0 done, 1 failed

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(setRes));
    }
};

/// Node to radio. Answered with SetRfPowerResIPC; not answered for an unknown channel.
struct SetRfPowerReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x300025;

    RfPowerSettings setRfPower;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(setRfPower));
    }
};

struct SetRfPowerResIPC : SetPowerResultMessage<0x300026> {};

/// Node to radio. Answered with SetRfPowerV2ResIPC; not answered for an unknown channel.
struct SetRfPowerV2ReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x300030;

    RfPowerSettings setRfPower;
    TruthValue_T HpMaxOutputPowerReduced{}; ///< of high-power radios

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(setRfPower), CEREAL_NVP(HpMaxOutputPowerReduced));
    }
};

struct SetRfPowerV2ResIPC : SetPowerResultMessage<0x300026> {};

/// Node to radio. Answered with SetRfPowerV3ResIPC; not answered for an unknown channel.
struct SetRfPowerV3ReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x300031;

    RfPowerSettings setRfPower;
    TruthValue_T HpMaxOutputPowerReduced{}; ///< of high-power radios
    RfTaps_T RfTaps{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(setRfPower), CEREAL_NVP(HpMaxOutputPowerReduced),
                         CEREAL_NVP(RfTaps));
    }
};

struct SetRfPowerV3ResIPC : SetPowerResultMessage<0x300026> {};

// Far end -----------------------------------------------------------------------------------------------------------

/// How far the far end limits its power for each modulation, in dB.
struct PowerLimitation {
    std::int32_t powerLimitation4QAM = 0;
    std::int32_t powerLimitation16QAM = 0;
    std::int32_t powerLimitation32QAM = 0;
    std::int32_t powerLimitation64QAM = 0;
    std::int32_t powerLimitation128QAM = 0;
    std::int32_t powerLimitation256QAM = 0;
    std::int32_t powerLimitation512QAM = 0;
    std::int32_t powerLimitation1024QAM = 0;
    std::int32_t powerLimitation2048QAM = 0;
    std::int32_t powerLimitation4096QAM = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(powerLimitation4QAM), CEREAL_NVP(powerLimitation16QAM), CEREAL_NVP(powerLimitation32QAM),
                CEREAL_NVP(powerLimitation64QAM), CEREAL_NVP(powerLimitation128QAM), CEREAL_NVP(powerLimitation256QAM),
                CEREAL_NVP(powerLimitation512QAM), CEREAL_NVP(powerLimitation1024QAM),
                CEREAL_NVP(powerLimitation2048QAM), CEREAL_NVP(powerLimitation4096QAM));
    }
};

/// Node to radio. Answered with FEPowerLimitationResIPC; not answered for an unknown channel.
struct FEPowerLimitationReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x300028;

    PowerLimitation powerlimitation;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(powerlimitation));
    }
};

struct FEPowerLimitationResIPC : SetPowerResultMessage<0x300029> {};
