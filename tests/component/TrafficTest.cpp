#include "support/ModuleTest.h"

namespace {

class Traffic : public ChannelTest {};

FOR_EACH_CHANNEL(Traffic);

class TrafficOfTheUnit : public ModuleTest {};

TEST_F(TrafficOfTheUnit, PortStatusIsFixedByItsType)
{
    startInService();
    const auto request = [](std::int64_t type) { return "00700001" + head(1) + words(type); };
    const auto answer = [](std::int64_t type, std::int64_t status) {
        return toNode("00700002") + head(1) + words(type, status);
    };
    const Exchange cases[] = {
        {"1",
         request(1),
         {answer(1, 1), "5 onGetIfOperStatusReq: onGetIfOperStatusReq() called (id: 0x700001)",
          "5 onGetIfOperStatusReq: ----- Stubbed GetIfOperStatusReqIPC response",
          "6 onGetIfOperStatusReq: Received: GetIfOperStatusReqIPC",
          "6 onGetIfOperStatusReq: Respond with: GetIfOperStatusResIPC"}},
        {"2", request(2), {answer(2, 1)}},
        {"24", request(24), {answer(24, 1)}},
        {"3", request(3), {answer(3, 4), "1 onGetIfOperStatusReq: Unknown port type: 3"}},
        {"0", request(0), {answer(0, 4), "1 onGetIfOperStatusReq: Unknown port type: 0"}},
        {"administrative status is not answered",
         "00700003" + head(1) + words(1, 2),
         {"5 onSetIfAdminStatus: onSetIfAdminStatus() called (id: 0x700003)",
          "5 onSetIfAdminStatus: ----- SetIfAdminStatusIPC, TH terminate without action",
          "6 onSetIfAdminStatus: Received: SetIfAdminStatusIPC"}},
    };
    runAll(cases);
}

const auto queue = [](std::int64_t status, std::int64_t ct) { return "00700068" + head(ct) + words(status); };
const auto ifLoop = [](std::int64_t state, std::int64_t ct) { return "00700007" + head(ct) + words(state); };
const auto queueAnswer = [](int result, std::int64_t ct) { return toNode("00700067" + head(ct) + words(result)); };
const auto loopAnswer = [](int result, std::int64_t ct) { return toNode("00700026" + head(ct) + words(result)); };

TEST_P(Traffic, QueueStatusAndIfLoopSetTheGateTogether)
{
    startInService();
    const auto gate = [](const char* enable) {
        return std::vector<std::string>{"IIfLoopDriver_$.getIfLoopState()",
                                        std::string("ITrafHandler.enableTraffic($, ") + enable + ")"};
    };
    const std::string released = "ITrafHandler.quiesceChannel($, false)";
    const std::string loopOn = "IIfLoopDriver_$.setIfLoop(true, @)";
    const std::string loopOff = "IIfLoopDriver_$.setIfLoop(false, @)";
    const std::string todo = "5 onSetIfLoopStatusReq: TODO: Handling due to IF loop";
    const std::string gateError = "1 handleMlmChanelStatus: handleMlmChanelStatus(): TRAF returned with error for ct $";
    const std::string releaseError = "1 onSetMLMReq: onSetMLMReq(): TRAF returned with error for ct $";
    const Exchange cases[] = {
        {"queues disabled",
         queue(2, ct),
         {queueAnswer(0, ct), gate("false"), released, "5 onSetMLMReq: onSetMLMReq() called (id: 0x700068)",
          "6 onSetMLMReq: Received: SetMLMReqIPC", "6 onSetMLMReq: Respond with: SetMLMResIPC"}},
        {"the loop does not open the gate again",
         ifLoop(2, ct),
         {loopAnswer(0, ct), loopOn, gate("false"),
          "5 onSetIfLoopStatusReq: onSetIfLoopStatusReq() called (id: 0x700007)", todo,
          "6 onSetIfLoopStatusReq: Received: SetIfLoopStatusReqIPC",
          "6 onSetIfLoopStatusReq: Respond with: SetIfLoopStatusResIPC"}},
        {"nor do enabled queues while it is on", queue(1, ct), {queueAnswer(0, ct), gate("false"), released}},
        {"without both it is open", ifLoop(3, ct), {loopAnswer(0, ct), loopOff, gate("true")}},
        {"any other status enables", queue(4294967295, ct), {queueAnswer(0, ct), gate("true"), released}},
        {"no status changes nothing",
         queue(0, ct),
         {queueAnswer(1, ct), "1 onSetMLMReq: onSetMLMReq(): Called with no action, i.e. queueUndefinedC$"}},
        {"a failed gate does not stop the release",
         queue(1, ct),
         {queueAnswer(1, ct), gate("true"), released, gateError},
         R"({"results":{"ITrafHandler.enableTraffic":-1}})"},
        {"a failed release",
         queue(1, ct),
         {queueAnswer(1, ct), gate("true"), released, releaseError},
         R"({"results":{"ITrafHandler.quiesceChannel":1}})"},
        {"an unreadable loop counts as off, and as a failure",
         queue(1, ct),
         {queueAnswer(1, ct), gate("true"), released},
         R"({"results":{"IIfLoopDriver_$.getIfLoopState":1}})"},
        {"the gate has no say in the loop's answer",
         ifLoop(2, ct),
         {loopAnswer(0, ct), loopOn, gate("false"), todo, gateError},
         R"({"results":{"ITrafHandler.enableTraffic":1}})"},
        {"a refused loop",
         ifLoop(3, ct),
         {loopAnswer(1, ct), loopOff, gate("false")},
         R"({"results":{"IIfLoopDriver_$.setIfLoop":1}})"},
        {"loop 1", ifLoop(1, ct), {loopAnswer(1, ct)}},
        {"loop 4", ifLoop(4, ct), {loopAnswer(1, ct)}},
        {"channel 3", ifLoop(2, 3), {loopAnswer(1, 3)}},
        {"channel 0", ifLoop(2, 0), {loopAnswer(1, 0)}},
        {"negative results are failures, too",
         ifLoop(3, ct),
         {loopAnswer(1, ct), loopOff, gate("false"), gateError},
         R"({"results":{"IIfLoopDriver_$.setIfLoop":-1,"ITrafHandler.enableTraffic":-1}})"},
        {"an unreadable loop, negative",
         queue(1, ct),
         {queueAnswer(1, ct), gate("true"), released},
         R"({"results":{"IIfLoopDriver_$.getIfLoopState":-2147483648}})"},
        {"a release, negative",
         queue(1, ct),
         {queueAnswer(1, ct), gate("false"), released, releaseError},
         R"({"results":{"ITrafHandler.quiesceChannel":-1}})"},
    };
    runAll(cases);
}

TEST_F(TrafficOfTheUnit, QueuesOfAWrongChannelAreThoseOfChannel1)
{
    startInService();
    const auto gate = [](const std::string& ct, const std::string& enable) {
        return std::vector<std::string>{"IIfLoopDriver_" + ct + ".getIfLoopState()",
                                        "ITrafHandler.enableTraffic(" + ct + ", " + enable + ")"};
    };
    const std::string released = "ITrafHandler.quiesceChannel(1, false)";
    const Exchange cases[] = {
        {"channel 5", queue(2, 5), {queueAnswer(0, 5), gate("1", "false"), released}},
        {"channel 2 has queues of its own",
         ifLoop(3, 2),
         {loopAnswer(0, 2), "IIfLoopDriver_2.setIfLoop(false, 1)", gate("2", "true")}},
        {"channel 0", queue(1, 0), {queueAnswer(0, 0), gate("1", "true"), released}},
        {"no status; the request's channel is told, whichever it is",
         queue(0, 4294967295),
         {queueAnswer(1, 4294967295),
          "1 onSetMLMReq: onSetMLMReq(): Called with no action, i.e. queueUndefinedC4294967295"}},
        {"a failed release names the request's channel, a failed gate its own",
         queue(1, 7),
         {queueAnswer(1, 7), gate("1", "true"), released,
          "1 handleMlmChanelStatus: handleMlmChanelStatus(): TRAF returned with error for ct 1",
          "1 onSetMLMReq: onSetMLMReq(): TRAF returned with error for ct 7"},
         R"({"results":{"ITrafHandler.enableTraffic":1,"ITrafHandler.quiesceChannel":1}})"},
    };
    runAll(cases);
}

TEST_P(Traffic, TransmitterStatusIsLoggedWhenItChanges)
{
    startInService();
    const std::string request = "00700027" + head(ct);
    const auto answer = [this](std::int64_t status) { return toNode("00700028") + head(ct) + words(status); };
    const std::string query = "IRadio_$.getTransmitterState()";
    const std::string method = " onGetRFTxOperStatusReq: ";
    const std::string on = "4" + method + "[CT $]RF Tx Oper status changed! ON";
    const std::string off = "4" + method + "[CT $]RF Tx Oper status changed! OFF";
    const auto sent = [&](const char* state) {
        return "6" + method + "GetRFTxOperStatusResIPC response sent ([ct$]Oper status = " + state + " )";
    };
    const Exchange cases[] = {
        {"the first one always",
         request,
         {answer(3), query, "5" + method + "onGetRFTxOperStatusReq() called (id: 0x700027)", on,
          "6" + method + "Received: GetRFTxOperStatusReqIPC", "6" + method + "Respond with: GetRFTxOperStatusResIPC",
          sent(ofChannel("1", "5"))}},
        {"unchanged", request, {answer(3), query, sent(ofChannel("1", "5"))}},
        {"off", request, {answer(2), query, off, sent("0")}, R"({"results":{"IRadio_$.getTransmitterState":0}})"},
        {"any other number is on",
         request,
         {answer(3), query, on, sent("-7")},
         R"({"results":{"IRadio_$.getTransmitterState":-7}})"},
        {"a wrong channel is off and asks nobody",
         "00700027" + head(0),
         {toNode("00700028") + head(0) + words(2), "1" + method + " Incorrect ct number 0 ()"}},
        {"3",
         "00700027" + head(3),
         {toNode("00700028") + head(3) + words(2), "1" + method + " Incorrect ct number 3 ()"}},
        {"and leaves what is known of the others", request, {answer(3), query, sent(ofChannel("1", "5"))}},
    };
    runAll(cases);
}

TEST_P(Traffic, AFrequencyReconfiguresTheRadioOnce)
{
    startInService(0x02);
    platform.radioUp(ct);
    ASSERT_TRUE(module()->setFrameFormat(ct - 1, 1, 2, 29, 4));
    const auto request = [this](std::int64_t tx, std::int64_t rx) {
        return "00700066" + head(ct) + words(tx, 0, 3, rx);
    };
    const std::string done = toNode("00700022") + head(ct) + words(0);
    const std::vector<std::string> compared{
        "IHardwareConfigurationHandler.getRadioFrameId($)", "IAcmHandler_$.getMinMaxModulationAndCode()",
        "ISystemPowerController_$.getReferenceSec()", "IFrequencyController_$.getTxFrequency()",
        "IFrequencyController_$.getRxFrequency()"};
    const std::vector<std::string> read{"IRadio_$.getRfLoopState()",
                                        "ISystemPowerController_$.getRequestedAtpcTarget()",
                                        "ISystemPowerController_$.getRequestedMinOutputPower()",
                                        "ISystemPowerController_$.getRequestedMaxOutputPower()"};
    const auto configure = [](const std::string& frequencies) {
        return "kro_top_api.criSetRadioChannelNearEnd($, 1, 31, 121, 2, " + frequencies + ", true)";
    };
    const std::string time =
        "4 setRadioChannelNearEnd: setRadioChannelNearEnd(): Time to call criSetRadioChannelNearEnd";
    const std::string failed =
        "1 onSetXfRFIfStatusReq: onSetXfRFIfStatusReq(): failed to set frequency via m_adapterModel";
    const Exchange cases[] = {
        {"another frequency",
         request(440, 440),
         {done, compared, configure(ofChannel("17810000, 18820000", "21420000, 22652000")), read, time}},
        {"the same again", request(440, 440), {done, compared, read}},
        {"no transmit step", request(0, 440), {done}},
        {"no receive step", request(440, 0), {done}},
        {"refused",
         request(441, -1),
         {toNode("00700022") + head(ct) + words(1), compared,
          configure(ofChannel("17810250, 18709750", "21420500, 22431500")), read, time,
          "1 setRadioChannelNearEnd: setRadioChannelNearEnd(): failed: , (eTI_E_FAILED)",
          "1 onSetFrequency: onSetFrequency():  Failed during cal to setRadioChannelNearEnd", failed},
         R"({"results":{"kro_top_api.criSetRadioChannelNearEnd":32768}})"},
    };
    runAll(cases);
}

TEST_P(Traffic, LoopAndTransmitterFollowTheFrequency)
{
    startInService(0x02);
    const auto request = [this](std::int64_t admin, std::int64_t loop) {
        return "00700066" + head(ct) + words(400, admin, loop, 400);
    };
    const auto answer = [this](std::int64_t result) { return toNode("00700022") + head(ct) + words(result); };
    const auto refused = [](std::int64_t wrong) { return toNode("00700022") + head(wrong) + words(1); };
    const std::string loopState = "IRadio_$.getRfLoopState()";
    const std::vector<std::string> settings{"ISystemPowerController_$.getRequestedAtpcTarget()",
                                            "ISystemPowerController_$.getRequestedMinOutputPower()",
                                            "ISystemPowerController_$.getRequestedMaxOutputPower()"};
    const auto transmitter = [](const std::string& off, const std::string& powers = "-45$0, 5$0, 20$0") {
        return std::vector<std::string>{"ISystemPowerController_$.setTransmitterOff(" + off + ", true)",
                                        "ISystemPowerController_$.notifyRequestedPowerSettings(" + off + ", " + powers +
                                            ", 0, 1)"};
    };
    const std::string loopOn = "IRadio_$.setRfLoop(true)";
    const std::string loopOff = "IRadio_$.setRfLoop(false)";
    const std::string method = " onSetXfRFIfStatusReq: ";
    const std::string error = "1" + method + "onSetXfRFIfStatusReq(): ";
    runOne({"no plan yet, the rest goes on",
            request(1, 3),
            {answer(1), loopState, settings,
             "1 onSetFrequency: onSetFrequency():  Can't set frequency since no channel plan is available",
             error + "failed to set frequency via m_adapterModel"}});
    platform.radioUp(ct);
    const Exchange cases[] = {
        {"transmitter off, loop on",
         request(3, 2),
         {answer(0), loopState, loopOn, settings, transmitter("true"),
          "5" + method + "onSetXfRFIfStatusReq() called (id: 0x700066)", "5" + method + "Set tx frequency step 400",
          "5" + method + "Set rx frequency step 400", "5" + method + "Set admin status 3",
          "6" + method + "Received: SetXfRFIfStatusReqIPC", "6" + method + "Respond with: SetXfRFIfStatusResIPC"},
         R"({"channels":{"$":{"systemPower":{"atpcTarget":-45$0,"minOutputPower":5$0,"maxOutputPower":20$0}}}})"},
        {"a loop that is on is left alone", request(2, 2), {answer(0), loopState, settings, transmitter("false")}},
        {"loop off, transmitter untouched", request(1, 3), {answer(0), loopState, loopOff, settings}},
        {"a loop that is off is left alone", request(4, 3), {answer(0), loopState, settings}},
        {"a loop that is none, the rest goes on",
         request(2, 1),
         {answer(1), loopState, settings, transmitter("false"), error + "Unhandled RF loop state request"}},
        {"the lowest failure",
         request(0, 2),
         {answer(1), loopState, loopOn, settings, error + "failed to set RF loop ON via IRadio"},
         R"({"results":{"IRadio_$.setRfLoop":32768}})"},
        {"results compare signed here",
         request(0, 2),
         {answer(0), loopState, loopOn, settings},
         R"({"results":{"IRadio_$.setRfLoop":4294967295}})"},
        {"loop that does not go off",
         request(0, 3),
         {answer(1), loopState, loopOff, settings, error + "failed to set RF loop OFF via IRadio"},
         R"({"results":{"IRadio_$.getRfLoopState":-1,"IRadio_$.setRfLoop":2147483647}})"},
        {"refused power settings are logged, not answered; settings that cannot be read are 0",
         request(3, 3),
         {answer(0), loopState, settings, transmitter("true", "0, 5$0, 20$0"),
          error + "failed during call to SPC::notifyRequestedPowerSettings = "},
         R"({"results":{"ISystemPowerController_$.notifyRequestedPowerSettings":32768,
                        "ISystemPowerController_$.getRequestedAtpcTarget":32768}})"},
        {"wrong channel",
         "00700066" + head(3) + words(400, 2, 2, 400),
         {refused(3), "1" + method + " Incorrect ct number 3 ()"}},
        {"a wrong channel is refused before a step of 0",
         "00700066" + head(4294967295) + words(0, 2, 2, 0),
         {refused(4294967295), "1" + method + " Incorrect ct number 4294967295 ()"}},
    };
    runAll(cases);
}

