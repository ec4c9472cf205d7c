#pragma once

#include "WireMessage.h"

// The node's protocol gives these values their meaning; the radio only carries them.
enum ProtectionMode_T : std::uint32_t {};
enum ActTxRadio_T : std::uint32_t {};
enum WorkingRx_T : std::uint32_t {};

/// Shape of the messages that carry a protection mode.
template <std::uint32_t Id>
struct ProtectionModeMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    ProtectionMode_T eProtectionMode{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eProtectionMode));
    }
};

/// Shape of the messages that name the transmitting radio.
template <std::uint32_t Id>
struct ActiveRadioMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    ActTxRadio_T eActTxRadio{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eActTxRadio));
    }
};

/// Shape of the messages that name the receiver in use.
template <std::uint32_t Id>
struct WorkingRxMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    WorkingRx_T eWorkingRx{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eWorkingRx));
    }
};

/// Shape of the messages that name the active unit.
template <std::uint32_t Id>
struct ActiveUnitMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    std::uint32_t eActiveUnit = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eActiveUnit));
    }
};

// Switching ---------------------------------------------------------------------------------------------------------
// Requests go from the node to the radio. A "Req" is answered with the "Res" behind it unless said otherwise.

struct SetSwitchModeReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x1000001;

    std::uint32_t eSwitchMode = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eSwitchMode));
    }
};

struct SetSwitchModeResIPC : SetResultMessage<0x1000002> {};

struct SetActiveUnitReqIPC : ActiveUnitMessage<0x1000003> {};
struct SetActiveUnitResIPC : SetResultMessage<0x1000004> {};

struct SetRevertiveTxReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x1000005;

    std::uint32_t eRevTxRadio = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eRevTxRadio));
    }
};

struct SetRevertiveTxResIPC : SetResultMessage<0x1000006> {};

struct SetRevertiveRxReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x1000007;

    std::uint32_t eRevRxRadio = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eRevRxRadio));
    }
};

struct SetRevertiveRxResIPC : SetResultMessage<0x1000008> {};

struct GetActiveRadioReqIPC : HeaderOnlyMessage<0x1000009> {};
struct GetActiveRadioResIPC : ActiveRadioMessage<0x1000010> {};

struct GetWorkingRxReqIPC : HeaderOnlyMessage<0x1000011> {};
struct GetWorkingRxResIPC : WorkingRxMessage<0x1000012> {};

struct SetTaSwitchReqIPC : ActiveUnitMessage<0x1000013> {};
struct SetTaSwitchResIPC : SetResultMessage<0x1000014> {};

struct SetActiveRadioReqIPC : ActiveRadioMessage<0x1000015> {};
struct SetActiveRadioResIPC : SetResultMessage<0x1000016> {};

struct SetWorkingRxReqIPC : WorkingRxMessage<0x1000017> {};
struct SetWorkingRxResIPC : SetResultMessage<0x1000018> {};

/// Radio to node, spontaneous: another radio transmits now.
struct NotifyActiveRadioSwIPC : ActiveRadioMessage<0x1000019> {};

/// Radio to node, spontaneous: another receiver is in use now.
struct NotifyWorkingRxSwIPC : WorkingRxMessage<0x1000020> {};

/// Not answered.
struct SetSpontSwNotReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x1000021;

    std::uint32_t eSpontSwNot = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eSpontSwNot));
    }
};

struct ResetTxSwOverErrReqIPC : HeaderOnlyMessage<0x1000022> {};
struct ResetTxSwOverErrResIPC : SetResultMessage<0x1000023> {};

// Mode, threshold and configuration ---------------------------------------------------------------------------------

struct ProtectionModeReqIPC : ProtectionModeMessage<0x1000024> {};
struct ProtectionModeResIPC : SetResultMessage<0x1000025> {};

struct SetRFInputPowerThresholdReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x1000026;

    std::int32_t iRFInputPowerThreshold = 0; ///< whole dBm; -30 and below are accepted

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(iRFInputPowerThreshold));
    }
};

struct SetRFInputPowerThresholdResIPC : SetResultMessage<0x1000027> {};

/// State of the companion's modem unit. Not answered.
struct CompanionMMUStatusIPC : ModuleStateMessage<0x1000028> {};

struct GetActiveUnitReqIPC : HeaderOnlyMessage<0x1000029> {};
struct GetActiveUnitResIPC : ActiveUnitMessage<0x1000030> {};

struct SetActiveRadioRemoteReqIPC : ActiveRadioMessage<0x1000031> {};
struct SetActiveRadioRemoteResIPC : SetResultMessage<0x1000032> {};

struct GetTaSwitchReqIPC : HeaderOnlyMessage<0x1000036> {};
struct GetTaSwitchResIPC : ActiveUnitMessage<0x1000037> {};

struct TxSwitchOverConfigurationReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x1000039;

    std::uint32_t eTxSwitchOverConfiguration = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eTxSwitchOverConfiguration));
    }
};

struct TxSwitchOverConfigurationResIPC : SetResultMessage<0x1000040> {};

/// Radio to node, spontaneous: the protection mode has changed.
struct NotifyProtectionModeOperStatusIPC : ProtectionModeMessage<0x1000043> {};

/// Not answered.
struct GetProtectionModeOperStatusReqIPC : HeaderOnlyMessage<0x1000044> {};
