#include "support/ModuleTest.h"

#include <map>

namespace {

/// A radio in which no two values are alike, with texts of full width and none at all.
constexpr const char* remarkableRadio = R"({"channels":{"2":{
    "radio": {"inventory": {"productName": "12345678901234567890123456789012", "hwProductNumber": "HW 7",
        "hwRevision": "R1B", "serialNumber": "", "swProductNumber": "SW 8", "swRevision": "R2C",
        "resetType": 4026531841, "supplyVoltage": 4}},
    "channelPlan": {"frequencyBand": 23, "subBand": 5, "stepSize": 250, "rfBaseTxFrequency": 22000000,
        "rfBaseRxFrequency": 4294967295, "rfStepLimitLowTx": 11, "rfStepLimitHighTx": 12, "rfStepLimitLowRx": 13,
        "rfStepLimitHighRx": 14}}}})";

std::string detected(std::int64_t number, std::int64_t rfLoop = 2, std::int64_t supplyVoltage = 1)
{
    return toNode("00200131") + spontaneousHead(number, 2) + text("12345678901234567890123456789012", 32) +
           text("HW 7", 22) + text("R1B", 16) + text("", 32) + text("SW 8", 22) + text("R2C", 16) +
           words(23, 5, 22000000, 4294967295, 11, 12, 250, 13, 14, 250, rfLoop, 4026531841, supplyVoltage);
}

std::string radioUpInSystemLog(std::int64_t number)
{
    return toNode("00200012") + spontaneousHead(number, 2) + words(8, 0) + text("[RL_ADS] RAU CH: 2 - Radio Up", 160);
}

class EquipmentDetection : public ModuleTest {
protected:
    std::function<void()> radioUp(std::int32_t ct)
    {
        return [this, ct] { EXPECT_TRUE(platform.radioUp(ct)); };
    }

    static std::string up(int ct)
    {
        return "3 radioUp: RadioUp for ct " + std::to_string(ct) + "calling notifyRadioDetected()";
    }
};

const std::vector<std::string> queries{"IRadio_2.getInventory()", "IRadioCapability_2.getRfChannelPlan()",
                                       "IRadioCapability_2.getRfLoopCapability()"};
const std::string enter = "6 notifyRadioDetected: ENTER notifyRadioDetected(radioChannelId=2)";
const std::string found = "3 notifyRadioDetected: RAU detected for channel 2";

TEST_F(EquipmentDetection, IsToldOnceTheNodeCanTakeItAndTheUnitIsInService)
{
    start({.state = remarkableRadio});
    expectOutcome("no self test yet", radioUp(2),
                  {queries, up(2), enter, "5 notifyRadioDetected: ANS capabilities not received yet for ct 2"});
    deliver(selfTest(1, 0xFD));
    settle();
    expectOutcome("a node that cannot take it", radioUp(2),
                  {queries, up(2), "1 notifyRadioDetected:  ANS is not capable of handling RauDetected1IPC for ct 2"});
    module()->resetSelfTestCheckPerformed();
    deliver(selfTest(1, 0x06));
    settle();
    expectOutcome("gate closed", radioUp(2),
                  {queries, up(2),
                   "4 notifyRadioDetected: RauDetected1IPC for ct 2 will not be sent to ANS since the MMU is "
                   "not yet in service"});

    const std::vector<std::string> inService{"Bsp.setSlotId(3)", "IAlarmHandler.setMmuInService(true)"};
    const std::string gateOpened = "3 onMMUState: MMU InService, outgoing PCI messages are enabled";
    const Exchange told{"told when in service; channel 1 has no radio",
                        mmuState(1),
                        {detected(0), radioUpInSystemLog(1), inService, queries, gateOpened,
                         "6 notifyRadioDetected: ENTER notifyRadioDetected(radioChannelId=1)", enter, found}};
    runAll({&told, 1});
    expectOutcome("told again when it comes up again", radioUp(2),
                  {detected(2), radioUpInSystemLog(3), queries, up(2), enter, found});

    platform.radioDown(2);
    const Exchange notTold{"a lost radio is not told of", mmuState(1), {inService, gateOpened}};
    runAll({&notTold, 1});
}

TEST_F(EquipmentDetection, ShowsTheRadioInTheTrace)
{
    startInService(0x02, {.state = remarkableRadio});
    std::vector<std::string> fields;
    for (const char* field : {"*********notifyRadioDetected() DATA BEGIN *********",
                              "productName = 12345678901234567890123456789012",
                              "hwProductNumber = HW 7",
                              "hwRevision = R1B",
                              "serialNumber = ",
                              "swProductNumber = SW 8",
                              "swRevision = R2C",
                              "frequencyBand = 23",
                              "subBand = 5",
                              "rfBaseTxFrequency = 22000000",
                              "rfBaseRxFrequency = 4294967295",
                              "rfStepLimitLowTx = 11",
                              "rfStepLimitHighTx = 12",
                              "rfStepSizeTx = 250",
                              "rfStepLimitLowRx = 13",
                              "rfStepLimitHighRx = 14",
                              "rfStepSizeRx = 250",
                              "rfLoopAvailable = 1",
                              "resetType = 4026531841",
                              "supplyVoltage = 1",
                              "*********notifyRadioDetected() DATA END *********"}) {
        fields.push_back(std::string("6 notifyRadioDetected: ") + field);
    }
    expectOutcome("all fields", radioUp(2), {detected(0), queries, up(2), fields, found});
}