TEST_P(Traffic, WhatIsMissingIsRefusedAndTheRestGoesOn)
{
    const std::string xfRequest = "00700066" + head(ct) + words(400, 2, 2, 400);
    const std::string xfFailed = toNode("00700022") + head(ct) + words(1);
    const std::string noPlan =
        "1 onSetFrequency: onSetFrequency():  Can't set frequency since no channel plan is available";
    const std::string noFrequency =
        "1 onSetXfRFIfStatusReq: onSetXfRFIfStatusReq(): failed to set frequency via m_adapterModel";
    const std::string loopOn = ifLoop(2, ct);
    const struct {
        std::string interface;
        std::vector<Exchange> exchanges;
    } cases[] = {
        {"ITrafHandler",
         {{"the loop is set and decides",
           loopOn,
           {toNode("00700026") + head(ct) + words(0), "IIfLoopDriver_$.setIfLoop(true, @)",
            missing("handleMlmChanelStatus", "ITrafHandler")}},
          {"queues",
           "00700068" + head(ct) + words(2),
           {toNode("00700067") + head(ct) + words(1), missing("handleMlmChanelStatus", "ITrafHandler"),
            missing("onSetMLMReq", "ITrafHandler")}}}},
        {"IIfLoopDriver_$",
         {{"loop",
           loopOn,
           {toNode("00700026") + head(ct) + words(1), missing("onSetIfLoopStatusReq", "IIfLoopDriver_$"),
            missing("handleMlmChanelStatus", "IIfLoopDriver_$")}}}},
        {"ISystemPowerController_$",
         {{"transmitter",
           xfRequest,
           {xfFailed, "IRadio_$.getRfLoopState()", "IRadio_$.setRfLoop(true)", noFrequency,
            missing("onSetXfRFIfStatusReq", "ISystemPowerController_$")}}}},
        {"IRadio_$",
         {{"loop; the lookup stops there, so that the transmitter is refused, too",
           xfRequest,
           {xfFailed, noPlan, noFrequency, missing("onSetXfRFIfStatusReq", "IRadio_$"),
            missing("onSetXfRFIfStatusReq", "ISystemPowerController_$")}},
          {"transmitter status",
           "00700027" + head(ct),
           {toNode("00700028") + head(ct) + words(2), missing("onGetRFTxOperStatusReq", "IRadio_$")}}}},
    };
    for (const auto& [interface, exchanges] : cases) {
        SCOPED_TRACE(interface);
        startInService(0, {.state = R"({"interfaces":{")" + interface + R"(":false}})"});
        runAll(exchanges);
    }
}

TEST_F(TrafficOfTheUnit, AChannelThatTheUnitDoesNotHaveIsRefused)
{
    startInService(0, {.channels = 1});
    const std::string method = "onSetXfRFIfStatusReq";
    const Exchange cases[] = {
        {"settings",
         "00700066" + head(2) + words(400, 2, 2, 400),
         {toNode("00700022") + head(2) + words(1),
          "1 onSetFrequency: onSetFrequency():  Incorrect radioChannelIndex = 1",
          "1 " + method + ": " + method + "(): failed to set frequency via m_adapterModel", missing(method, "IRadio_2"),
          missing(method, "ISystemPowerController_2")}},
        {"loop",
         "00700007" + head(2) + words(2),
         {toNode("00700026") + head(2) + words(1), missing("onSetIfLoopStatusReq", "IIfLoopDriver_2"),
          missing("handleMlmChanelStatus", "IIfLoopDriver_2")}},
        {"transmitter status",
         "00700027" + head(2),
         {toNode("00700028") + head(2) + words(2), missing("onGetRFTxOperStatusReq", "IRadio_2")}},
    };
    runAll(cases);
}

} // namespace
