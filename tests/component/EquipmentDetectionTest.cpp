#include "support/ModuleTest.h"

#include <map>

namespace {

/// The channel's radio: no two of its values are alike, and it has texts of full width and none at all.
constexpr const char* remarkableRadio = R"({"channels":{"$":{
    "radio": {"inventory": {"productName": "12345678901234567890123456789012", "hwProductNumber": "HW 7",
        "hwRevision": "R1B", "serialNumber": "", "swProductNumber": "SW 8", "swRevision": "R2C",
        "resetType": 4026531841, "supplyVoltage": 4}},
    "channelPlan": {"frequencyBand": 23, "subBand": 5, "stepSize": 250, "rfBaseTxFrequency": 22000000,
        "rfBaseRxFrequency": 4294967295, "rfStepLimitLowTx": 11, "rfStepLimitHighTx": 12, "rfStepLimitLowRx": 13,
        "rfStepLimitHighRx": 14}, "rfLoopAvailable": true}}})";

std::string radioUpInSystemLog(std::int64_t number, std::int64_t ct)
{
    return toNode("00200012") + spontaneousHead(number, ct) + words(8, 0) +
           text("[RL_ADS] RAU CH: " + std::to_string(ct) + " - Radio Up", 160);
}

class EquipmentDetection : public ChannelTest {
protected:
    const std::function<void()> radioUp = [this] { EXPECT_TRUE(platform.radioUp(ct)); };

    std::string detected(std::int64_t number, std::int64_t rfLoop = 2, std::int64_t supplyVoltage = 1) const
    {
        return toNode("00200131") + spontaneousHead(number, ct) + text("12345678901234567890123456789012", 32) +
               text("HW 7", 22) + text("R1B", 16) + text("", 32) + text("SW 8", 22) + text("R2C", 16) +
               words(23, 5, 22000000, 4294967295, 11, 12, 250, 13, 14, 250, rfLoop, 4026531841, supplyVoltage);
    }
};

FOR_EACH_CHANNEL(EquipmentDetection);

class EquipmentDetectionOfTheUnit : public ModuleTest {};

const std::vector<std::string> queries{"IRadio_$.getInventory()", "IRadioCapability_$.getRfChannelPlan()",
                                       "IRadioCapability_$.getRfLoopCapability()"};
const std::string up = "3 radioUp: RadioUp for ct $calling notifyRadioDetected()";
const std::string enter = "6 notifyRadioDetected: ENTER notifyRadioDetected(radioChannelId=$)";
const std::string found = "3 notifyRadioDetected: RAU detected for channel $";

TEST_P(EquipmentDetection, IsToldOnceTheNodeCanTakeItAndTheUnitIsInService)
{
    start({.state = remarkableRadio});
    expectOutcome("no self test yet", radioUp,
                  {queries, up, enter, "5 notifyRadioDetected: ANS capabilities not received yet for ct $"});
    deliverAndSettle(selfTest(1, 0xFD));
    expectOutcome("a node that cannot take it", radioUp,
                  {queries, up, "1 notifyRadioDetected:  ANS is not capable of handling RauDetected1IPC for ct $"});
    module()->resetSelfTestCheckPerformed();
    deliverAndSettle(selfTest(1, 0x06));
    expectOutcome("gate closed", radioUp,
                  {queries, up,
                   "4 notifyRadioDetected: RauDetected1IPC for ct $ will not be sent to ANS since the MMU is "
                   "not yet in service"});

    const std::vector<std::string> inService{"Bsp.setSlotId(3)", "IAlarmHandler.setMmuInService(true)"};
    const std::string gateOpened = "3 onMMUState: MMU InService, outgoing PCI messages are enabled";
    runOne({"told when in service; the other channel has no radio",
            mmuState(1),
            {detected(0), radioUpInSystemLog(1, ct), inService, queries, gateOpened, enter, found}});
    expectOutcome("told again when it comes up again", radioUp,
                  {detected(2), radioUpInSystemLog(3, ct), queries, up, enter, found});

    platform.radioDown(ct);
    runOne({"a lost radio is not told of", mmuState(1), {inService, gateOpened}});
}