TEST_F(EquipmentDetection, TranslatesLoopAndSupplyVoltage)
{
    startInService(0x02, {.state = remarkableRadio});
    const struct {
        int platformVoltage;
        std::int64_t sent;
    } voltages[] = {{0, 0}, {1, 2}, {2, 3}, {3, 4}, {4, 1}, {5, 0}, {255, 0}};
    std::int64_t number = 0;
    for (const auto& [platformVoltage, sent] : voltages) {
        platform.patchState(
            {{"channels", {{"2", {{"radio", {{"inventory", {{"supplyVoltage", platformVoltage}}}}}}}}}});
        expectOutcome("supply voltage " + std::to_string(platformVoltage), radioUp(2),
                      {detected(number++, 2, sent), queries, up(2), found});
    }
    patch(R"({"channels":{"2":{"rfLoopAvailable":false}}})");
    expectOutcome("no RF loop", radioUp(2), {detected(number, 3, 0), queries, up(2), found});
}

TEST_F(EquipmentDetection, FailingQueriesSendZeros)
{
    startInService(0x02);
    patch(R"({"results":{"IRadio_2.getInventory":32768,"IRadioCapability_2.getRfChannelPlan":32768,
        "IRadioCapability_2.getRfLoopCapability":32768}})");
    expectOutcome("all queries fail", radioUp(2),
                  {toNode("00200131") + spontaneousHead(0, 2) + zeros(180) + words(3, 0, 0), queries, up(2), found});
}

TEST_F(EquipmentDetection, StopsWhereTheModelHasNoChannelPlan)
{
    startInService(0x06, {.state = R"({"interfaces":{"IFrequencyController_1":false}})"});
    expectOutcome("model not initialised", radioUp(2),
                  {queries, up(2), "1 notifyRadioDetected:  Error in call to onRfChannelPlanReceived() for ct 2"});
}

TEST_F(EquipmentDetection, PassesTheSystemLogToANodeThatTakesIt)
{
    start();
    const auto available = [this](std::int32_t ct) {
        return [this, ct] { EXPECT_TRUE(platform.radioCapabilitiesAvailable(ct)); };
    };
    const std::string got =
        "4 radioCapabilitiesAvailable: [CT2] radioCapabilitiesAvailable(): Got inventory from the radio";
    expectOutcome("no self test yet", available(2),
                  {got, "5 radioCapabilitiesAvailable: ANS capabilities not received yet for ct 2"});
    deliver(selfTest(1, 0xFB & ~0x80));
    deliver(mmuState(1));
    settle();
    expectOutcome("not capable", available(2),
                  {got, "3 radioCapabilitiesAvailable: [CT2] radioCapabilitiesAvailable(): ANS is not capable of "
                        "handling RLaprintExtIPC"});
    module()->resetSelfTestCheckPerformed();
    deliver(selfTest(1, 0x04));
    settle();
    expectOutcome(
        "capable; the line names no channel", available(2),
        {toNode("00200012") + spontaneousHead(0, 0) + words(8, 0) + text("[RL_ADS] Got inventory from the radio", 160),
         got});
}

TEST_F(EquipmentDetection, OutputPowerNotificationsAreNotForTheNode)
{
    startInService(0xFF & ~0x80);
    expectOutcome("ignored", [&] { EXPECT_TRUE(platform.radioOutputPowerNotification(1, 20)); }, {});
}

