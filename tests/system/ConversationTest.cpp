#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "support/NodectlRun.h"
#include "support/RunningUnit.h"

// The node's console and the radio unit together, as people use them.

namespace {

using nlohmann::json;
using testing::HasSubstr;

class Conversation : public testing::Test {
protected:
    NodectlRun::Outcome node(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), {"--unit", unit.link()});
        return nodectl(arguments);
    }

    RunningUnit unit;
};

TEST_F(Conversation, EveryAreaAnswers)
{
    ASSERT_EQ(node({"bringup"}).exitCode, 0);
    const struct {
        std::vector<std::string> arguments;
        const char* pointer; ///< into the printed answer
        json expected;
    } cases[] = {
        {{"ADSSelftestReqIPC", "--seq", "7"}, "/data/SignalHeader/seqNr", 7},
        {{"RAUStatusReqIPC", "--ct", "2"}, "/name", "RAUStatusResIPC"},
        {{"SetRfPowerV3ReqIPC", "--ct", "1", "--body", R"({"setRfPower":{"RfInputPowerThreshold":-30},"RfTaps":2})"},
         "/data/setRes",
         0},
        {{"SetRfPowerReqIPC", "--ct", "1", "--body", R"({"setRfPower":{"RfInputPowerThreshold":-29}})"},
         "/data/setRes",
         1},
        {{"GetRauPowerInventoryReqIPC", "--ct", "1"}, "/data/getRauPowerInventory/rfMinOutputPower", -5},
        {{"SetXfRFIfStatusReqIPC", "--ct", "2", "--body",
          R"({"tSetXfRFIFParametersExt":{"RFCurrStepNum":5,"RFCurrStepNumRX":5,"RFLoopEnable":2,"RFTxAdminStatus":3}})"},
         "/data/eSetRes",
         0},
        {{"SetIfLoopStatusReqIPC", "--ct", "1", "--body", R"({"eLoop":2})"}, "/data/eSetRes", 0},
        {{"SetMLMReqIPC", "--ct", "1", "--body", R"({"tMLMQueueStatus_T":2})"}, "/data/eSetRes", 0},
        {{"GetActiveRadioReqIPC", "--ct", "1"}, "/data/eActTxRadio", 0},
        {{"HandleContinuousWaveGroupReqIPC", "--body",
          R"({"PsSignalHeader":{"action":3},"ct":2,"attrib":1,"enable":1})"},
         "/31HandleContinuousWaveGroupResIPC/PsSignalHeader/action",
         4},
    };
    for (const auto& [arguments, pointer, expected] : cases) {
        SCOPED_TRACE(arguments.front());
        std::vector<std::string> command{"--json", "send"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        const auto outcome = node(command);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        EXPECT_EQ(json::parse(outcome.out).at(json::json_pointer(pointer)), expected) << outcome.out;
    }
    const json state = unit.get("/api/state")["channels"];
    EXPECT_EQ(state["1"]["taps"], true);
    EXPECT_EQ(state["1"]["trafficEnabled"], false) << "loop and queues close the gate";
    EXPECT_EQ(state["2"]["radio"]["rfLoop"], 1);
    EXPECT_EQ(state["2"]["systemPower"]["transmitterOff"], true);
    EXPECT_EQ(state["2"]["continuousWave"], true);

    EXPECT_EQ(node({"send", "GetRfPowerReqIPC", "--ct", "3", "--wait", "200"}).exitCode, 1) << "no answer by protocol";
    EXPECT_EQ(node({"send", "CodePacketIPC"}).exitCode, 0) << "none is wanted";
}

TEST_F(Conversation, WhatHappensOnTheRadioIsHeard)
{
    ASSERT_EQ(node({"bringup"}).exitCode, 0);
    const struct {
        const char* event;
        const char* message;
        const char* brief;
    } cases[] = {
        {R"({"event":"radioDown","ct":2})", "RAULostIPC", "<- RAULostIPC: ct 2"},
        {R"({"event":"fault","signal":8,"ct":1,"active":true})", "SetFaultIPC", "ct 1, eFaultId 6, eFaultStatus 1"},
        {R"({"event":"hopRx","channel":1,"data":"112233"})", "HopRxIPC", "ct 1, iHopDataLength 3"},
        {R"({"event":"hccRx","channel":2,"wanOffset":-1,"handler":4294967295,"data":""})", "HccRxIPC",
         "iRLWanOffset -1"},
        {R"({"event":"testCommandTx","channel":2,"frame":{"jobId":-5}})", "TestCommandTxIPC", "jobId -5"},
        {R"({"event":"protectionModeOperStatus","channel":1,"value":3})", "NotifyProtectionModeOperStatusIPC", "3"},
        {R"({"event":"activeRadioSw","channel":1,"value":2})", "NotifyActiveRadioSwIPC", "eActTxRadio 2"},
        {R"({"event":"workingRxSw","channel":2,"value":2})", "NotifyWorkingRxSwIPC", "ct 2, eWorkingRx 2"},
        {R"({"event":"bpmCommand","data":"0a0b"})", "BpmCommandReqIPC", "BpmCommandReqIPC"},
    };
    for (const auto& [event, message, brief] : cases) {
        SCOPED_TRACE(event);
        NodectlRun listener({"--unit", unit.link(), "monitor", "--brief", "--until", message, "--wait", "20000"});
        ASSERT_TRUE(unit.waitFor("/api/module", [](const json& facts) { return facts["nodes"] == 1; }));
        EXPECT_EQ(unit.request("POST", "/api/events", event).status, 200);
        const auto outcome = listener.finish();
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        EXPECT_THAT(outcome.out, HasSubstr(brief));
    }
    const auto outcome = node({"monitor", "--until", "RAULostIPC", "--wait", "50"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.err, HasSubstr("no RAULostIPC has come within 50 ms"));
}

TEST_F(Conversation, EventsAreRefusedWithTheArgumentThatIsWrong)
{
    const struct {
        const char* event;
        int status;
        const char* answer;
    } cases[] = {
        {R"({"event":"setFrameFormat","index":2,"frameId":1,"minAcm":1,"maxAcm":30,"sec":4})", 200, "false"},
        {R"({"event":"setFrameFormat","index":-1,"frameId":4294967295,"minAcm":-1,"maxAcm":99,"sec":-7})", 200,
         "false"},
        {R"({"event":"setFrameFormat","index":0,"frameId":1,"minAcm":1,"maxAcm":30,"sec":4})", 200, "true"},
        {R"({"event":"setFrameFormat","index":0,"frameId":1,"minAcm":1,"maxAcm":30})", 400, "sec: missing"},
        {R"({"event":"acmCapacities","frameId":0})", 200, "[0,0,0,"},
        {R"({"event":"acmCapacities","frameId":"1"})", 400, "frameId: expected a whole number"},
        {R"({"event":"hopRx","channel":0,"data":"aa"})", 200, "null"},
        {R"({"event":"hopRx","channel":1,"data":"aa","length":2147483647})", 200, "null"},
        {R"({"event":"hopRx","channel":1,"data":"a"})", 400, "data: 1 hexadecimal digits; a byte takes two"},
        {R"({"event":"hccRx","channel":4294967296,"wanOffset":0,"handler":0,"data":""})", 400, "channel: expected"},
        {R"({"event":"testCommandTx","channel":1,"frame":5})", 400, "frame: expected an object, not 5"},
        {R"({"event":"testCommandTx","channel":1,"frame":{"len":5}})", 400, "frame.len: no such argument"},
        {R"({"event":"testCommandTx","channel":1,"frame":{"slot":"x"}})", 400, "frame.slot: expected a whole number"},
        {R"({"event":"enableTimeStamp","on":1})", 400, "on: expected true or false, not 1"},
        {R"({"event":"workingRxSw","channel":-1,"value":0})", 200, "null"},
    };
    for (const auto& [event, status, answer] : cases) {
        const auto outcome = unit.request("POST", "/api/events", event);
        EXPECT_EQ(outcome.status, status) << event;
        EXPECT_THAT(outcome.body.contains("result") ? outcome.body["result"].dump() : outcome.body["error"].dump(),
                    HasSubstr(answer))
            << event;
    }
}

TEST_F(Conversation, TheExampleSetsThePowerAndChecksIt)
{
    ASSERT_EQ(node({"bringup"}).exitCode, 0);
    ::setenv("NODECTL", NODECTL_PATH, 1);
    Program accepted{{EXAMPLES_DIR "/set-power.sh", unit.link(), "2", "20"}};
    EXPECT_EQ(accepted.waitForExit(), 0) << accepted.errors();
    EXPECT_EQ(accepted.output(), "channel 2 transmits 20 dBm, 20 dBm are allowed\n");
    unit.request("PATCH", "/api/state",
                 R"({"results":{"ISystemPowerController_2.notifyRequestedPowerSettings":32768}})");
    Program refused{{EXAMPLES_DIR "/set-power.sh", unit.link(), "2", "30"}};
    EXPECT_EQ(refused.waitForExit(), 1);
    EXPECT_EQ(refused.errors(), "channel 2 refused 30 dBm\n");
}

TEST(Completion, OffersWhatMayFollow)
{
    const struct {
        std::vector<std::string> words;
        std::vector<std::string> offered;
    } cases[] = {
        {{""}, {"bringup", "completion", "decode", "describe", "encode", "list", "monitor", "send"}},
        {{"mon"}, {"monitor"}},
        {{"send", "RAUL"}, {"RAULostIPC"}},
        {{"--json", "send", "--ct", "1", "GetRfP"}, {"GetRfPowerReqIPC", "GetRfPowerResIPC"}},
        {{"send", "RAULostIPC", ""}, {}},
        {{"send", "RAULostIPC", "--bo"}, {"--body"}},
        {{"monitor", "--until", "RAUL"}, {"RAULostIPC"}},
        {{"list", "--area", "p"}, {"power", "protection", "ps"}},
        {{"decode", "--from", ""}, {"node", "unit"}},
        {{"completion", ""}, {"bash", "zsh"}},
        {{"--unit", ""}, {}},
    };
    for (const auto& [words, offered] : cases) {
        std::vector<std::string> arguments{"complete"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        const auto outcome = nodectl(arguments);
        EXPECT_EQ(outcome.out, lines(offered)) << words.back();
        EXPECT_EQ(outcome.exitCode, 0);
    }
    const std::string script = "PATH=" BIN_DIR ":$PATH; eval \"$(nodectl completion bash)\"; "
                               "COMP_WORDS=(nodectl send HopT); COMP_CWORD=2; _nodectl; echo \"${COMPREPLY[@]}\"";
    Program bash{{"/bin/bash", "-c", script}};
    EXPECT_EQ(bash.waitForExit(), 0) << bash.errors();
    EXPECT_EQ(bash.output(), "HopTxIPC\n");
    EXPECT_EQ(nodectl({"completion", "fish"}).exitCode, 2);
}

} // namespace