TEST_F(EquipmentDetectionOfTheUnit, BothRadiosAreToldOfEachWithItsOwn)
{
    start();
    deliverAndSettle(selfTest(1, 0x06));
    platform.radioUp(1);
    platform.radioUp(2);
    newlySent();
    deliverAndSettle(mmuState(1));
    const auto sent = newlySent();
    ASSERT_EQ(sent.size(), 4U);
    EXPECT_TRUE(sent[0].starts_with(toNode("00200131") + spontaneousHead(0, 1) + text("Simulated radio 18 GHz", 32)));
    EXPECT_EQ(sent[1], radioUpInSystemLog(1, 1));
    EXPECT_TRUE(sent[2].starts_with(toNode("00200131") + spontaneousHead(2, 2) + text("Simulated radio 23 GHz", 32)));
    EXPECT_EQ(sent[3], radioUpInSystemLog(3, 2));
}

TEST_P(EquipmentDetection, TextsEndAtTheirZeroOrTheirWidth)
{
    startInService(0x02, {.state = remarkableRadio});
    const std::string full(32, 'x');
    for (const std::string& given : {full, full.substr(1), std::string("ab\0", 3) + full}) {
        std::string sent;
        std::vector<std::string> lines;
        const std::pair<const char*, std::size_t> fields[] = {{"productName", 32},     {"hwProductNumber", 22},
                                                              {"hwRevision", 16},      {"serialNumber", 32},
                                                              {"swProductNumber", 22}, {"swRevision", 16}};
        for (const auto& [name, width] : fields) { // each in its own width, so that it meets the next one's text
            const std::string in = given.substr(0, width - (given.size() == 31 ? 1 : 0));
            const std::string out = in.substr(0, in.find('\0'));
            platform.patchState({{"channels", {{std::to_string(ct), {{"radio", {{"inventory", {{name, in}}}}}}}}}});
            sent += text(out, width);
            lines.push_back(std::string("6 notifyRadioDetected: ") + name + " = " + out);
        }
        newlySent();
        newTrace();
        radioUp();
        EXPECT_EQ(newlySent().at(0).substr(64, sent.size()), sent);
        auto trace = newTrace(lines);
        std::erase_if(trace, [](const std::string& line) { return !line.starts_with("6 "); });
        EXPECT_EQ(trace, lines);
    }
}

TEST_P(EquipmentDetection, TranslatesLoopAndSupplyVoltage)
{
    startInService(0x02, {.state = remarkableRadio});
    const struct {
        int platformVoltage;
        std::int64_t sent;
    } voltages[] = {{0, 0}, {1, 2}, {2, 3}, {3, 4}, {4, 1}, {5, 0}, {255, 0}};
    std::int64_t number = 0;
    for (const auto& [platformVoltage, sent] : voltages) {
        patch(R"({"channels":{"$":{"radio":{"inventory":{"supplyVoltage":)" + std::to_string(platformVoltage) +
              "}}}}}");
        expectOutcome("supply voltage " + std::to_string(platformVoltage), radioUp,
                      {detected(number++, 2, sent), queries, up, found});
    }
    patch(R"({"channels":{"$":{"rfLoopAvailable":false}}})");
    expectOutcome("no RF loop", radioUp, {detected(number, 3, 0), queries, up, found});
}

TEST_P(EquipmentDetection, FailingQueriesSendZeros)
{
    startInService(0x02);
    patch(R"({"results":{"IRadio_$.getInventory":32768,"IRadioCapability_$.getRfChannelPlan":32768,
        "IRadioCapability_$.getRfLoopCapability":32768}})");
    expectOutcome("all queries fail", radioUp,
                  {toNode("00200131") + spontaneousHead(0, ct) + zeros(180) + words(3, 0, 0), queries, up, found});
}

TEST_P(EquipmentDetection, StopsWhereTheModelHasNoChannelPlan)
{
    startInService(0x06, {.state = R"({"interfaces":{"IFrequencyController_$":false}})"});
    expectOutcome("model not initialised", radioUp,
                  {queries, up, "1 notifyRadioDetected:  Error in call to onRfChannelPlanReceived() for ct $"});
}

