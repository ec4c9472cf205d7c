#include "support/ModuleTest.h"

namespace {

class PowerControl : public ChannelTest {
protected:
    /// Channel numbers that no unit has get no answer.
    void expectOutOfRange(const std::string& method, const std::string& requestId, std::size_t bodyWords)
    {
        expectForWrongChannels(requestId, zeroWords(bodyWords), "", "",
                               "1 " + method + ": " + method + "(): message->ct = # is out of range");
    }

    const std::string done = toNode("00300026") + head(ct) + words(0);
    const std::string failed = toNode("00300026") + head(ct) + words(1);

    std::string setRequest(std::int64_t min, std::int64_t max, std::int64_t target, std::int64_t threshold) const
    {
        return "00300025" + head(ct) + words(min, max, target, threshold);
    }

    /// What the channel's power controller gets. The transmitter stays as it is: that of channel 2 is off.
    std::vector<std::string> applied(const std::string& threshold, const std::string& settings) const
    {
        return appliedWith(ofChannel("false", "true"), threshold, settings);
    }

    static std::vector<std::string> appliedWith(const std::string& transmitterOff, const std::string& threshold,
                                                const std::string& settings)
    {
        return {"ISystemPowerController_$.setInputPowerThreshold(" + threshold + ")",
                "ISystemPowerController_$.getTransmitterOff()",
                "ISystemPowerController_$.notifyRequestedPowerSettings(" + transmitterOff + ", " + settings +
                    ", 0, 1)"};
    }
};

FOR_EACH_CHANNEL(PowerControl);

class PowerControlOfTheUnit : public ModuleTest {};

TEST_P(PowerControl, SettingsReachTheRadioInHundredths)
{
    startInService();
    const std::string request = setRequest(5, 20, -45, -30);
    const std::vector<std::string> calls = applied("-3000", "-4500, 500, 2000");
    const std::string refusedByController =
        "1 setRfPower: setRfPower(): failed during call to SPC::notifyRequestedPowerSettings = ";
    const Exchange cases[] = {
        {"the highest threshold",
         request,
         {done, calls, "5 onSetRfPowerReq: onSetRfPowerReq() called (id: 0x300025)",
          "5 setRfPower: setRfPower() called", "6 setRfPower: *********setRfPower() DATA BEGIN *********",
          "6 setRfPower: RfSelectedMinOutputPower = 5 dBm", "6 setRfPower: RfSelectedMaxOutputPower = 20 dBm",
          "6 setRfPower: RfAtpcTargetInputPowerFE = -45 dBm", "6 setRfPower: RfInputPowerThreshold    = -30 dBm",
          "6 setRfPower: *********setRfPower() DATA END *********", "6 onSetRfPowerReq: Received: SetRfPowerReqIPC",
          "6 onSetRfPowerReq: Respond with: SetRfPowerResIPC"}},
        {"one above it",
         setRequest(5, 20, -45, -29),
         {failed, "5 setRfPower: setRfPower() called",
          "1 setRfPower: setRfPower(): Requested RfInputPowerThreshold = -29 is above the limit = -30",
          "6 onSetRfPowerReq: Received: SetRfPowerReqIPC", "6 onSetRfPowerReq: Respond with: SetRfPowerResIPC"}},
        {"limits that contradict each other, the far end's numbers at their ends",
         setRequest(20, -5, 0x7fffffff, -0x7fffffff - 1),
         {done, applied("0", "-100, 2000, -500")}},
        {"what cannot be read counts as on, and only the notification's result counts",
         request,
         {done, appliedWith("false", "-3000", "-4500, 500, 2000")},
         R"({"results":{"ISystemPowerController_$.setInputPowerThreshold":32768,
                        "ISystemPowerController_$.getTransmitterOff":32768,
                        "ISystemPowerController_$.notifyRequestedPowerSettings":32767}})"},
        {"refused",
         request,
         {failed, calls, refusedByController},
         R"({"results":{"ISystemPowerController_$.notifyRequestedPowerSettings":32768}})"},
        {"results compare unsigned",
         request,
         {failed, calls, refusedByController},
         R"({"results":{"ISystemPowerController_$.notifyRequestedPowerSettings":4294967295}})"},
    };
    runAll(cases);
    expectOutOfRange("onSetRfPowerReq", "00300025", 4);
    expectOutOfRange("onSetRfPowerV2Req", "00300030", 5);
    expectOutOfRange("onSetRfPowerV3Req", "00300031", 6);
}

