#pragma once

#include <cereal/cereal.hpp>
#include <cstdint>

/// State of a PS exchange.
enum class PsStatus : std::uint8_t { done = 0, failed = 5 };

/// Kind of a PS message.
enum class PsKind : std::uint8_t { none = 0, groupRequest = 0x10 };

/// Action that a PS message asks for or answers.
enum class PsAction : std::uint8_t { none = 0, set = 3, setDone = 4 };

/// Header of every message from and to the PS device, 24 bytes.
struct PsSignalHeader {
    static constexpr const char* headerName = "PsSignalHeader";
    static constexpr bool everyFieldOnce = true; ///< holds for all messages; see archives/WireFields.h

    std::uint8_t slot = 0;
    std::uint8_t psVersion = 0;
    PsStatus psStatus = PsStatus::done;
    PsKind ps = PsKind::none; ///< only group requests are dispatched
    std::uint8_t msgType = 0;
    PsAction action = PsAction::none;
    std::uint16_t seqNo = 0;
    std::uint8_t lastPart = 0; ///< last-part marker of a message sent in parts
    std::uint8_t noOfObjects = 0;
    std::uint16_t sizeOfObjects = 0; ///< bytes
    PsStatus status = PsStatus::done;
    std::uint8_t objType = 0;
    std::uint8_t simulation = 0;
    std::uint8_t spare = 0;
    std::uint16_t oidLen = 0;  ///< length of the object identifier
    std::uint16_t dataLen = 0; ///< length of the object data
    std::uint32_t groupId = 0; ///< dispatch key

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(slot), CEREAL_NVP(psVersion), CEREAL_NVP(psStatus), CEREAL_NVP(ps), CEREAL_NVP(msgType),
                CEREAL_NVP(action), CEREAL_NVP(seqNo), CEREAL_NVP(lastPart), CEREAL_NVP(noOfObjects),
                CEREAL_NVP(sizeOfObjects), CEREAL_NVP(status), CEREAL_NVP(objType), CEREAL_NVP(simulation),
                CEREAL_NVP(spare), CEREAL_NVP(oidLen), CEREAL_NVP(dataLen), CEREAL_NVP(groupId));
    }
};
