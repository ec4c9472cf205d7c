#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

#include "support/FakeUnit.h"
#include "support/NodectlRun.h"

// The console on the link. The other end is a script; its frames are written by hand: device word, id, header, body.

namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// An ordinary message without a body: slot 0, sender 0, the sequence number, channel 0.
std::string headerOnly(const std::string& id, const std::string& sequenceNumber)
{
    return "00000000" + id + "00000000 00000000 00000000" + sequenceNumber + "00000000 00000000";
}

std::string headerOnlyJson(const std::string& id, const std::string& name, const std::string& sequenceNumber)
{
    return R"({"id":)" + id + R"(,"name":")" + name +
           R"(","data":{"SignalHeader":{"slot":0,"sigId":0,"senderId":0,"seqNr":)" + sequenceNumber +
           R"(,"spare1":0,"ct":0}}})";
}

std::vector<std::string> at(const FakeUnit& unit, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), {"--json", "--unit", unit.address()});
    return arguments;
}

TEST(NodectlSend, AMessageWithoutAnswerIsDoneOnceTheUnitHasIt)
{
    std::string received;
    std::string behind = "something";
    NodectlRun::Outcome outcome;
    {
        const FakeUnit unit([&](const FakeUnit::Node& node) {
            received = node.receive();
            behind = node.receive();
        });
        outcome = nodectl(
            at(unit, {"send", "MMUStateIPC", "--slot", "3", "--sender", "7", "--body", R"({"eModuleOperStatus":1})"}));
    }
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(received, packed("00000000 00200009 00000003 00000000 00000007 00000000 00000000 00000000 00000001"));
    EXPECT_EQ(behind, "");
}

TEST(NodectlSend, AMessageThatTheUnitNeverTookInIsNoSuccess)
{
    const FakeUnit unit([](const FakeUnit::Node& node) { node.awaitBytes(); });
    const auto outcome = nodectl(at(unit, {"send", "MMUStateIPC"}));
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_THAT(outcome.err, HasSubstr("broke"));
}

TEST(NodectlSend, WaitsForTheAnswerWithItsSequenceNumberAndPrintsWhatComesBefore)
{
    const FakeUnit unit([](const FakeUnit::Node& node) {
        node.receive();
        node.send(headerOnly("00200002", "80000000"));
        node.send(headerOnly("00200007", "00000004"));
        node.send("00000001 00000000 00000000 00000000 00000000 00000005 00000000");
        node.send("00000000 00200007 0000");
        node.send(headerOnly("00200007", "00000005"));
        node.send(headerOnly("00200002", "80000001"));
    });
    const auto outcome = nodectl(at(unit, {"send", "ADSSwStatusReqIPC", "--seq", "5"}));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_EQ(
        outcome.out,
        lines(
            {headerOnlyJson("2097154", "RAULostIPC", "2147483648"), headerOnlyJson("2097159", "ADSSwStatusResIPC", "4"),
             R"({"device":1,"hex":"000000000000000000000000000000000000000500000000","note":"no PS message has the group 0"})",
             R"({"id":2097159,"name":"ADSSwStatusResIPC","data":{}})",
             headerOnlyJson("2097159", "ADSSwStatusResIPC", "5")}));
    EXPECT_THAT(outcome.err, HasSubstr("SignalHeader.slot at offset 0 only 2 of 4 bytes"));
}

TEST(NodectlSend, KnowsTheAnswerThatSeveralRequestsShareAndTheOneOfThePsDevice)
{
    struct Case {
        std::vector<std::string> arguments;
        const char* request;
        std::string answer;
        const char* printed;
    };
    const Case cases[] = {
        {{"send", "SetRfPowerV3ReqIPC", "--ct", "1"},
         "00000000 00300031",
         headerOnly("00300026", "00000000") + "00000001",
         R"("name":"SetRfPowerResIPC")"},
        {{"send", "HandleContinuousWaveGroupReqIPC", "--body", R"({"PsSignalHeader":{"action":3,"seqNo":7}})"},
         "00000001 00000010",
         "00000001 00000510 00000007 0000000000000000 00000000 000020f2 000000000000000100000000",
         R"("31HandleContinuousWaveGroupResIPC":{"PsSignalHeader":{"slot":0,"psVersion":0,"psStatus":5)"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.request);
        std::string received;
        NodectlRun::Outcome outcome;
        {
            const FakeUnit unit([&](const FakeUnit::Node& node) {
                received = node.receive();
                node.send(test.answer);
                node.receive();
            });
            outcome = nodectl(at(unit, test.arguments));
        }
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        EXPECT_THAT(received, StartsWith(packed(test.request)));
        EXPECT_THAT(outcome.out, HasSubstr(test.printed));
    }
}

