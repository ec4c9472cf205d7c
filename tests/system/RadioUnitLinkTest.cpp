#include <algorithm>
#include <gtest/gtest.h>

#include "support/RunningUnit.h"

namespace {

using namespace std::chrono_literals;

const std::string swStatusReq = word(0x200006);
const std::string swStatusRes = word(0) + word(0x200007);

/// The header of a message: slot, signal, sender, sequence number, spare, channel.
std::string header(std::uint32_t sequenceNumber)
{
    return word(4) + word(0) + word(7) + word(sequenceNumber) + word(0) + word(1);
}

std::string request(std::uint32_t sequenceNumber)
{
    return swStatusReq + header(sequenceNumber);
}

std::string answer(std::uint32_t sequenceNumber)
{
    return swStatusRes + header(sequenceNumber);
}

void expectAnswered(const Node& node, std::uint32_t sequenceNumber, const std::string& which = "")
{
    const auto received = node.receiveFrame();
    ASSERT_TRUE(received) << which << ": no answer " << sequenceNumber;
    EXPECT_EQ(hexadecimal(*received), hexadecimal(answer(sequenceNumber))) << which;
}

void expectServes(const RunningUnit& unit)
{
    const Node node{unit.link()};
    node.sendFrame(0, request(99));
    expectAnswered(node, 99, "a new node");
}

TEST(RadioUnitLink, TakesFramesHoweverTheyAreCut)
{
    const RunningUnit unit;
    const Node node{unit.link()};
    for (const char byte : Node::frame(0, request(1))) {
        node.send({byte});
    }
    expectAnswered(node, 1, "single bytes");
    node.send(Node::frame(0, request(2)) + Node::frame(10, request(3)).substr(0, 7));
    expectAnswered(node, 2, "one and a half frames at once");
}

TEST(RadioUnitLink, IgnoresBuffersTooShortForAMessage)
{
    const RunningUnit unit;
    const Node node{unit.link()};
    for (const std::string buffer : {"", "\x01", "\x01\x02", "\x01\x02\x03"}) {
        node.sendFrame(0, buffer);
        node.sendFrame(1, buffer);
    }
    node.sendFrame(0, word(0x00777777) + header(1)); // an id that nobody knows
    node.sendFrame(0, request(5));
    expectAnswered(node, 5);
    EXPECT_EQ(unit.get("/api/module")["reader"]["state"], "running");
}

TEST(RadioUnitLink, ClosesOnlyTheConnectionThatAnnouncesAWrongLength)
{
    RunningUnit unit;
    const Node bystander{unit.link()};
    for (const std::uint32_t length : {0U, 1U, 2U, 3U, 65537U, 0x80000000U, 0xffffffffU}) {
        const Node node{unit.link()};
        node.send(word(length));
        EXPECT_TRUE(node.closedByPeer()) << length;
        EXPECT_NE(unit.program().errors().find("announced a frame of " + std::to_string(length) + " bytes"),
                  std::string::npos)
            << unit.program().errors();
    }
    bystander.sendFrame(0, request(6));
    expectAnswered(bystander, 6, "the bystander");
}

TEST(RadioUnitLink, TakesTheLongestFrame)
{
    const RunningUnit unit;
    const Node node{unit.link()};
    node.sendFrame(0, word(0x00777777) + std::string(65528, 'x'));
    node.sendFrame(0, request(7));
    expectAnswered(node, 7);
}

TEST(RadioUnitLink, OutlivesNodesThatVanishInTheMiddle)
{
    const RunningUnit unit;
    const std::string whole = Node::frame(0, request(1));
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        const Node leaving{unit.link()};
        leaving.send(whole.substr(0, cut));
        Node reset{unit.link()};
        reset.send(whole.substr(0, cut));
        reset.reset();
    }
    expectServes(unit);
    EXPECT_TRUE(unit.waitFor("/api/module", [](const auto& module) { return module.at("nodes") == 0; }));
}

TEST(RadioUnitLink, AnswersANodeThatHasEndedItsDirection)
{
    const RunningUnit unit;
    const Node node{unit.link()};
    node.sendFrame(0, request(1));
    node.sendFrame(0, request(2));
    node.endSending();
    expectAnswered(node, 1);
    expectAnswered(node, 2);
    EXPECT_TRUE(node.closedByPeer()) << "when there is nothing left to answer";
    EXPECT_TRUE(unit.waitFor("/api/module", [](const auto& facts) { return facts["nodes"] == 0; }));
}