TEST_P(PowerControl, ReductionAndTapsComeWithTheLaterVersions)
{
    startInService();
    const std::string settings = words(0, 10, -40, -60);
    const std::vector<std::string> calls = applied("-6000", "-4000, 0, 1000");
    const std::string endOfData = "6 setRfPower: *********setRfPower() DATA END *********";
    const auto reduced = [](const char* reduction) {
        return std::string("IOutputPowerCalculator_$.setHighPowerReduction(") + reduction + ")";
    };
    const auto v2 = [&](std::int64_t hp) { return "00300030" + head(ct) + settings + words(hp); };
    const auto v3 = [&](std::int64_t taps) { return "00300031" + head(ct) + settings + words(2, taps); };
    const Exchange cases[] = {
        {"reduced",
         v2(1),
         {done, reduced("400"), calls, "5 onSetRfPowerV2Req: onSetRfPowerV2Req() called (id: 0x300030)",
          "6 setRfPower: HpMaxOutputPowerReduced  = Yes", endOfData,
          "6 onSetRfPowerV2Req: Received: SetRfPowerV2ReqIPC",
          "6 onSetRfPowerV2Req: Respond with: SetRfPowerV2ResIPC"}},
        {"not reduced", v2(2), {done, reduced("0"), calls, "6 setRfPower: HpMaxOutputPowerReduced  = No"}},
        {"no truth value", v2(4294967295), {done, reduced("0"), calls, "6 setRfPower: HpMaxOutputPowerReduced  = No"}},
        {"a refused reduction is nobody's business",
         v2(1),
         {done, reduced("400"), calls},
         R"({"results":{"IOutputPowerCalculator_$.setHighPowerReduction":32768}})"},
        {"taps on",
         v3(2),
         {done, reduced("0"), "ITapsController_$.setTaps(true)", calls,
          "5 onSetRfPowerV3Req: onSetRfPowerV3Req() called (id: 0x300031)",
          "6 setRfPower: HpMaxOutputPowerReduced  = No", "6 setRfPower: RfTaps                   = 2", endOfData,
          "6 onSetRfPowerV3Req: Received: SetRfPowerV3ReqIPC",
          "6 onSetRfPowerV3Req: Respond with: SetRfPowerV3ResIPC"}},
        {"taps off", v3(1), {done, reduced("0"), "ITapsController_$.setTaps(false)", calls}},
        {"refused taps do not stop the rest",
         v3(4),
         {done, reduced("0"), "ITapsController_$.setTaps(false)", calls, "1 setRfPower: Failed to set RfTaps to 4",
          endOfData},
         R"({"results":{"ITapsController_$.setTaps":32768}})"},
        {"taps that warn are set",
         v3(2),
         {done, reduced("0"), "ITapsController_$.setTaps(true)", calls},
         R"({"results":{"ITapsController_$.setTaps":32767}})"},
        {"above the limit nothing is applied",
         "00300031" + head(ct) + words(0, 10, -40, 0, 1, 2),
         {failed, "1 setRfPower: setRfPower(): Requested RfInputPowerThreshold = 0 is above the limit = -30"}},
    };
    runAll(cases);
}

TEST_P(PowerControl, ReadingIsAnsweredAsTheRadioGivesIt)
{
    startInService();
    const std::string request = "00300023" + head(ct);
    const std::string answer = toNode("00300024") + head(ct);
    const std::string query = "IRadio_$.getCurrentRfPower()";
    const Exchange cases[] = {
        {"the radio's", request, {answer + ofChannel(words(20, -450), words(17, -523)), query}},
        {"input power in tenths",
         request,
         {answer + words(-3, -459), query, "5 onGetRfPowerReq: onGetRfPowerReq() called (id: 0x300023)",
          "6 onGetRfPowerReq: *********onGetRfPowerReq() DATA BEGIN *********",
          "6 onGetRfPowerReq: RfCurrentOutputPower = -3 dBm", "6 onGetRfPowerReq: RfCurrentInputPower  = -45 dBm",
          "6 onGetRfPowerReq: *********onGetRfPowerReq() DATA END *********",
          "6 onGetRfPowerReq: Received: GetRfPowerReqIPC", "6 onGetRfPowerReq: Responde with : GetRfPowerResIPC"},
         R"({"channels":{"$":{"radio":{"rfPower":{"output":-3,"input":-459}}}}})"},
        {"a failing query leaves zeros",
         request,
         {answer + words(0, 0), query},
         R"({"results":{"IRadio_$.getCurrentRfPower":32768}})"},
    };
    runAll(cases);
    expectOutOfRange("onGetRfPowerReq", "00300023", 0);
}

