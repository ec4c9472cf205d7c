#pragma once

#include "WireMessage.h"

// Restart, status and configuration of a radio ----------------------------------------------------------------------

/// Node to radio: restart the radio of channel `ct`. Answered with RAURestartResIPC.
struct RAURestartReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200017;

    std::uint32_t eModuleRestartCommand = 0; ///< 1 restarts; every other command is refused

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eModuleRestartCommand));
    }
};

struct RAURestartResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200018;

    std::uint32_t eRestartResult = 0; ///< 1 restart accepted, 2 refused

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eRestartResult));
    }
};

/// Node to radio. Answered with RAUStatusResIPC.
struct RAUStatusReqIPC : HeaderOnlyMessage<0x200020> {};

struct RAUStatusResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200021;

    std::int32_t iRAUTemperature = 0; ///< degrees Celsius; 0 where it is not known

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(iRAUTemperature));
    }
};

/// Node to radio. Answered with SetRAUDefaultConfigResIPC.
struct SetRAUDefaultConfigReqIPC : HeaderOnlyMessage<0x200022> {};
struct SetRAUDefaultConfigResIPC : SetResultMessage<0x200023> {};

// Bit errors and modulation -----------------------------------------------------------------------------------------

/// Node to radio. Answered with SetBerAlarmThresholdResIPC.
struct SetBerAlarmThresholdReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200048;

    std::uint32_t eBerAlarmThreshold = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eBerAlarmThreshold));
    }
};

struct SetBerAlarmThresholdResIPC : SetResultMessage<0x200049> {};

/// Node to radio, not answered.
struct ResetBERCountersIPC : HeaderOnlyMessage<0x200069> {};

/// Node to radio, not answered: highest transmit modulation that channel `ct` may use.
struct SetTxMaxAcmLimitReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200116;

    std::uint32_t setTxMaxCap = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(setTxMaxCap));
    }
};

/// Node to radio: whether channel `ct` shifts its modulation by itself. Answered with GetShiftStatusResIPC.
struct GetShiftStatusReqIPC : HeaderOnlyMessage<0x200129> {};

struct GetShiftStatusResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200130;

    std::uint32_t currentACMShiftStatus = 0; ///< 0 unknown, 1 disabled, 2 enabled

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(currentACMShiftStatus));
    }
};

// Space diversity combiner (SDC) and its delay alignment (DADE) ------------------------------------------------------

/// Shape of the messages that carry the combiner's status.
template <std::uint32_t Id>
struct SdcStatusMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    std::uint32_t eSDCStatus = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eSDCStatus));
    }
};

/// Shape of the messages that carry the combiner's signal path.
template <std::uint32_t Id>
struct SdcPathMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    std::uint32_t eSDCPath = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eSDCPath));
    }
};

/// Node to radio. Answered with SetSDCAdminStatusResIPC.
struct SetSDCAdminStatusReqIPC : SdcStatusMessage<0x200078> {};
struct SetSDCAdminStatusResIPC : SdcStatusMessage<0x200079> {};

/// Node to radio. Answered with GetSDCOperStatusResIPC.
struct GetSDCOperStatusReqIPC : HeaderOnlyMessage<0x200080> {};
struct GetSDCOperStatusResIPC : SdcStatusMessage<0x200081> {};

/// Node to radio. Answered with DadeControlResIPC.
struct DadeControlReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200082;

    std::uint32_t eDadeCtrl = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eDadeCtrl));
    }
};

struct DadeControlResIPC : SetResultMessage<0x200083> {};

/// Node to radio. Answered with GetDadeStatusResIPC.
struct GetDadeStatusReqIPC : HeaderOnlyMessage<0x200084> {};

struct GetDadeStatusResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200085;

    std::uint32_t eDADEStatus = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eDADEStatus));
    }
};

/// Node to radio. Answered with SetSDCPathResIPC.
struct SetSDCPathReqIPC : SdcPathMessage<0x200086> {};
struct SetSDCPathResIPC : SetResultMessage<0x200087> {};

/// Readings of the combiner.
struct SdcCurrentData {
    std::int32_t RFCurrentInputPowerSdcMain = 0;
    std::int32_t RFCurrentInputPowerSdcDiv = 0;
    std::int32_t SdcGain = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(RFCurrentInputPowerSdcMain), CEREAL_NVP(RFCurrentInputPowerSdcDiv), CEREAL_NVP(SdcGain));
    }
};

/// Node to radio. Answered with GetSDCCurrentDataResIPC.
struct GetSDCCurrentDataReqIPC : HeaderOnlyMessage<0x200088> {};

struct GetSDCCurrentDataResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200089;

    SdcCurrentData tSDCCurrentData;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(tSDCCurrentData));
    }
};

/// Node to radio. Answered with GetSDCActualPathResIPC.
struct GetSDCActualPathReqIPC : HeaderOnlyMessage<0x200090> {};
struct GetSDCActualPathResIPC : SdcPathMessage<0x200091> {};

// Carriers and power resources --------------------------------------------------------------------------------------

/// Node to radio. Answered with SetCarrierTermPreambleResIPC.
struct SetCarrierTermPreambleReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200121;

    std::uint32_t eCarrierTermPreamble = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eCarrierTermPreamble));
    }
};

struct SetCarrierTermPreambleResIPC : SetResultMessage<0x200122> {};

/// Node to radio. Answered with ResetInsufficientPowerResourcesErrorResIPC.
struct ResetInsufficientPowerResourcesErrorReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200127;

    std::uint32_t param = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(param));
    }
};

struct ResetInsufficientPowerResourcesErrorResIPC : SetResultMessage<0x200128> {};

/// What the node tells of a companion carrier.
struct CarrierStatus {
    std::uint32_t carrierAction = 0;
    std::uint32_t compSlot = 0; ///< slot of the companion
    std::uint32_t compCt = 0;   ///< radio channel of the companion
    std::uint32_t spare1 = 0;
    std::uint32_t spare2 = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(carrierAction), CEREAL_NVP(compSlot), CEREAL_NVP(compCt), CEREAL_NVP(spare1),
                CEREAL_NVP(spare2));
    }
};

/// Node to radio, not answered.
struct NotifyCarrierStatusIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200132;

    CarrierStatus carrierStatus;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(carrierStatus));
    }
};

/// Node to radio, not answered: state of the radio when protection starts.
struct NotifyInitRAUStateProtcIPC : ModuleStateMessage<0x200133> {};

// BPM commands ------------------------------------------------------------------------------------------------------

/// Radio to node, spontaneous: a raw BPM command, filled up with zero bytes. The node answers with BpmCommandResIPC.
struct BpmCommandReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200134;

    std::array<std::uint8_t, 120> bpmCommandReqArray{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(bpmCommandReqArray));
    }
};

/// A BPM command and the response to it.
struct BpmCommandRes {
    std::array<std::uint8_t, 120> bpmCommandReqArray{};
    std::array<std::uint8_t, 120> bpmCommandResArray{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(bpmCommandReqArray), CEREAL_NVP(bpmCommandResArray));
    }
};

/// Node to radio, not answered: the response to a BPM command of the radio.
struct BpmCommandResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x200135;

    BpmCommandRes aBpmCommandRes;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(aBpmCommandRes));
    }
};