TEST_P(EquipmentDetection, PassesTheSystemLogToANodeThatTakesIt)
{
    start();
    const auto available = [this] { EXPECT_TRUE(platform.radioCapabilitiesAvailable(ct)); };
    const std::string got =
        "4 radioCapabilitiesAvailable: [CT$] radioCapabilitiesAvailable(): Got inventory from the radio";
    expectOutcome("no self test yet", available,
                  {got, "5 radioCapabilitiesAvailable: ANS capabilities not received yet for ct $"});
    deliver(selfTest(1, 0xFB & ~0x80));
    deliverAndSettle(mmuState(1));
    expectOutcome("not capable", available,
                  {got, "3 radioCapabilitiesAvailable: [CT$] radioCapabilitiesAvailable(): ANS is not capable of "
                        "handling RLaprintExtIPC"});
    module()->resetSelfTestCheckPerformed();
    deliverAndSettle(selfTest(1, 0x04));
    expectOutcome(
        "capable; the line names no channel", available,
        {toNode("00200012") + spontaneousHead(0, 0) + words(8, 0) + text("[RL_ADS] Got inventory from the radio", 160),
         got});
}

TEST_P(EquipmentDetection, TellsTheRadiosCompatibilityCodes)
{
    startInService(0, {.state = R"({"channels":{"$":{"radio":{
        "compatibilityCodes":[1,2,3,4,5,6,7,8,9,10,11,4294967295]}}}})"});
    const std::string request = "00200056" + head(ct) + repeated(0x44, 48);
    const std::string answer = toNode("00200057") + head(ct);
    const std::vector<std::string> queried{"IRadio_$.getCompatibilityCodes()"};
    const Exchange cases[] = {
        {"the channel's",
         request,
         {answer + words(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 4294967295), queried,
          "5 onGetRAUCapabilityReq: called (id: 0x200056)", "6 onGetRAUCapabilityReq: Received: GetRAUCapabilityReqIPC",
          "6 onGetRAUCapabilityReq: Respond with: GetRAUCapabilityResIPC"}},
        {"the query fails",
         request,
         {answer + zeros(48), queried},
         R"({"results":{"IRadio_$.getCompatibilityCodes":32768}})"},
    };
    runAll(cases);
    expectForWrongChannels("00200056", zeros(48), "00200057", zeros(48),
                           "1 onGetRAUCapabilityReq:  Incorrect ct number # ()");
}

TEST_P(EquipmentDetection, TellsAtMost101SubBands)
{
    startInService();
    const std::string request = "00200123" + head(ct);
    const std::string answer = toNode("00200124") + head(ct);
    const auto subBands = [](unsigned count) {
        std::string list;
        for (unsigned i = 0; i < count; ++i) {
            list += (i == 0 ? "" : ",") + std::to_string(255 - i);
        }
        return R"({"channels":{"$":{"radio":{"subBands":[)" + list + "]}}}}";
    };
    const auto firstWords = [](unsigned count) {
        std::string list;
        for (unsigned i = 0; i < count; ++i) {
            list += word(255 - i);
        }
        return list;
    };
    const std::vector<std::string> queried{"IRadio_$.getSupportedSubBands()"};
    const Exchange cases[] = {
        {"those of the radio",
         request,
         {answer + ofChannel(words(3, 1, 2, 3) + zeroWords(98), words(4, 6, 5, 4, 9) + zeroWords(97)), queried}},
        {"3",
         request,
         {answer + words(3) + firstWords(3) + zeroWords(98), queried,
          "5 onGetRAUIndexCapabilitiesReq: called (id: 0x200123)",
          "6 onGetRAUIndexCapabilitiesReq: Respond with: GetRAUIndexCapabilitiesResIPC"},
         subBands(3)},
        {"none", request, {answer + zeroWords(102), queried}, subBands(0)},
        {"101", request, {answer + words(101) + firstWords(101), queried}, subBands(101)},
        {"120", request, {answer + words(101) + firstWords(101), queried}, subBands(120)},
        {"the query fails",
         request,
         {answer + zeroWords(102), queried},
         R"({"results":{"IRadio_$.getSupportedSubBands":32768}})"},
    };
    runAll(cases);
    expectForWrongChannels("00200123", "", "00200124", zeroWords(102),
                           "1 onGetRAUIndexCapabilitiesReq: Incorrect ct number # ()");
}