TEST(NodectlSend, SaysWhyThereIsNoAnswer)
{
    struct Case {
        const char* what;
        void (*unit)(const FakeUnit::Node& node);
        int exitCode;
        const char* error;
    };
    const Case cases[] = {
        {"silence",
         [](const FakeUnit::Node& node) {
             node.receive();
             node.receive();
         },
         1, "no ADSSwStatusResIPC with sequence number 0 within 100 ms"},
        {"closed at once", [](const FakeUnit::Node& node) { node.receive(); }, 3, "closed the connection"},
        {"closed inside a frame",
         [](const FakeUnit::Node& node) {
             node.receive();
             node.sendSingleBytes("00000008000000");
         },
         3, "in the middle of a message"},
        {"a frame without room for the device word",
         [](const FakeUnit::Node& node) {
             node.receive();
             node.sendSingleBytes("00000003000000");
         },
         3, "a frame of 3 bytes"},
        {"a frame above the limit",
         [](const FakeUnit::Node& node) {
             node.receive();
             node.sendSingleBytes("00010001");
             node.receive();
         },
         3, "a frame of 65537 bytes"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        const FakeUnit unit(test.unit);
        const auto outcome = nodectl(at(unit, {"send", "ADSSwStatusReqIPC", "--wait", "100"}));
        EXPECT_EQ(outcome.exitCode, test.exitCode);
        EXPECT_THAT(outcome.err, HasSubstr(test.error));
        EXPECT_EQ(outcome.out, "");
    }
}

TEST(NodectlSend, WithoutAUnitThereIsNoConnection)
{
    std::string address;
    {
        const FakeUnit gone([](const FakeUnit::Node&) {});
        address = gone.address();
    }
    for (const char* const command : {"monitor", "bringup"}) {
        const auto outcome = nodectl({"--unit", address, command});
        EXPECT_EQ(outcome.exitCode, 3);
        EXPECT_THAT(outcome.err, HasSubstr("no connection to " + address));
    }
}

TEST(NodectlMonitor, PrintsWhateverComesUntilItIsStopped)
{
    const FakeUnit unit([](const FakeUnit::Node& node) {
        node.sendSingleBytes("00000020" + headerOnly("00200002", "80000000"));
        node.send("00000000 00990001 0102");
        node.send("00000000");
        node.send("00000000 00200002 00000000 00000000 00000000");
        node.send(headerOnly("00200002", "80000002"));
        node.receive();
    });
    NodectlRun run(at(unit, {"monitor"}));
    EXPECT_TRUE(run.waitForOutput("2147483650"));
    run.signal(SIGINT);
    const auto outcome = run.finish();
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.out,
              lines({headerOnlyJson("2097154", "RAULostIPC", "2147483648"),
                     R"({"device":0,"hex":"009900010102","note":"no message has the id 0x990001"})",
                     R"({"device":0,"hex":"","note":"the buffer ends before its message id: 0 of 4 bytes are there"})",
                     R"({"id":2097154,"name":"RAULostIPC","data":{"SignalHeader":{"slot":0,"sigId":0,"senderId":0}}})",
                     headerOnlyJson("2097154", "RAULostIPC", "2147483650")}));
    EXPECT_THAT(outcome.err, HasSubstr("RAULostIPC is too short: of SignalHeader.seqNr"));
}

TEST(NodectlMonitor, EndsWithTheUnit)
{
    const FakeUnit unit([](const FakeUnit::Node& node) { node.send(headerOnly("00200002", "80000000")); });
    const auto outcome = nodectl(at(unit, {"monitor"}));
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_EQ(outcome.out, lines({headerOnlyJson("2097154", "RAULostIPC", "2147483648")}));
}

/// Answers the self test and, where told so, the software status, and reports a lost radio when it is put into service.
struct BringUpUnit {
    bool answersSoftwareStatus;
    std::vector<std::string> received;

    void operator()(const FakeUnit::Node& node)
    {
        received.push_back(node.receive());
        node.send("00000000 00200005" + received.back().substr(16, 48) + "00000001" + std::string(96, '0'));
        received.push_back(node.receive());
        if (answersSoftwareStatus) {
            node.send("00000000 00200007" + received.back().substr(16, 48));
            received.push_back(node.receive());
            node.send(headerOnly("00200002", "80000000"));
        }
        node.receive();
    }
};

TEST(NodectlBringUp, PutsTheUnitIntoServiceAndTellsWhatItSays)
{
    BringUpUnit script{true, {}};
    NodectlRun::Outcome outcome;
    {
        const FakeUnit unit([&](const FakeUnit::Node& node) { script(node); });
        outcome = nodectl({"bringup", "--slot", "3", "--sender", "7", "--eh", "0x86", "--unit", unit.address()});
    }
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    const std::string front = " 00000003 00000000 00000007 ";
    const std::string sixZeroWords = " 00000000 00000000 00000000 00000000 00000000 00000000 ";
    EXPECT_THAT(script.received,
                testing::ElementsAre(packed("00000000 00200004" + front + "00000001 00000000 00000000 00000001" +
                                            sixZeroWords.substr(9) + "00000086" + sixZeroWords),
                                     packed("00000000 00200006" + front + "00000002 00000000 00000000"),
                                     packed("00000000 00200009" + front + "00000003 00000000 00000000 00000001")));
    for (const char* const line :
         {"-> ADSSelftestReqIPC", "<- ADSSelftestResIPC", "eSelftestResult 1", "-> ADSSwStatusReqIPC",
          "<- ADSSwStatusResIPC", "-> MMUStateIPC", "eModuleOperStatus 1", "<- RAULostIPC"}) {
        EXPECT_THAT(outcome.out, HasSubstr(line));
    }
    EXPECT_EQ(outcome.out.find('\033'), std::string::npos);
}

TEST(NodectlBringUp, PrintsOnlyTheUnitsMessagesAsJsonAndFailsWithoutAnAnswer)
{
    BringUpUnit script{false, {}};
    const FakeUnit unit([&](const FakeUnit::Node& node) { script(node); });
    const auto outcome = nodectl(at(unit, {"bringup", "--wait", "100"}));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.out, StartsWith(R"({"id":2097157,"name":"ADSSelftestResIPC")"));
    EXPECT_EQ(outcome.out.find('\n'), outcome.out.size() - 1);
    EXPECT_THAT(outcome.err, HasSubstr("no ADSSwStatusResIPC with sequence number 2"));
}

} // namespace
