#pragma once

#include "WireMessage.h"

/// Node to radio. Answered with GetIfOperStatusResIPC.
struct GetIfOperStatusReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x700001;

    std::uint32_t ePortType = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(ePortType));
    }
};

struct GetIfOperStatusResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x700002;

    std::uint32_t ePortType = 0;     ///< as asked
    std::uint32_t eIfOperStatus = 4; ///< 1 for a port type that the radio knows, else 4

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(ePortType), CEREAL_NVP(eIfOperStatus));
    }
};

/// Node to radio, not answered.
struct SetIfAdminStatusIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x700003;

    std::uint32_t ePortType = 0;
    std::uint32_t eIfAdminStatus = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(ePortType), CEREAL_NVP(eIfAdminStatus));
    }
};

/// Node to radio. Answered with SetIfLoopStatusResIPC.
struct SetIfLoopStatusReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x700007;

    std::uint32_t eLoop = 0; ///< 2 on, 3 off

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eLoop));
    }
};

struct SetIfLoopStatusResIPC : SetResultMessage<0x700026> {};

/// Whether the transmitter of a channel is on.
struct RfTxOperStatus {
    std::uint32_t RFTxOperStatus = 0; ///< 2 off, 3 on

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(RFTxOperStatus));
    }
};

/// Node to radio. Answered with GetRFTxOperStatusResIPC.
struct GetRFTxOperStatusReqIPC : HeaderOnlyMessage<0x700027> {};

struct GetRFTxOperStatusResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x700028;

    RfTxOperStatus tRFTxOperStatus;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(tRFTxOperStatus));
    }
};

/// Radio settings of one channel.
struct RfIfParametersExt {
    std::int32_t RFCurrStepNum = 0;    ///< transmit frequency step; 0: absent
    std::uint32_t RFTxAdminStatus = 0; ///< transmitter: 2 on, 3 off, else unchanged
    std::uint32_t RFLoopEnable = 0;    ///< 2 on, 3 off
    std::int32_t RFCurrStepNumRX = 0;  ///< receive frequency step; 0: absent

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(RFCurrStepNum), CEREAL_NVP(RFTxAdminStatus), CEREAL_NVP(RFLoopEnable),
                CEREAL_NVP(RFCurrStepNumRX));
    }
};

/// Node to radio. Answered with SetXfRFIfStatusResIPC.
struct SetXfRFIfStatusReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x700066;

    RfIfParametersExt tSetXfRFIFParametersExt;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(tSetXfRFIFParametersExt));
    }
};

struct SetXfRFIfStatusResIPC : SetResultMessage<0x700022> {};

/// State of a channel's queues in the node; traffic may run unless they are disabled.
enum MLMQueueStatus_T : std::uint32_t { queueUndefinedC = 0, queueEnabledC = 1, queueDisabledC = 2 };

/// Node to radio. Answered with SetMLMResIPC.
struct SetMLMReqIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x700068;

    MLMQueueStatus_T tMLMQueueStatus_T{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(tMLMQueueStatus_T));
    }
};

struct SetMLMResIPC : SetResultMessage<0x700067> {};
