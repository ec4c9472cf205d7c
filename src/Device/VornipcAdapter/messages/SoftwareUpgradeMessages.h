#pragma once

#include "WireMessage.h"

// Board software ----------------------------------------------------------------------------------------------------
// All messages go from the node to the radio unless said otherwise; the radio answers none of them.

/// Shape of the messages that name a board and nothing else.
template <std::uint32_t Id>
struct BoardMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    std::int32_t eBoardType = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eBoardType));
    }
};

struct GetSwBoardReqIPC : BoardMessage<0x600001> {};
struct TestPassiveBankIPC : BoardMessage<0x600007> {};
struct CheckRestartTypeIPC : BoardMessage<0x600008> {};
struct DWLTestNotOkIPC : BoardMessage<0x600009> {};
struct SetActiveBankIPC : BoardMessage<0x600010> {};
struct ResetTestPassiveBankIPC : BoardMessage<0x600014> {};

/// Software revision in one bank of a board.
struct BoardRevision {
    std::array<std::uint8_t, 64> data{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(data));
    }
};

/// Software revisions in both banks of a board.
struct BoardSwRevisionData {
    BoardRevision activeBoardRevision;
    BoardRevision passiveBoardRevision;
    std::int32_t passiveValidity = 1; ///< of the passive bank

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(activeBoardRevision), CEREAL_NVP(passiveBoardRevision), CEREAL_NVP(passiveValidity));
    }
};

/// Radio to node: answer to GetSwBoardReqIPC, which this radio does not give itself.
struct GetSwBoardResIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x600004;

    std::int32_t eBoardType = 0;
    BoardSwRevisionData tBoardSwRevisionData;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eBoardType), CEREAL_NVP(tBoardSwRevisionData));
    }
};

// Code packets ------------------------------------------------------------------------------------------------------

/// One packet of a load.
struct CodePacket {
    std::int32_t totalNoOfPackets = 0; ///< packets of the load
    std::int32_t seqNo = 0;            ///< number of this one
    std::array<std::int32_t, 256> data{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(totalNoOfPackets), CEREAL_NVP(seqNo), CEREAL_NVP(data));
    }
};

/// Software revision of a load.
struct LoadSwRevision {
    std::array<std::uint8_t, 5> data{};
    std::array<std::uint8_t, 3> pad{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(data), CEREAL_NVP(pad));
    }
};

/// Upgrade header of a load.
struct UPGHeaderInfo_T {
    std::int32_t swCode = 0;
    std::int32_t numBlocks = 0;
    std::int32_t frameSize = 0;
    std::int32_t optInfoSize = 0;
    std::int32_t blockSzWordLen = 0;
    std::int32_t startAddrWordLen = 0;
    std::int32_t frameIdxWordLen = 0;
    std::int32_t delayAfterLastFrame = 0;
    std::int32_t delayAfterPrepare = 0;
    std::int32_t delayBetweenFrames = 0;
    std::int32_t switchTestTime = 0;
    std::int32_t timeUntilCancel = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(swCode), CEREAL_NVP(numBlocks), CEREAL_NVP(frameSize), CEREAL_NVP(optInfoSize),
                CEREAL_NVP(blockSzWordLen), CEREAL_NVP(startAddrWordLen), CEREAL_NVP(frameIdxWordLen),
                CEREAL_NVP(delayAfterLastFrame), CEREAL_NVP(delayAfterPrepare), CEREAL_NVP(delayBetweenFrames),
                CEREAL_NVP(switchTestTime), CEREAL_NVP(timeUntilCancel));
    }
};

/// What the two messages that start a load have in common, from the header on.
struct CodePacketStart : SignalHeader {
    std::int32_t eBoardType = 0;
    CodePacket tCodePacket;
    std::int32_t iCodePacketSize = 0; ///< payload of a code packet
    LoadSwRevision tLoadSwRev;
    std::int32_t iLoadCheckSum = 0;
    std::int32_t iLoadFileLength = 0;
    std::int32_t eSwCompression = 0;
    UPGHeaderInfo_T tUpgHeaderInfo;

protected:
    template <class Archive, class... Fields>
    void serializeStart(Archive& archive, Fields&&... remainingFields)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eBoardType), CEREAL_NVP(tCodePacket), CEREAL_NVP(iCodePacketSize),
                         CEREAL_NVP(tLoadSwRev), CEREAL_NVP(iLoadCheckSum), CEREAL_NVP(iLoadFileLength),
                         CEREAL_NVP(eSwCompression), CEREAL_NVP(tUpgHeaderInfo),
                         std::forward<Fields>(remainingFields)...);
    }
};

/// One block of a load.
struct UpgBlock {
    std::int32_t blockCheckSum = 0;
    std::int32_t numBytesInBlock = 0;
    std::int32_t blockStartAddress = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(blockCheckSum), CEREAL_NVP(numBytesInBlock), CEREAL_NVP(blockStartAddress));
    }
};

/// All blocks of a load; those that it does not have are zero.
struct UpgBlockInfo {
    std::array<UpgBlock, 32> data{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(data));
    }
};

/// First packet of a load, with its blocks.
struct CodePacketStartIPC : CodePacketStart {
    static constexpr std::uint32_t messageId = 0x600002;

    UpgBlockInfo tUpgBlockInfo;
    std::int32_t eUpgradeSpeed = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeStart(archive, CEREAL_NVP(tUpgBlockInfo), CEREAL_NVP(eUpgradeSpeed));
    }
};

/// A further packet of a load.
struct CodePacketIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x600003;

    std::int32_t eBoardType = 0;
    CodePacket tCodePacket;
    std::int32_t iPacketSize = 0;
    std::int32_t iPacketID = 0;
    std::int32_t iBlockID = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eBoardType), CEREAL_NVP(tCodePacket), CEREAL_NVP(iPacketSize),
                         CEREAL_NVP(iPacketID), CEREAL_NVP(iBlockID));
    }
};

/// Software version of a sub-component.
struct SubComponentVersion {
    std::array<std::uint8_t, 11> data{};
    std::array<std::uint8_t, 1> pad{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(data), CEREAL_NVP(pad));
    }
};

/// A part of a block.
struct SubComponent {
    std::array<std::uint8_t, 16> subSwName{};
    SubComponentVersion subSwVersion;
    std::int32_t subCheckSum = 0;
    std::int32_t numBytesInSub = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(subSwName), CEREAL_NVP(subSwVersion), CEREAL_NVP(subCheckSum), CEREAL_NVP(numBytesInSub));
    }
};

/// All parts of a block; eight always travel.
struct SubComponents {
    std::array<SubComponent, 8> data{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(data));
    }
};

/// A block and its parts.
struct UpgBlockElementInfo {
    std::int32_t blockCheckSum = 0;
    std::int32_t numBytesInBlock = 0;
    std::int32_t blockStartAddress = 0;
    std::int32_t numSubComponents = 0; ///< valid entries of `subComponent`
    SubComponents subComponent;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(blockCheckSum), CEREAL_NVP(numBytesInBlock), CEREAL_NVP(blockStartAddress),
                CEREAL_NVP(numSubComponents), CEREAL_NVP(subComponent));
    }
};

/// First packet of a load, with one block and its parts.
struct CodePacketStartExtIPC : CodePacketStart {
    static constexpr std::uint32_t messageId = 0x600016;

    UpgBlockElementInfo tUpgBlockElementInfo;
    std::int32_t eUpgradeSpeed = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeStart(archive, CEREAL_NVP(tUpgBlockElementInfo), CEREAL_NVP(eUpgradeSpeed));
    }
};
