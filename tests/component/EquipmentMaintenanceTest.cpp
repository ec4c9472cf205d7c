#include "support/ModuleTest.h"

namespace {

class EquipmentMaintenance : public ChannelTest {};

FOR_EACH_CHANNEL(EquipmentMaintenance);

class MaintenanceOfTheUnit : public ModuleTest {};

/// The radio's own codes, and what the node gets where they are not exchanged.
const std::string ownCodes = words(0, 3, 0, 0, 0, 0x5b, 1, 3, 0, 0, 0, 0);
const std::string noCodes = zeros(48);

std::string selfTestAnswer(std::int64_t result, const std::string& codes)
{
    return toNode("00200005") + head(0) + words(result) + codes;
}

const std::string whiteListOff = "4 enableVornipcWhiteList: Disabling Vornipc white list for ANS RL5";
const std::string whiteListOn = "4 enableVornipcWhiteList: Enabling Vornipc white list for ANS RL5";

TEST_F(MaintenanceOfTheUnit, SelfTestExchangesCapabilitiesOnce)
{
    start();
    const std::string exchanged = "5 onSelftestReq: TODO: SAL_EQH_InitFrameFormatList (ANSCompatibilityCodes)";
    const std::string channelEnabled = "5 onSelftestReq: TODO: SAL_EnablePCIChannel() for outgoing messages";
    const std::string avsInit = "5 onSelftestReq: TODO: RLBSP_bcm_avsInit(); replace with dspApi() call ?";
    const std::string initialize = "IRlbspKroApi.initialize()";
    const std::string productId = "Bsp.getProductId()";
    const Exchange cases[] = {
        {"the first one exchanges",
         selfTest(1, 0x20),
         {selfTestAnswer(1, ownCodes), productId, initialize, "5 onSelftestReq: called (id: 0x200004)",
          "6 onSelftestReq: Received: ADSSelftestReqIPC", whiteListOff, whiteListOff, exchanged, channelEnabled,
          avsInit, "6 onSelftestReq: Respond with: ADSSelftestResIPC"}},
        {"the second does not, and keeps what the node can",
         selfTest(1, 0),
         {selfTestAnswer(1, noCodes), initialize, whiteListOff, channelEnabled, avsInit}},
        {"QES mode is taken from every one", selfTest(1, 0x80), {selfTestAnswer(1, noCodes), initialize, whiteListOn}},
        {"type 0 asks for an exchange next time",
         selfTest(0, 0),
         {selfTestAnswer(2, noCodes), whiteListOff, channelEnabled}},
        {"so the next exchanges again",
         selfTest(0, 0x02),
         {selfTestAnswer(2, ownCodes), productId, whiteListOff, whiteListOff, exchanged, channelEnabled}},
        {"a product of its own says so in its power codes",
         selfTest(7, 0),
         {selfTestAnswer(1, words(0, 3, 0, 0, 0, 0x5b, 1, 1, 0, 0, 0, 0)), productId, whiteListOff, whiteListOff,
          avsInit},
         R"({"unit":{"productId":5}})"},
    };
    runAll(cases);
    EXPECT_EQ(module()->linkFacts().slotNumber, 3) << "from the header";

    module()->resetSelfTestCheckPerformed();
    runOne({"exchanged anew on request",
            selfTest(1, 0x84),
            {selfTestAnswer(1, ownCodes), productId, whiteListOn, whiteListOn},
            R"({"unit":{"productId":4}})"});
    EXPECT_TRUE(module()->linkFacts().vornipcWhiteListActive);
}

TEST_P(EquipmentMaintenance, TemperatureIsASignedByte)
{
    startInService();
    const std::string request = "00200020" + head(ct);
    const std::string answer = toNode("00200021") + head(ct);
    const std::vector<std::string> queried{"IRadio_$.isRadioUp()", "IRadio_$.getTemperature()"};
    const Exchange cases[] = {
        {"the radio's", request, {answer + words(ofChannel(31, 44)), queried}},
        {"below zero", request, {answer + "ffffff80", queried}, R"({"channels":{"$":{"radio":{"temperature":-128}}}})"},
        {"highest", request, {answer + words(127), queried}, R"({"channels":{"$":{"radio":{"temperature":127}}}})"},
        {"the query fails", request, {answer + words(0), queried}, R"({"results":{"IRadio_$.getTemperature":32768}})"},
        {"radio down",
         request,
         {answer + words(0), "IRadio_$.isRadioUp()"},
         R"({"channels":{"$":{"radio":{"up":false}}}})"},
    };
    runAll(cases);
    expectForWrongChannels("00200020", "", "00200021", words(0), "1 onRauStatusReq: Incorrect ct number # ()");
}

TEST_P(EquipmentMaintenance, RestartIsAnsweredBeforeTheRadioGoes)
{
    startInService();
    const auto request = [this](std::int64_t command) { return "00200017" + head(ct) + words(command); };
    const std::string refused = toNode("00200018") + head(ct) + words(2);
    const std::string invalid = "1 onRAURestartReq:  invalid restart request for ct $";
    const std::string stubbed = "5 onRAURestartReq: ----- Stubbed RAURestartResIPC response";
    const Exchange cases[] = {
        {"command 2", request(2), {refused, "IRadio_$.isRadioUp()", stubbed, invalid}},
        {"command 0", request(0), {refused, "IRadio_$.isRadioUp()", invalid}},
        {"radio down",
         request(1),
         {refused, "IRadio_$.isRadioUp()", invalid},
         R"({"results":{"IRadio_$.isRadioUp":0}})"},
    };
    runAll(cases);
    expectForWrongChannels("00200017", words(1), "00200018", words(2), "1 onRAURestartReq:  Incorrect ct number # ()");

    patch(R"({"results":{"IRadio_$.restart":0}})"); // the radio stays where it is
    newCalls();
    deliverAndSettle(request(1));
    EXPECT_EQ(newlySent().back(), toNode("00200018") + head(ct) + words(1));
    EXPECT_EQ(newCalls(true),
              (std::vector<std::string>{meant("IRadio_$.isRadioUp()"), "ripc.sendBufferToPci(36)",
                                        meant("IAlarmHandler.notifyRauRestart($)"), meant("IRadio_$.restart(0)")}));
}

TEST_P(EquipmentMaintenance, ARestartedRadioIsLostAndDetectedAgain)
{
    startInService(0x02);
    deliver("00200017" + head(ct) + words(1));
    std::vector<std::string> sent;
    EXPECT_TRUE(comesTrue([&] {
        for (std::string& buffer : newlySent()) {
            sent.push_back(buffer.substr(0, 64)); // device, id and header
        }
        return sent.size() >= 4;
    }));
    EXPECT_EQ(sent,
              (std::vector{toNode("00200005") + head(0), toNode("00200018") + head(ct),
                           toNode("00200002") + spontaneousHead(0, ct), toNode("00200131") + spontaneousHead(1, ct)}))
        << "self test, restart accepted, lost, detected";
}

TEST_P(EquipmentMaintenance, DefaultConfigurationWantsARadioThatIsUp)
{
    startInService();
    const std::string request = "00200022" + head(ct);
    const std::string done = toNode("00200023") + head(ct) + words(0);
    const std::string failed = toNode("00200023") + head(ct) + words(1);
    const std::vector<std::string> tried{"IRadio_$.isRadioUp()", "IRadio_$.setDefaultConfiguration()"};
    const std::string failedLine = "1 onSetRAUDefaultConfigReq:  Failed to set default configuration for ct $";
    const Exchange cases[] = {
        {"done", request, {done, tried}},
        {"the highest code that is no failure",
         request,
         {done, tried},
         R"({"results":{"IRadio_$.setDefaultConfiguration":32767}})"},
        {"the lowest failure",
         request,
         {failed, tried, failedLine},
         R"({"results":{"IRadio_$.setDefaultConfiguration":32768}})"},
        {"codes are compared unsigned",
         request,
         {failed, tried, failedLine},
         R"({"results":{"IRadio_$.setDefaultConfiguration":4294967295}})"},
        {"radio down",
         request,
         {failed, "IRadio_$.isRadioUp()", "1 onSetRAUDefaultConfigReq:  Radio is down for ct $"},
         R"({"channels":{"$":{"radio":{"up":false}}}})"},
    };
    runAll(cases);
    expectForWrongChannels("00200022", "", "00200023", words(1),
                           "1 onSetRAUDefaultConfigReq:  Incorrect ct number # ()");
}

TEST_P(EquipmentMaintenance, ShiftStatusTellsOfTheAcmEngine)
{
    startInService();
    const std::string request = "00200129" + head(ct);
    const std::string answer = toNode("00200130") + head(ct);
    const std::vector<std::string> queried{"IAcmHandler_$.isAcmEngineEnabled()"};
    const Exchange cases[] = {
        {"the radio's", request, {answer + words(ofChannel(2, 1)), queried}},
        {"enabled", request, {answer + words(2), queried}, R"({"channels":{"$":{"acm":{"engineEnabled":true}}}})"},
        {"disabled", request, {answer + words(1), queried}, R"({"channels":{"$":{"acm":{"engineEnabled":false}}}})"},
        {"unknown",
         request,
         {answer + words(0), queried, "1 onGetShiftStatusReq:  Failed to check if ACM is enabled for $"},
         R"({"results":{"IAcmHandler_$.isAcmEngineEnabled":32769}})"},
    };
    runAll(cases);
    expectForWrongChannels("00200129", "", "00200130", words(0), "1 onGetShiftStatusReq:  Incorrect ct number # ()");
}

TEST_P(EquipmentMaintenance, AcmLimitGoesToTheTrafficFunctionByIndex)
{
    startInService();
    const auto limit = [this](std::int64_t value, const std::string& text) {
        return Exchange{text,
                        "00200116" + head(ct) + words(value),
                        {"TrfMlm.setTxMaxAcmLimit(@, " + text + ")",
                         "4 onSetTxMaxAcmLimitReq: Set Tx Max Acm capacity limit for ct $ to " + text}};
    };
    const Exchange cases[] = {limit(4294967295, "4294967295"), limit(30, "30")};
    runAll(cases);
    expectForWrongChannels("00200116", words(1), "", "", "1 onSetTxMaxAcmLimitReq:  Incorrect ct number # ()");

    startInService(0, {.moduleChannels = 3}); // the function is the platform's: it needs no interface of the channel
    runAll(cases);
}

TEST_F(MaintenanceOfTheUnit, BpmCommandsGoToANodeThatTakesThem)
{
    start();
    const auto command = [this](std::size_t length, int result) {
        return [this, length, result] {
            EXPECT_EQ(platform.bpmCommand(std::vector<unsigned char>(length, 0xEE)), result);
        };
    };
    const auto sent = [](std::int64_t number, std::size_t length) {
        return toNode("00200134") + spontaneousHead(number, 0) + repeated(0xEE, length) + zeros(120 - length);
    };
    const std::string incapable = "1 rawMsgCallback:  ANS is not BPM command capable";
    expectOutcome("before any self test", command(4, 1), {incapable});

    deliver(selfTest(1, 0x20));
    deliverAndSettle(mmuState(1));
    expectOutcome("capable", command(4, 0), {sent(0, 4)});
    expectOutcome("nothing to say", command(0, 0), {sent(1, 0)});
    expectOutcome("the longest", command(120, 0), {sent(2, 120)});
    expectOutcome("one too long", command(121, 1),
                  {"1 rawMsgCallback: rawMsgCallback(): length 121 is above the capacity 120"});
    expectOutcome("a refused one uses no number", command(1, 0), {sent(3, 1)});

    module()->resetSelfTestCheckPerformed();
    deliverAndSettle(selfTest(1, 0xDF));
    expectOutcome("not capable any more", command(4, 1), {incapable});
}

TEST_F(MaintenanceOfTheUnit, BpmResponsesGoToThePlatform)
{
    start();
    runOne({"response",
            "00200135" + head(0) + repeated(0x11, 120) + repeated(0x22, 119) + "33",
            {"IRlbspKroApi.sendBpmResponse(" + repeated(0x22, 119) + "33)", "5 onBpmCommandRes: called (id: 0x200135)",
             "6 onBpmCommandRes: Received: BpmCommandResIPC"}});
}

} // namespace
