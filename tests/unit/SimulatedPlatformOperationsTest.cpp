#include "support/SimulatedPlatformFixture.h"

#include "Bsp.h"
#include "IAcmHandler.h"
#include "IFrequencyController.h"
#include "IHardwareConfigurationHandler.h"
#include "IIfLoopDriver.h"
#include "IOutputPowerCalculator.h"
#include "IRadio.h"
#include "IRadioCapability.h"
#include "IRlbspKroApi.h"
#include "ISystemPowerController.h"
#include "ITapsController.h"
#include "ITrafHandler.h"
#include "TrfMlm.h"
#include "kro_top_api.h"
#include "thread_utilities.h"

#include <algorithm>
#include <functional>
#include <future>
#include <string>
#include <vector>

namespace {

using simulated::Json;

constexpr RadioChannel channel1{1};
constexpr RadioChannel channel2{2};
constexpr RadioChannel channel3{3};

class SimulatedPlatformOperations : public SimulatedPlatformFixture {
protected:
    std::shared_ptr<IRadio> m_radio1 = find<IRadio>("IRadio_1");
};

TEST_F(SimulatedPlatformOperations, WhatIsSetIsInTheStateOfItsChannelInTheUnitGiven)
{
    const auto power = find<ISystemPowerController>("ISystemPowerController_2");
    const auto traffic = find<ITrafHandler>("ITrafHandler");
    struct Case {
        std::function<void()> call;
        std::string pointer;
        Json expected;
    };
    const std::vector<Case> cases{
        {[&] { m_radio1->setRfLoop(true); }, "/channels/1/radio/rfLoop", 1},
        {[&] { m_radio1->setActive(false); }, "/channels/1/radio/active", false},
        {[&] { m_radio1->selectSubBand(200); }, "/channels/1/radio/selectedSubBand", 200},
        {[&] { find<IIfLoopDriver>("IIfLoopDriver_2")->setIfLoop(true, 1); }, "/channels/2/ifLoop", true},
        {[&] { find<ITapsController>("ITapsController_1")->setTaps(true); }, "/channels/1/taps", true},
        {[&] { find<IOutputPowerCalculator>("IOutputPowerCalculator_1")->setHighPowerReduction(400); },
         "/channels/1/outputPower/highPowerReduction", 400},
        {[&] { power->setInputPowerThreshold(-3000); }, "/channels/2/systemPower/inputPowerThreshold", -3000},
        {[&] { power->setTransmitterOff(true, nullptr); }, "/channels/2/systemPower/transmitterOff", true},
        {[&] { power->setTransmitterOff(true, nullptr); }, "/channels/2/radio/transmitterState", 0},
        {[&] { power->notifyRequestedPowerSettings(false, 1, 2, 3, 0, 1); }, "/channels/2/radio/transmitterState", 1},
        {[&] { power->notifyRequestedPowerSettings(false, 1, 2, 3, 0, 1); },
         "/channels/2/systemPower",
         {{"referenceSec", 2},
          {"transmitterOff", false},
          {"atpcTarget", 1},
          {"minOutputPower", 2},
          {"maxOutputPower", 3},
          {"inputPowerThreshold", -3000}}},
        {[&] { traffic->enableTraffic(channel2, false); }, "/channels/2/trafficEnabled", false},
        {[&] { traffic->quiesceChannel(channel1, true); }, "/channels/1/quiesced", true},
        {[&] { TrfMlm_setTxMaxAcmLimit(1, 7); }, "/channels/2/txMaxAcmLimit", 7},
        {[&] { Bsp_setSlotId(4); }, "/unit/slotId", 4},
    };
    for (const Case& each : cases) {
        each.call();
        EXPECT_EQ(at(each.pointer), each.expected) << each.pointer;
    }
    std::int32_t target = 0;
    std::int32_t min = 0;
    std::int32_t max = 0;
    power->getRequestedAtpcTarget(target);
    power->getRequestedMinOutputPower(min);
    power->getRequestedMaxOutputPower(max);
    EXPECT_EQ(std::vector({target, min, max}), std::vector({1, 2, 3}));
}

TEST_F(SimulatedPlatformOperations, ANearEndConfigurationIsReadBackByEveryQuery)
{
    kro_top_api::CriSetRadioChannelNearEnd::Command command;
    command.radioChannel = channel2;
    command.radioFrameId = 9;
    command.minModulation = EModulationAndCodeType{40};
    command.maxModulation = EModulationAndCodeType{102};
    command.referenceSec = EReferenceSEC{1000};
    command.txFrequency = 4'000'000'000;
    command.rxFrequency = 5;
    EXPECT_EQ(kro_top_api::criSetRadioChannelNearEnd(command).m_errorIndicator, 0);

    std::uint32_t frameId = 0;
    EModulationAndCodeType min{};
    EModulationAndCodeType max{};
    EReferenceSEC sec{};
    find<IHardwareConfigurationHandler>("IHardwareConfigurationHandler")->getRadioFrameId(channel2, frameId);
    find<IAcmHandler>("IAcmHandler_2")->getMinMaxModulationAndCode(&min, &max);
    find<ISystemPowerController>("ISystemPowerController_2")->getReferenceSec(sec);
    const auto frequency = find<IFrequencyController>("IFrequencyController_2");
    EXPECT_EQ(frameId, 9U);
    EXPECT_EQ(min, 40);
    EXPECT_EQ(max, 102);
    EXPECT_EQ(sec, 1000);
    EXPECT_EQ(frequency->getTxFrequency(), 4'000'000'000);
    EXPECT_EQ(frequency->getRxFrequency(), 5U);
}

TEST_F(SimulatedPlatformOperations, AChannelThatTheUnitDoesNotHaveIsRefused)
{
    std::uint32_t frameId = 77;
    ITiDisableModulation::Reply reply;
    const Json before = m_platform.state();
    EXPECT_NE(find<ITrafHandler>("ITrafHandler")->enableTraffic(channel3, false), 0);
    EXPECT_TRUE(isFailure(
        find<IHardwareConfigurationHandler>("IHardwareConfigurationHandler")->getRadioFrameId(channel3, frameId)));
    EXPECT_TRUE(isFailure(m_platform.disableModulation().execute({3, 1, 1, 1}, reply).code));
    EXPECT_EQ(kro_top_api::criSetFarEndPmaxCapability({channel3, {}}).m_errorIndicator, 1);
    TrfMlm_setTxMaxAcmLimit(2147483647, 1);
    EXPECT_EQ(frameId, 77U);
    EXPECT_EQ(m_platform.state(), before);
}

TEST_F(SimulatedPlatformOperations, TextsOfTheFullWidthHaveNoTerminatingZero)
{
    m_platform.patchState(Json::parse(
        R"({"channels": {"1": {"radio": {"inventory": {"hwRevision": "0123456789abcdef", "swRevision": "ab"}}}}})"));
    RadioInventory inventory;
    inventory.swRevision.fill('#');
    m_radio1->getInventory(inventory);
    EXPECT_EQ(std::string(inventory.hwRevision.data(), 16), "0123456789abcdef");
    EXPECT_EQ(std::string(inventory.swRevision.data(), 16), "ab" + std::string(14, '\0'));
}

TEST_F(SimulatedPlatformOperations, AnInjectedResultReplacesEffectAndOutArguments)
{
    const auto traffic = find<ITrafHandler>("ITrafHandler");
    m_platform.patchState(Json::parse(R"({"results": {
        "IRadio_1.getTemperature": 0, "IRadio_1.setRfLoop": 32768, "IRadio_1.isRadioUp": 0,
        "ITrafHandler.enableTraffic": 4294967295, "IRadio_1.restart": 0, "InterfaceBroker.lookup": 0}})"));
    newCalls();

    std::int8_t temperature = 99;
    EXPECT_EQ(m_radio1->getTemperature(temperature), resultOk);
    EXPECT_EQ(temperature, 99);
    EXPECT_EQ(m_radio1->setRfLoop(true), resultFailed);
    EXPECT_EQ(m_radio1->setRfLoop(true), resultFailed);
    EXPECT_EQ(at("/channels/1/radio/rfLoop"), 0);
    EXPECT_FALSE(m_radio1->isRadioUp());
    EXPECT_EQ(traffic->enableTraffic(channel1, false), -1);
    EXPECT_EQ(InterfaceBroker::getInstance().lookup("IRadio_1"), nullptr);

    Json results = Json::array();
    for (const Json& call : newCalls()) {
        results.push_back(call["result"]);
    }
    EXPECT_EQ(results, Json::parse("[0, 32768, 32768, false, -1, false]"));
    EXPECT_EQ(at("/hits/results/IRadio_1.setRfLoop"), 2);
    EXPECT_EQ(at("/hits/results/IRadio_1.restart"), 0);

    m_platform.patchState({{"results", {{"IRadio_1.setRfLoop", 1}}}});
    EXPECT_EQ(at("/hits/results/IRadio_1.setRfLoop"), 0) << "setting it anew starts its count again";
    m_platform.patchState({{"results", {{"IRadio_1.setRfLoop", nullptr}}}});
    EXPECT_FALSE(at("/hits/results").contains("IRadio_1.setRfLoop"));
    EXPECT_EQ(m_radio1->setRfLoop(true), resultOk);
    EXPECT_EQ(at("/channels/1/radio/rfLoop"), 1);
}

TEST_F(SimulatedPlatformOperations, TopApiAnswersFollowTheirCodeUnlessSaidOtherwise)
{
    struct Case {
        std::string patch;
        Result code;
        std::int32_t indicator;
        std::string description;
    };
    const std::string name = R"("kro_top_api.criSetFarEndPmaxCapability": )";
    const std::vector<Case> cases{
        {"{}", resultOk, 0, ""},
        {R"({"results": {)" + name + "32767}}", 0x7FFF, 0, ""},
        {R"({"results": {)" + name + "32768}}", 0x8000, 1, ""},
        {R"({"errorIndicators": {)" + name + "-5}}", 0x8000, -5, ""},
        {R"({"results": {)" + name + R"(null}, "resultTexts": {)" + name + R"("all is well"}})", resultOk, -5,
         "all is well"},
    };
    for (const Case& each : cases) {
        m_platform.patchState(Json::parse(each.patch));
        const auto response = kro_top_api::criSetFarEndPmaxCapability({channel1, {}});
        EXPECT_EQ(response.m_resultCode, each.code) << each.patch;
        EXPECT_EQ(response.m_errorIndicator, each.indicator) << each.patch;
        EXPECT_EQ(response.m_description, each.description) << each.patch;
    }
    EXPECT_EQ(at("/hits/errorIndicators"), Json::parse("{" + name + "2}"));
    EXPECT_EQ(at("/hits/resultTexts"), Json::parse("{" + name + "1}"));
}

TEST_F(SimulatedPlatformOperations, CallsAreRecordedAsTheyWereMade)
{
    newCalls();
    ITiDisableModulation::Reply reply{0, 1};
    find<IRadio>("IRadio_1")->registerCallback(channel1, nullptr);
    find<ISystemPowerController>("ISystemPowerController_1")->setTransmitterOff(true, nullptr);
    const std::vector<std::uint8_t> response{0x00, 0xAB, 0x0F};
    find<IRlbspKroApi>("IRlbspKroApi")->sendBpmResponse(response);
    m_platform.disableModulation().execute({2, 1, 1, 1}, reply);
    kro_top_api::criSetFarEndPmaxCapability({channel1, {{EModulationAndCodeType{31}, 2500}}});
    kro_top_api::CriSetRadioChannelNearEnd::Command command;
    command.radioChannel = channel1;
    command.further.farEndName = "x";
    kro_top_api::criSetRadioChannelNearEnd(command);

    Json made = Json::array();
    for (Json call : newCalls()) {
        if (call["interface"] != "InterfaceBroker") {
            made.push_back({call["interface"], call["operation"], call["args"], call["result"]});
        }
    }
    EXPECT_EQ(made, Json::parse(R"([
        ["IRadio_1", "registerCallback", {"channel": 1, "callback": false}, null],
        ["ISystemPowerController_1", "setTransmitterOff", {"off": true, "pointerNull": true}, 0],
        ["IRlbspKroApi", "sendBpmResponse", {"response": "00ab0f"}, null],
        ["ITiDisableModulation", "execute",
         {"channel": 2, "byte1": 1, "disable": 1, "byte2": 1, "replyZero": false}, 0],
        ["kro_top_api", "criSetFarEndPmaxCapability", {"channel": 1, "pmax": [[31, 2500]]}, 0],
        ["kro_top_api", "criSetRadioChannelNearEnd", {"channel": 1, "radioFrameId": 0, "minModulation": 0,
         "maxModulation": 0, "referenceSec": 0, "txFrequency": 0, "rxFrequency": 0, "restDefault": false}, 0]
    ])"));
}

TEST_F(SimulatedPlatformOperations, TheRecordNamesTheThread)
{
    newCalls();
    std::promise<void> goOn;
    std::thread reader{[&] {
        goOn.get_future().wait();
        m_radio1->isRadioUp();
    }};
    os_extension::thread_utilities::setName(reader, "dm-vornipc-t-rx-too-long");
    goOn.set_value();
    reader.join();
    std::thread main{[&] {
        simulated::nameThisThread("main");
        m_radio1->isRadioUp();
    }};
    main.join();
    m_platform.runOnPlatformThread([&] { m_radio1->isRadioUp(); }).get();

    const Json calls = newCalls();
    ASSERT_EQ(calls.size(), 4U);
    EXPECT_EQ(calls[1]["thread"], "dm-vornipc-t-rx");
    EXPECT_EQ(calls[2]["thread"], "main");
    EXPECT_EQ(calls[3]["thread"], "platform-1");
}

TEST_F(SimulatedPlatformOperations, ADelayedCallIsUnderWayUntilThePlatformStops)
{
    m_platform.patchState({{"delaysMs", {{"IRadio_1.setRfLoop", 3'600'000}}}});
    newCalls();
    std::thread caller{[&] { m_radio1->setRfLoop(true); }};
    EXPECT_TRUE(comesTrue([&] { return !m_platform.calls(1)["calls"].empty(); }));
    EXPECT_FALSE(m_platform.calls(1)["calls"][0].contains("result"));
    EXPECT_EQ(at("/channels/1/radio/rfLoop"), 0) << "takes effect after the delay, and the state can be read meanwhile";

    m_platform.stop();
    caller.join();
    EXPECT_EQ(m_platform.calls(1)["calls"][0]["result"], 0);
    EXPECT_EQ(at("/channels/1/radio/rfLoop"), 1);
    EXPECT_EQ(at("/hits/delaysMs/IRadio_1.setRfLoop"), 1);
}

TEST_F(SimulatedPlatformOperations, OldRecordsAreDroppedAndCounted)
{
    const auto next = m_platform.calls(0)["next"].get<std::uint64_t>();
    for (int i = 0; i < 10'000; ++i) {
        m_radio1->isRadioUp();
    }
    const Json all = m_platform.calls(0);
    EXPECT_EQ(all["dropped"], next);
    EXPECT_EQ(all["calls"].size(), 10'000U);
    EXPECT_EQ(all["calls"][0]["seq"], next);
    EXPECT_EQ(all["next"], next + 10'000);
    EXPECT_FALSE(m_platform.calls(next).contains("dropped"));
    EXPECT_TRUE(m_platform.calls(next + 20'000)["calls"].empty());
}

TEST_F(SimulatedPlatformOperations, AFrameFormatIsFoundByTheDefaultOfItsInterface)
{
    const auto handler = find<IHardwareConfigurationHandler>("IHardwareConfigurationHandler");
    m_platform.patchState(Json::parse(R"({"frameFormats": [{"frameId": 4294967295, "modes": []},
        {"frameId": 5, "modes": [{"name": "64QAM", "capacity": 1000}]}]})"));
    newCalls();
    SRadioFrameItem item;
    EXPECT_EQ(handler->getFrameFormatItem(1, 5, item), resultOk);
    EXPECT_EQ(item.modes[0].name, "64QAM");
    EXPECT_EQ(item.modes[0].capacity, 1000);
    EXPECT_EQ(handler->getFrameFormatItem(1, static_cast<unsigned long>(-1), item), resultOk) << "one word is compared";
    EXPECT_EQ(handler->getFrameFormatItem(1, 6, item), resultUnknownObject);
    m_platform.patchState({{"results", {{"IHardwareConfigurationHandler.getFrameFormatList", 0x8003}}}});
    EXPECT_EQ(handler->getFrameFormatItem(1, 5, item), 0x8003U);
    m_platform.patchState({{"results", {{"IHardwareConfigurationHandler.getFrameFormatList", 0}}}});
    EXPECT_EQ(handler->getFrameFormatItem(1, 5, item), resultUnknownObject) << "success without a list";

    const Json calls = newCalls();
    EXPECT_EQ(calls.size(), 5U);
    EXPECT_TRUE(std::all_of(calls.begin(), calls.end(),
                            [](const Json& call) { return call["operation"] == "getFrameFormatList"; }));
}

TEST_F(SimulatedPlatformOperations, RefusedSchedulingLeavesATraceLineAndNothingElse)
{
    std::promise<void> end;
    std::thread thread{[&] { end.get_future().wait(); }};
    const auto next = m_platform.traceLines(0)["next"].get<std::uint64_t>();
    os_extension::thread_utilities::setScheduling(thread, 2, 1000); // no system has this priority
    end.set_value();
    thread.join();
    os_extension::thread_utilities::setScheduling(thread, 2, 30); // no such thread any more
    const Json lines = m_platform.traceLines(next)["lines"];
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0]["tag"], "PLATFORM");
    EXPECT_EQ(lines[0]["method"], "setScheduling");
}

} // namespace