TEST_P(EquipmentDetection, SelectsASubBandByItsLowByte)
{
    startInService();
    const auto request = [this](std::int64_t subBand) { return "00200125" + head(ct) + words(subBand); };
    const std::string done = toNode("00200126") + head(ct) + words(0);
    const std::string failed = toNode("00200126") + head(ct) + words(1);
    const Exchange cases[] = {
        {"done",
         request(7),
         {done, "IRadio_$.selectSubBand(7)", "5 onSetRAUIndexCapabilitiesReq: called (id: 0x200125)",
          "5 onSetRAUIndexCapabilitiesReq: RAU subband request is: 7"}},
        {"cut to a byte",
         request(0x1FE),
         {done, "IRadio_$.selectSubBand(254)", "5 onSetRAUIndexCapabilitiesReq: RAU subband request is: 510"}},
        {"refused by the radio",
         request(7),
         {failed, "IRadio_$.selectSubBand(7)", "5 onSetRAUIndexCapabilitiesReq: RAU subband request is: 7"},
         R"({"results":{"IRadio_$.selectSubBand":32768}})"},
        {"a warning is no refusal",
         request(7),
         {done, "IRadio_$.selectSubBand(7)"},
         R"({"results":{"IRadio_$.selectSubBand":32767}})"},
    };
    runAll(cases);
    expectForWrongChannels("00200125", words(7), "00200126", words(0),
                           "1 onSetRAUIndexCapabilitiesReq:  Incorrect ct number # ()");
}

TEST_F(EquipmentDetectionOfTheUnit, CapacitiesStandAtTheNodesNumbersOfModulations)
{
    start();
    const auto mode = [](const std::string& name, int capacity) {
        return R"({"name":")" + name + R"(","capacity":)" + std::to_string(capacity) + "}";
    };
    std::string many;
    for (int i = 0; i < 16; ++i) {
        many += mode("4QAM", i + 1) + ",";
    }
    const std::string query = "IHardwareConfigurationHandler.getFrameFormatList(1)";
    const std::string failed = "1 getAcmCapacities: failed to get capacities for frameId=";
    constexpr int untouched = -1;
    const struct {
        std::string name;
        std::string modes; ///< of frame format 7
        int frameId;
        std::map<int, int> capacities; ///< by the node's number
        Outcome outcome;
        std::string given = "{}";
    } cases[] = {
        {"the first, one in the middle, the last",
         mode("4096QAM_LIGHT", 3) + "," + mode("64QAM", 1000) + "," + mode("4QAM_STRONG", -2),
         7,
         {{1, -2}, {11, 1000}, {30, 3}},
         {query}},
        {"a name that no modulation has is left out",
         mode("16QAM", 5) + "," + mode("17QAM", 6) + "," + mode("32QAM_STRONG", 7),
         7,
         {{5, 5}, {7, 7}},
         {query, "1 getAcmCapacities:  failed to find a mapping for modulation 17QAM"}},
        {"the filter knows the frame format and the position",
         mode("16QAM", 5) + "," + mode("32QAM", 707) + "," + mode("64QAM", 7),
         7,
         {{5, 5}, {11, 7}},
         {query}},
        {"a mode without capacity ends the list",
         mode("16QAM", 5) + "," + mode("", 0) + "," + mode("64QAM", 7),
         7,
         {{5, 5}},
         {query}},
        {"a 17th mode is none of the node's", many + mode("16QAM", 17), 7, {{2, 16}}, {query}},
        {"frame format 0", "", 0, {}, {"5 getAcmCapacities:  acm capabilities will not be fetched for frameId = 0"}},
        {"a frame format that is not there", "", 8, {}, {query, failed + "8"}},
        {"below 0", "", -1, {}, {query, failed + "-1"}},
        {"the query fails",
         mode("16QAM", 5),
         7,
         {},
         {query, failed + "7"},
         R"({"results":{"IHardwareConfigurationHandler.getFrameFormatList":32768}})"},
    };
    for (const auto& [name, modes, frameId, capacities, outcome, given] : cases) {
        patch(R"({"frameFormats":[{"frameId":1,"modes":[]},{"frameId":7,"modes":[)" + modes + "]}]}");
        patch(given);
        std::vector<int> expected(30, untouched);
        for (const auto& [number, capacity] : capacities) {
            expected[static_cast<std::size_t>(number - 1)] = capacity;
        }
        std::vector<int> actual(30, untouched);
        const auto filter = [](const SRadioFrameItem& item, unsigned index) {
            return item.frameId == 7 && item.modes.at(index).capacity != 707;
        };
        expectOutcome(
            name, [&, id = frameId] { module()->getAcmCapacities(id, actual.data(), filter); }, outcome);
        EXPECT_EQ(actual, expected) << name;
        endInjections();
    }
}

} // namespace