TEST_P(PowerControl, InventoryKnowsWhatTheModulationBitAllows)
{
    startInService();
    const std::string request = "00300021" + head(ct);
    const auto inventory = [this](const std::string& minimum, const std::string& maxima) {
        return toNode("00300022") + head(ct) + words(2, 2) + minimum + maxima + words(255, 2, 2);
    };
    const std::string unknown = words(255, 255, 255, 255, 255, 255, 255, 255, 255, 255);
    const std::string isUp = "IRadio_$.isRadioUp()";
    const std::vector<std::string> queried{isUp, "IOutputPowerCalculator_$.getLimitedPower()"};
    const auto power = [](const std::string& members) {
        return R"({"channels":{"$":{"outputPower":{)" + members + "}}}}";
    };
    const std::string data = "5 onGetRauPowerInventoryReq: ";
    const std::string notRead = "1 onGetRauPowerInventoryReq: onGetRauPowerInventoryReq() Could not get limited power";
    std::string unusedPairs;
    for (int i = 0; i < 42; ++i) {
        unusedPairs += "[33,100],";
    }
    const Exchange cases[] = {
        {"the radio's; the second one does not go up to 4096QAM",
         request,
         {ofChannel(inventory(words(-5), words(24, 22, 21, 21, 20, 20, 19, 19, 18, 18)),
                    inventory(words(-3), words(23, 21, 20, 19, 18, 17, 16, 15, 14, 255))),
          queried}},
        {"every modulation, powers truncated toward zero",
         request,
         {inventory(words(-5), words(24, 16, 8, 0, 0, -1, 7, 6, 5, 4)), queried,
          data + "onGetRauPowerInventoryReq() called (id: 0x300021)",
          data + "*********onGetRauPowerInventoryReq() DATA BEGIN *********", data + "minOutputPower        = -5 dBm",
          data + "maxOutputPower4QAM    = 24 dBm", data + "maxOutputPower16QAM   = 16 dBm",
          data + "maxOutputPower32QAM   = 8 dBm", data + "maxOutputPower64QAM   = 0 dBm",
          data + "maxOutputPower128QAM  = 0 dBm", data + "maxOutputPower256QAM  = -1 dBm",
          data + "maxOutputPower512QAM  = 7 dBm", data + "maxOutputPower1024QAM = 6 dBm",
          data + "maxOutputPower2048QAM = 5 dBm", data + "maxOutputPower4096QAM = 4 dBm",
          data + "*********onGetRauPowerInventoryReq() DATA END *********",
          "6 onGetRauPowerInventoryReq: Received: GetRauPowerInventoryReqIPC",
          "6 onGetRauPowerInventoryReq: Respond with: GetRauPowerInventoryResIPC"},
         power(R"("minOutputPower":-599,"highestModulationBit":32767,"pairs":[[31,2499],[40,1600],[52,899],[61,99],
                  [70,-99],[82,-100],[90,700],[101,600],[112,500],[120,400]])")},
        {"the last pair of a modulation wins, those above the limit do not count",
         request,
         {inventory(words(-5), words(17, 255, 255, 255, 255, 255, 255, 255, 255, 255)), queried},
         power(R"("highestModulationBit":4,"pairs":[[30,1850],[31,1790],[40,1600]])")},
        {"BPSK, 8192QAM, 16384QAM, unused numbers and numbers outside the list are none of the node's",
         request,
         {inventory(words(-5), unknown), queried},
         power(R"("highestModulationBit":4294967295,
                  "pairs":[[10,100],[22,100],[130,100],[142,100],[33,100],[143,100],[9,100],[144,100],[150,100],
                           [2147483647,100],[-31,100]])")},
        {"as many pairs as there can be",
         request,
         {inventory(words(-5), words(255, 255, 255, 255, 255, 255, 255, 255, 255, 19)), queried},
         power(R"("highestModulationBit":4096,"pairs":[)" + unusedPairs + R"([122,1999]])")},
        {"an empty list", request, {inventory(words(-5), unknown), queried}, power(R"("pairs":[])")},
        {"no frame format",
         request,
         {inventory(words(0), unknown), queried,
          data + "onGetRauPowerInventoryReq() Could not get limited power since no FF has been set"},
         R"({"results":{"IOutputPowerCalculator_$.getLimitedPower":32776}})"},
        {"another failure",
         request,
         {inventory(words(0), unknown), queried, notRead},
         R"({"results":{"IOutputPowerCalculator_$.getLimitedPower":32768}})"},
        {"results compare unsigned",
         request,
         {inventory(words(0), unknown), queried, notRead},
         R"({"results":{"IOutputPowerCalculator_$.getLimitedPower":4294967295}})"},
        {"a warning without a list",
         request,
         {inventory(words(0), unknown), queried},
         R"({"results":{"IOutputPowerCalculator_$.getLimitedPower":32767}})"},
        {"radio down",
         request,
         {inventory(words(255), unknown), isUp, "6 onGetRauPowerInventoryReq: Received: GetRauPowerInventoryReqIPC",
          "6 onGetRauPowerInventoryReq: Respond with: GetRauPowerInventoryResIPC"},
         R"({"channels":{"$":{"radio":{"up":false}}}})"},
    };
    runAll(cases);
    expectOutOfRange("onGetRauPowerInventoryReq", "00300021", 0);
}

TEST_P(PowerControl, FarEndLimitsGoToThePlatformByModulation)
{
    startInService();
    const std::string request = "00300028" + head(ct) + words(0, 1, 2, 3, 4, 5, 6, -7, 8, 0x7fffffff);
    const std::string answer = toNode("00300029") + head(ct);
    const std::string call =
        "kro_top_api.criSetFarEndPmaxCapability($, "
        "[[31,0],[41,100],[51,200],[61,300],[71,400],[81,500],[91,600],[101,-700],[111,800],[121,-100]])";
    const std::string setting =
        "4 onSetFarEndPmaxCapability: onSetFarEndPmaxCapability():  Setting Far End Pmax capabilities";
    const Exchange cases[] = {
        {"taken",
         request,
         {answer + words(0), call, "5 onFEPowerLimitationReq: onFEPowerLimitationReq() called (id: 0x300028)", setting,
          "6 onFEPowerLimitationReq: Received: FEPowerLimitationReqIPC",
          "6 onFEPowerLimitationReq: Respond with: FEPowerLimitationResIPC"}},
        {"refused",
         request,
         {answer + words(1), call, setting,
          "1 onSetFarEndPmaxCapability: onSetFarEndPmaxCapability(): failed: far end unknown, (eTI_E_FAILED)"},
         R"({"results":{"kro_top_api.criSetFarEndPmaxCapability":32768},
             "resultTexts":{"kro_top_api.criSetFarEndPmaxCapability":"far end unknown"}})"},
    };
    runAll(cases);
    expectOutOfRange("onFEPowerLimitationReq", "00300028", 10);
}