TEST(RadioUnitLink, SendsEveryBufferToEveryNodeInTheSameOrder)
{
    const RunningUnit unit;
    const Node first{unit.link()};
    const Node second{unit.link()};
    ASSERT_TRUE(unit.waitFor("/api/module", [](const auto& module) { return module.at("nodes") == 2; }));
    constexpr std::uint32_t each = 200;
    for (std::uint32_t i = 0; i < each; ++i) {
        first.sendFrame(0, request(i));
        second.sendFrame(0, request(1000 + i));
    }
    std::vector<std::string> seenByFirst;
    std::vector<std::string> seenBySecond;
    for (std::uint32_t i = 0; i < 2 * each; ++i) {
        seenByFirst.push_back(first.receiveFrame().value_or("nothing"));
        seenBySecond.push_back(second.receiveFrame().value_or("nothing"));
    }
    EXPECT_EQ(seenByFirst, seenBySecond);
    for (const std::uint32_t start : {0U, 1000U}) {
        auto place = seenByFirst.begin();
        for (std::uint32_t i = 0; i < each; ++i) {
            place = std::find(place, seenByFirst.end(), answer(start + i));
            ASSERT_NE(place, seenByFirst.end()) << "no answer " << start + i << " behind the one before";
        }
    }
}

TEST(RadioUnitLink, CutsOffANodeThatNeverReads)
{
    RunningUnit unit;
    unit.request("POST", "/api/events", R"({"event":"setOutgoingIpcMessagesAllowed","on":true})");
    const Node reading{unit.link()};
    const Node deaf{unit.link()};
    // Each request brings the long list of sub-bands to both.
    constexpr std::size_t answerFrame = 4 + 8 + 24 + 4 + 101 * 4;
    constexpr std::size_t requestsInBurst = 500;
    std::string burst;
    for (std::uint32_t i = 0; i < requestsInBurst; ++i) {
        burst += Node::frame(0, word(0x200123) + header(i));
    }
    std::size_t sent = 0;
    const Deadline deadline{60s};
    while (unit.program().errors().find("does not read") == std::string::npos && !deadline.passed()) {
        reading.send(burst);
        ASSERT_EQ(reading.receive(requestsInBurst * answerFrame).size(), requestsInBurst * answerFrame);
        sent += requestsInBurst * answerFrame;
    }
    EXPECT_FALSE(deadline.passed());
    EXPECT_GT(sent, 4U << 20U) << "it was cut off too early";
    EXPECT_EQ(unit.get("/api/module").at("nodes"), 1);
    reading.sendFrame(0, request(8));
    expectAnswered(reading, 8, "the node that reads");
}

TEST(RadioUnitLink, HoldsBackTheSendersWhileTheReaderIsBusy)
{
    // The status asks the radio for its temperature: a slow radio keeps the reader busy.
    const RunningUnit unit{{}, R"({"delaysMs":{"IRadio_1.getTemperature":60000}})"};
    Node node{unit.link()};
    node.sendFrame(0, word(0x200020) + header(1));
    ASSERT_TRUE(unit.waitFor("/api/calls", [](const auto& calls) {
        return std::any_of(calls["calls"].begin(), calls["calls"].end(),
                           [](const auto& call) { return call["operation"] == "getTemperature"; });
    }));
    const std::string tooMuch = Node::frame(0, word(0x00777777) + std::string(65000, 'x'));
    std::string flood;
    for (int i = 0; i < 300; ++i) {
        flood += tooMuch;
    }
    EXPECT_FALSE(node.sendWithin(flood, 1s)) << "20 MB went in while nothing was taken out";
    const Node other{unit.link()};
    EXPECT_TRUE(unit.waitFor("/api/module", [](const auto& module) { return module.at("nodes") == 2; }));
    node.reset();
    EXPECT_TRUE(unit.waitFor("/api/module", [](const auto& module) { return module.at("nodes") == 1; }))
        << "a node may vanish with frames of its own waiting";
}

TEST(RadioUnitLink, SaysInTheModuleFactsWhichMessageEndedTheReader)
{
    const RunningUnit unit;
    const Node node{unit.link()};
    node.sendFrame(0, word(0x200020) + word(1));
    ASSERT_TRUE(unit.waitFor("/api/module", [](const auto& module) { return module["reader"]["state"] == "ended"; }));
    const auto reader = unit.get("/api/module")["reader"];
    EXPECT_NE(reader["reason"], "");
    EXPECT_EQ(reader["lastMessage"], nlohmann::json::parse(R"({"id":2097184,"device":0,"length":8})"));
}

} // namespace
