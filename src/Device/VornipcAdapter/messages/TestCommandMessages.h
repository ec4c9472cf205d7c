#pragma once

#include "WireMessage.h"

/// Data of a test command frame; they always travel in full.
struct TestCommandData {
    std::array<std::uint8_t, 556> data{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(data));
    }
};

/// Frame of the node's test command protocol; the radio only carries it.
struct TestCommandFrame_T {
    std::int32_t length = 0; ///< valid bytes of the data, by the sender's word
    std::int32_t slot = 0;
    std::uint32_t source = 0;
    std::int32_t dest = 0;
    std::int32_t tmt = 0;
    std::uint32_t operation = 0;
    std::uint32_t direction = 0;
    std::int32_t jobId = 0;
    TestCommandData commandDataArr;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(length), CEREAL_NVP(slot), CEREAL_NVP(source), CEREAL_NVP(dest), CEREAL_NVP(tmt),
                CEREAL_NVP(operation), CEREAL_NVP(direction), CEREAL_NVP(jobId), CEREAL_NVP(commandDataArr));
    }
};

/// Shape of the messages that carry a test command frame.
template <std::uint32_t Id>
struct TestCommandMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    TestCommandFrame_T tTestCommandFrame;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(tTestCommandFrame));
    }
};

/// Node to radio, not answered.
struct TestCommandRxIPC : TestCommandMessage<0x800001> {};

/// Radio to node, spontaneous.
struct TestCommandTxIPC : TestCommandMessage<0x800002> {};