TEST_F(PowerControlOfTheUnit, AChannelThatTheUnitDoesNotHaveIsRefused)
{
    startInService(0, {.channels = 1});
    const std::string unknown = words(255, 255, 255, 255, 255, 255, 255, 255, 255, 255);
    const Exchange cases[] = {
        {"set",
         "00300031" + head(2) + words(0, 0, 0, -30, 1, 2),
         {toNode("00300026") + head(2) + words(1), missing("setRfPower", "ISystemPowerController_2")}},
        {"read",
         "00300023" + head(2),
         {toNode("00300024") + head(2) + words(0, 0), missing("onGetRfPowerReq", "IRadio_2")}},
        {"inventory",
         "00300021" + head(2),
         {toNode("00300022") + head(2) + words(2, 2, 255) + unknown + words(255, 2, 2),
          missing("onGetRauPowerInventoryReq", "IRadio_2")}},
    };
    runAll(cases);
}

TEST_P(PowerControl, NothingIsAppliedWhereAnInterfaceIsMissing)
{
    for (const std::string interface : {"IOutputPowerCalculator_$", "ITapsController_$"}) {
        startInService(0, {.state = R"({"interfaces":{")" + interface + R"(":false}})"});
        runOne(
            {interface, "00300031" + head(ct) + words(0, 0, 0, -30, 1, 2), {failed, missing("setRfPower", interface)}});
        runOne({"not needed", setRequest(0, 0, 0, -30), {done, applied("-3000", "0, 0, 0")}});
    }
}

} // namespace
