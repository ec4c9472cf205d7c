#include "EquipmentMessages.h"
#include "MessageCatalogue.h"
#include "PowerControlMessages.h"
#include "PsMessages.h"
#include "SimulatedPlatform.h"
#include "TableFile.h"
#include "VornipcMessageHandler.h"
#include "VornipcWhiteList.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace {

using namespace kro::device::vornipc;

struct FakeSender : IVornipcSender {
    int send(const char* data, unsigned length) override
    {
        sent.emplace_back(data, length);
        return static_cast<int>(length);
    }
    std::vector<std::string> sent;
};

/// Remembers what it was called with.
struct FakeArea {
    void onMmuState(MMUStateIPC* message) { states.push_back(message->eModuleOperStatus); }
    void onOther(MMUStateIPC* /*message*/) { ++others; }
    void onTermState(TermStateIPC* /*message*/) { ++others; }
    void onContinuousWave(HandleContinuousWaveGroupReqIPC* message) { channels.push_back(message->ct); }

    std::vector<std::uint32_t> states;
    std::vector<std::uint32_t> channels;
    int others = 0;
};

class MessageHandler : public testing::Test {
protected:
    using Lines = std::vector<std::string>;

    MessageHandler()
    {
        auto& platform = simulated::Platform::instance();
        platform.configure(2);
        platform.setTracePrinting(false);
    }

    /// Lines of the trace since the last time that this was asked, as "1 method: text".
    Lines newTrace()
    {
        const auto answer = simulated::Platform::instance().traceLines(m_nextLine);
        answer["next"].get_to(m_nextLine);
        Lines lines;
        for (const auto& line : answer["lines"]) {
            lines.push_back(std::to_string(line["level"].get<int>()) + " " + line["method"].get<std::string>() + ": " +
                            line["text"].get<std::string>());
        }
        return lines;
    }

    void receive(const std::string& buffer, VornipcDeviceId device = VornipcDeviceId::ads)
    {
        handler.onMessageReceived(buffer.data(), static_cast<unsigned>(buffer.size()), device);
    }

    std::shared_ptr<FakeSender> sender = std::make_shared<FakeSender>();
    VornipcMessageHandler handler{"", sender};
    FakeArea area;

private:
    std::uint64_t m_nextLine = 0;
};

const std::string noHeaderValues = "00000000 00000000 00000000 00000000 00000000 00000000";

TEST_F(MessageHandler, EncodesTheEnvelopeByTheDevice)
{
    MMUStateIPC message;
    message.slot = 3;
    message.senderId = 7;
    message.seqNr = 0x80000001;
    message.ct = 1;
    message.eModuleOperStatus = 5;
    const std::string onTheWire = "00000003 00000000 00000007 80000001 00000000 00000001 00000005";
    handler.setOutgoingIpcMessagesAllowed(true);
    handler.send(message, VornipcDeviceId::ads);
    handler.send(message, VornipcDeviceId::ps);
    ASSERT_EQ(sender->sent.size(), 2U);
    EXPECT_EQ(hexOf(sender->sent[0]), hexOf(bytes("00000000 00200009" + onTheWire)));
    EXPECT_EQ(hexOf(sender->sent[1]), hexOf(bytes("00000001" + onTheWire)));
}

TEST_F(MessageHandler, DispatchesByIdAndByGroup)
{
    handler.registerReceivers(area, &FakeArea::onMmuState, &FakeArea::onContinuousWave);
    receive(bytes("00200009" + noHeaderValues + "00000002"));
    receive(bytes("00200009" + noHeaderValues + "00000003 ffff"), VornipcDeviceId::adsAlternate);
    const std::string continuousWave =
        "01 02 03 10 05 03 0006 07 01 0040 00 00 00 00 0008 000c 000020f2 00000002 00000001 00000007";
    receive(bytes(continuousWave), VornipcDeviceId::ps);
    std::string otherKind = bytes(continuousWave);
    otherKind[3] = 0x11;
    receive(otherKind, VornipcDeviceId::ps);
    EXPECT_EQ(area.states, (std::vector<std::uint32_t>{2, 3}));
    EXPECT_EQ(area.channels, (std::vector<std::uint32_t>{2}));
}

TEST_F(MessageHandler, DropsWhatComesFromAnUnknownDevice)
{
    handler.registerReceivers(area, &FakeArea::onMmuState);
    for (const std::uint32_t device : {2U, 9U, 11U, 0xffffffffU}) {
        receive(bytes("00200009" + noHeaderValues + "00000001"), VornipcDeviceId{device});
        EXPECT_EQ(newTrace(), Lines{"1 onMessageReceived: Message with unknown device id received"}) << device;
    }
    EXPECT_TRUE(area.states.empty());
}