TEST_F(EquipmentDetection, TellsTheRadiosCompatibilityCodes)
{
    startInService(0, {.state = R"({"channels":{"1":{"radio":{
        "compatibilityCodes":[1,2,3,4,5,6,7,8,9,10,11,4294967295]}}}})"});
    const auto request = [](std::int64_t ct) { return "00200056" + head(ct) + repeated(0x44, 48); };
    const auto answer = [](std::int64_t ct, const std::string& codes) { return toNode("00200057") + head(ct) + codes; };
    const auto incorrect = [](const std::string& ct) {
        return "1 onGetRAUCapabilityReq:  Incorrect ct number " + ct + " ()";
    };
    const std::vector<std::string> queried{"IRadio_1.getCompatibilityCodes()"};
    const Exchange cases[] = {
        {"channel 1",
         request(1),
         {answer(1, words(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 4294967295)), queried,
          "5 onGetRAUCapabilityReq: called (id: 0x200056)", "6 onGetRAUCapabilityReq: Received: GetRAUCapabilityReqIPC",
          "6 onGetRAUCapabilityReq: Respond with: GetRAUCapabilityResIPC"}},
        {"the query fails",
         request(1),
         {answer(1, zeros(48)), queried},
         R"({"results":{"IRadio_1.getCompatibilityCodes":32768}})"},
        {"channel 0", request(0), {answer(0, zeros(48)), incorrect("0")}},
        {"channel 3", request(3), {answer(3, zeros(48)), incorrect("3")}},
        {"no channel at all", request(4294967295), {answer(4294967295, zeros(48)), incorrect("4294967295")}},
    };
    runAll(cases);
}

TEST_F(EquipmentDetection, TellsAtMost101SubBands)
{
    startInService();
    const auto request = [](std::int64_t ct) { return "00200123" + head(ct); };
    const auto answer = [](std::int64_t ct, const std::string& body) { return toNode("00200124") + head(ct) + body; };
    const auto subBands = [](unsigned count) {
        std::string list;
        for (unsigned i = 0; i < count; ++i) {
            list += (i == 0 ? "" : ",") + std::to_string(255 - i);
        }
        return R"({"channels":{"2":{"radio":{"subBands":[)" + list + "]}}}}";
    };
    const auto firstWords = [](unsigned count) {
        std::string list;
        for (unsigned i = 0; i < count; ++i) {
            list += word(255 - i);
        }
        return list;
    };
    const std::vector<std::string> queried{"IRadio_2.getSupportedSubBands()"};
    const auto incorrect = [](const std::string& ct) {
        return "1 onGetRAUIndexCapabilitiesReq: Incorrect ct number " + ct + " ()";
    };
    const Exchange cases[] = {
        {"3",
         request(2),
         {answer(2, words(3) + firstWords(3) + zeroWords(98)), queried,
          "5 onGetRAUIndexCapabilitiesReq: called (id: 0x200123)",
          "6 onGetRAUIndexCapabilitiesReq: Respond with: GetRAUIndexCapabilitiesResIPC"},
         subBands(3)},
        {"none", request(2), {answer(2, zeroWords(102)), queried}, subBands(0)},
        {"101", request(2), {answer(2, words(101) + firstWords(101)), queried}, subBands(101)},
        {"120", request(2), {answer(2, words(101) + firstWords(101)), queried}, subBands(120)},
        {"the query fails",
         request(2),
         {answer(2, zeroWords(102)), queried},
         R"({"results":{"IRadio_2.getSupportedSubBands":32768}})"},
        {"channel 0", request(0), {answer(0, zeroWords(102)), incorrect("0")}},
        {"channel 3", request(3), {answer(3, zeroWords(102)), incorrect("3")}},
    };
    runAll(cases);
}

TEST_F(EquipmentDetection, SelectsASubBandByItsLowByte)
{
    startInService();
    const auto request = [](std::int64_t ct, std::int64_t subBand) { return "00200125" + head(ct) + words(subBand); };
    const auto answer = [](std::int64_t ct, std::int64_t result) {
        return toNode("00200126") + head(ct) + words(result);
    };
    const Exchange cases[] = {
        {"done",
         request(1, 7),
         {answer(1, 0), "IRadio_1.selectSubBand(7)", "5 onSetRAUIndexCapabilitiesReq: called (id: 0x200125)",
          "5 onSetRAUIndexCapabilitiesReq: RAU subband request is: 7"}},
        {"cut to a byte",
         request(2, 0x1FE),
         {answer(2, 0), "IRadio_2.selectSubBand(254)", "5 onSetRAUIndexCapabilitiesReq: RAU subband request is: 510"}},
        {"refused by the radio",
         request(1, 7),
         {answer(1, 1), "IRadio_1.selectSubBand(7)", "5 onSetRAUIndexCapabilitiesReq: RAU subband request is: 7"},
         R"({"results":{"IRadio_1.selectSubBand":32768}})"},
        {"a warning is no refusal",
         request(1, 7),
         {answer(1, 0), "IRadio_1.selectSubBand(7)"},
         R"({"results":{"IRadio_1.selectSubBand":32767}})"},
        {"channel 3 is answered with done",
         request(3, 7),
         {answer(3, 0), "1 onSetRAUIndexCapabilitiesReq:  Incorrect ct number 3 ()"}},
        {"channel 0", request(0, 7), {answer(0, 0), "1 onSetRAUIndexCapabilitiesReq:  Incorrect ct number 0 ()"}},
    };
    runAll(cases);
}

TEST_F(EquipmentDetection, CapacitiesStandAtTheNodesNumbersOfModulations)
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