TEST_F(MessageHandler, GateAndWhiteListHoldAnswersBackEachWithItsLine)
{
    ADSClosePciResIPC closePci; // passes the gate and is listed
    RAULostIPC lost;            // is listed
    SetRfPowerResIPC power;
    HandleContinuousWaveGroupResIPC forPs;
    const std::string gate =
        "1 send: Send is not allowed since MMU state is not in service or PCI has been disabled, Id:";
    const std::string list =
        "1 send: Outgoing Vornipc message discarded since the message Id is not in the white list, Id: ";
    const struct {
        bool gateOpen;
        bool whiteListActive;
        std::vector<std::size_t> lengths; ///< of what leaves
        Lines lines;
    } cases[] = {
        {true, false, {36, 32, 36, 40}, {}},
        {false, false, {36, 40}, {gate + "2097154", gate + "3145766"}},
        {true, true, {36, 32, 40}, {list + "300026", gate + "3145766"}},
        {false, true, {36, 40}, {gate + "2097154", list + "300026", gate + "3145766"}},
    };
    for (const auto& [gateOpen, whiteListActive, lengths, lines] : cases) {
        handler.setOutgoingIpcMessagesAllowed(gateOpen);
        handler.enableVornipcWhiteList(whiteListActive);
        sender->sent.clear();
        handler.send(closePci, VornipcDeviceId::ads);
        handler.send(lost, VornipcDeviceId::ads);
        handler.send(power, VornipcDeviceId::ads);
        handler.send(forPs, VornipcDeviceId::ps);
        std::vector<std::size_t> sent;
        for (const std::string& buffer : sender->sent) {
            sent.push_back(buffer.size());
        }
        EXPECT_EQ(sent, lengths);
        EXPECT_EQ(newTrace(), lines);
    }
}

TEST_F(MessageHandler, ThrowsOnShortMessagesAndCallsNobody)
{
    handler.registerReceivers(area, &FakeArea::onMmuState);
    const std::string whole = bytes("00200009" + noHeaderValues + "00000001");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        if (length < 4) {
            EXPECT_NO_THROW(receive(whole.substr(0, length))) << length;
        } else {
            EXPECT_THROW(receive(whole.substr(0, length)), cereal::Exception) << length;
        }
    }
    EXPECT_NO_THROW(receive(bytes("00999999"))); // nobody registered: nothing is decoded
    EXPECT_THROW(receive(bytes("01020310"), VornipcDeviceId::ps), cereal::Exception);
    EXPECT_TRUE(area.states.empty());
}

TEST_F(MessageHandler, KeepsTheLaterOfTwoReceivers)
{
    handler.registerReceivers(area, &FakeArea::onMmuState);
    handler.registerReceivers(area, &FakeArea::onOther);
    receive(bytes("00200009" + noHeaderValues + "00000001"));
    EXPECT_EQ(area.others, 1);
    EXPECT_TRUE(area.states.empty());
}

TEST_F(MessageHandler, ServesTheFrameworksOwnEntryUnderTheFrameworksId)
{
    using vrel::kro::messagehandler::MessageReceiver;
    const std::string message = bytes(noHeaderValues + "00000009");
    handler.messageReceived(message.data(), static_cast<unsigned>(message.size())); // nobody is there

    auto unbound = std::make_unique<MessageReceiver<FakeArea, MMUStateIPC>>();
    handler.registerReceiver(23, std::move(unbound));
    handler.messageReceived(message.data(), static_cast<unsigned>(message.size())); // decodes, calls nobody

    auto receiver = std::make_unique<MessageReceiver<FakeArea, MMUStateIPC>>();
    receiver->registerCallback(&area, &FakeArea::onMmuState);
    cereal::FixedSizeBigEndianInputArchive archive(message.data(), message.size());
    receiver->messageReceivedCallback(archive);
    handler.registerReceiver(23, std::move(receiver));
    handler.messageReceived(message.data(), static_cast<unsigned>(message.size()));
    EXPECT_EQ(area.states, (std::vector<std::uint32_t>{9, 9}));
}

TEST_F(MessageHandler, NumbersSpontaneousMessagesAndWrapsRound)
{
    EXPECT_EQ(handler.getSpontaneousMessageSequenceNumber(), 0x80000000U);
    EXPECT_EQ(handler.getSpontaneousMessageSequenceNumber(), 0x80000001U);
    handler.resetSpontaneousMessageSequenceNumber();
    EXPECT_EQ(handler.getSpontaneousMessageSequenceNumber(), 0x80000000U);
    for (const std::uint32_t last : {0x7fffffffU, 0xffffffffU}) { // of the visible numbers, and of the counter's
        SpontaneousNumbers numbers(last);
        EXPECT_EQ(numbers.take(), 0xffffffffU);
        EXPECT_EQ(numbers.take(), 0x80000000U);
        EXPECT_EQ(numbers.take(), 0x80000001U);
        numbers.reset();
        EXPECT_EQ(numbers.take(), 0x80000000U);
    }
}

TEST(VornipcWhiteList, HoldsTheMessagesThatItShouldAndNoOther)
{
    std::map<std::uint32_t, bool> listed; ///< and whether the id is a message of this radio
    for (const TableLine& line : linesOfSection("words.txt", "whitelist")) {
        const auto row = line.words();
        listed[static_cast<std::uint32_t>(numberOf(row.at(0)))] = row.size() > 1 && row[1].ends_with("IPC");
    }
    ASSERT_EQ(listed.size(), 72U);
    for (std::uint32_t area = 0; area <= 0x110; ++area) {
        for (std::uint32_t number = 0; number < 0x200; ++number) {
            const std::uint32_t id = area << 16U | number;
            EXPECT_EQ(isInVornipcWhiteList(id), listed.contains(id)) << std::hex << id;
            const bool isMessage = findMessage(id, MessageHeader::signal, MessageDirection::in) != nullptr ||
                                   findMessage(id, MessageHeader::signal, MessageDirection::out) != nullptr;
            EXPECT_TRUE(!listed.contains(id) || isMessage == listed[id]) << std::hex << id;
        }
    }
}

} // namespace
