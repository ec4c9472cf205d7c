#include "support/ModuleTest.h"

#include <algorithm>
#include <atomic>

using namespace std::chrono_literals;

namespace {

class Lifecycle : public ModuleTest {
protected:
    std::vector<std::string> errors()
    {
        auto lines = newTrace();
        std::erase_if(lines, [](const std::string& line) { return !line.starts_with("1 "); });
        return lines;
    }
};

class LifecycleOfChannel : public ChannelTest {};

FOR_EACH_CHANNEL(LifecycleOfChannel);

std::string lookup(const std::string& name)
{
    return "InterfaceBroker.lookup(" + name + ")";
}

/// What the module's parts look up and register, part by part.
/// @param channels          channels of the model and of most handlers
/// @param equipmentChannels channels of the equipment handler
std::vector<std::string> initialisation(int channels, int equipmentChannels)
{
    std::vector<std::string> calls{lookup("IHardwareConfigurationHandler")};
    const auto lookUpOfChannels = [&calls, channels](std::initializer_list<const char*> names) {
        for (int ct = 1; ct <= channels; ++ct) {
            for (const char* name : names) {
                calls.push_back(lookup(name + std::to_string(ct)));
            }
        }
    };
    lookUpOfChannels({"IAcmHandler_", "ISystemPowerController_", "IFrequencyController_", "IOutputPowerCalculator_"});
    for (const char* name : {"IAlarmHandler", "ITrafHandler", "IHardwareConfigurationHandler", "IRlbspKroApi"}) {
        calls.push_back(lookup(name));
    }
    calls.emplace_back("IRlbspKroApi.registerBpmCallback(true)");
    for (int channel = 1; channel <= equipmentChannels; ++channel) {
        const std::string ct = std::to_string(channel);
        calls.push_back(lookup("IRadio_" + ct));
        calls.push_back("IRadio_" + ct + ".registerCallback(" + ct + ", true)");
        for (const char* name : {"IRadioCapability_", "IDspApi_", "IAcmHandler_"}) {
            calls.push_back(lookup(name + ct));
        }
    }
    lookUpOfChannels({"IIfLoopDriver_", "IRadio_", "ISystemPowerController_"});
    calls.push_back(lookup("ITrafHandler"));
    lookUpOfChannels({"IRadio_", "ISystemPowerController_", "IOutputPowerCalculator_", "ITapsController_"});
    calls.push_back(lookup("IAlarmHandler"));
    calls.emplace_back("IAlarmHandler.registerFaultCallback(true)");
    return calls;
}

TEST_F(Lifecycle, StartsTheLinkThenRegistersThenLooksUp)
{
    start();
    std::vector<std::string> expected{"ripc.hijack_register_receive_callback()",
                                      "thread_utilities.setScheduling(2, 30)",
                                      "thread_utilities.setName(dm-vornipc-t-rx)",
                                      "CModuleManager.RegisterModule(113000, VornipcAdapter, 100, 0, [11])"};
    const auto partByPart = initialisation(2, 2);
    expected.insert(expected.end(), partByPart.begin(), partByPart.end());
    EXPECT_EQ(newCalls(true), expected);
    EXPECT_EQ(newTrace(), (std::vector<std::string>{"4 VornipcMessageHandler: Initialize with mmuip 127.0.0.1",
                                                    "3 startReadThread: Created VORNIPC thread dm-vornipc-t-rx (T)"}));
    EXPECT_EQ(module()->linkFacts().reader, VornipcLinkFacts::Reader::running);

    deliverAndSettle("00200019" + head(0));
    for (const auto& call : allCalls()) {
        EXPECT_EQ(call["thread"], call["operation"] == "notifyNodeRestart" ? "dm-vornipc-t-rx" : "main");
    }
}

TEST_F(Lifecycle, ServesOneOrTwoChannels)
{
    const struct {
        unsigned char count;
        int channels;
        int equipmentChannels;
    } cases[] = {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {3, 2, 0}, {255, 2, 0}};
    for (const auto& [count, channels, equipmentChannels] : cases) {
        SCOPED_TRACE(static_cast<int>(count));
        start({.moduleChannels = count});
        auto calls = newCalls();
        calls.erase(calls.begin(), std::find(calls.begin(), calls.end(), lookup("IHardwareConfigurationHandler")));
        EXPECT_EQ(calls, initialisation(channels, equipmentChannels));
        std::vector<std::string> tooMany;
        for (const std::string name :
             {"TrafficHandler", "PowerControlHandler", "AlarmSignalHandler", "DevPsRlpsHandler"}) {
            tooMany.push_back("1 " + name + ": " + name + "(): Number of channels " + std::to_string(count) +
                              " is larger than maximum number of channels 2");
        }
        EXPECT_EQ(errors(), count > 2 ? tooMany : std::vector<std::string>{});

        EXPECT_EQ(module()->linkFacts().channels, count);
        deliver(selfTest(1, 0x26));
        deliverAndSettle(mmuState(1));
        EXPECT_EQ(platform.radioUp(2), equipmentChannels == 2);
        EXPECT_EQ(platform.bpmCommand({1}), 0);
        newTrace();
        deliverAndSettle("00200056" + head(2) + zeros(48));
        const std::vector<std::string> refused{
            "1 onGetRAUCapabilityReq: onGetRAUCapabilityReq(): IRadio_2 was not found "
            "at the start, it was not called"};
        EXPECT_EQ(errors(), equipmentChannels == 2 ? std::vector<std::string>{} : refused);
        EXPECT_TRUE(answersSelfTest());
    }
}

TEST_F(Lifecycle, AMissingInterfaceIsNamedAtStart)
{
    const std::string inModel = "1 onModuleInit: onModuleInit():  Error getting interface to ";
    const std::string named = "1 onModuleInit: onModuleInit(): Error getting interface to ";
    const std::string plain = "1 onModuleInit: Error getting interface to ";
    const std::string withBlank = "1 onModuleInit:  Error getting interface to ";
    const struct {
        std::string missing;
        std::vector<std::string> errors; ///< begin of each line, in the order of the parts
    } cases[] = {
        {"IAlarmHandler", {withBlank, named}},
        {"ITrafHandler",
         {"1 onModuleInit: failed to get interface to", "1 onModuleInit: onModuleInit(): failed to get interface to"}},
        {"IHardwareConfigurationHandler", {inModel, plain}},
        {"IRlbspKroApi", {"1 onModuleInit:  failed to get interface to"}},
        {"IRadio_1", {withBlank, named, named}},
        {"IRadio_2", {withBlank, named, named}},
        {"IRadioCapability_2", {withBlank}},
        {"IDspApi_1", {withBlank}},
        {"IAcmHandler_2", {named, plain}},
        {"ISystemPowerController_1", {inModel, named, named}},
        {"IFrequencyController_2", {inModel}},
        {"IOutputPowerCalculator_1", {inModel, named}},
        {"IIfLoopDriver_2", {named}},
        {"ITapsController_1", {named}},
    };
    for (auto [missing, expected] : cases) {
        SCOPED_TRACE(missing);
        start({.state = R"({"interfaces":{")" + missing + R"(":false}})"});
        for (std::string& line : expected) {
            line += missing;
        }
        EXPECT_EQ(errors(), expected);
        EXPECT_TRUE(answersSelfTest());
    }
}

TEST_P(LifecycleOfChannel, RequestsRefuseARadioThatIsMissing)
{
    startInService(0, {.state = R"({"interfaces":{"IRadio_$":false}})"});
    const Exchange cases[] = {
        {"status",
         "00200020" + head(ct),
         {toNode("00200021") + head(ct) + words(0), missing("onRauStatusReq", "IRadio_$")}},
        {"default configuration",
         "00200022" + head(ct),
         {toNode("00200023") + head(ct) + words(1), missing("onSetRAUDefaultConfigReq", "IRadio_$")}},
        {"restart",
         "00200017" + head(ct) + words(1),
         {toNode("00200018") + head(ct) + words(2), missing("onRAURestartReq", "IRadio_$")}},
        {"compatibility codes",
         "00200056" + head(ct) + zeros(48),
         {toNode("00200057") + head(ct) + zeros(48), missing("onGetRAUCapabilityReq", "IRadio_$")}},
        {"sub-bands",
         "00200123" + head(ct),
         {toNode("00200124") + head(ct) + zeroWords(102), missing("onGetRAUIndexCapabilitiesReq", "IRadio_$")}},
        {"sub-band selection",
         "00200125" + head(ct) + words(1),
         {toNode("00200126") + head(ct) + words(1), missing("onSetRAUIndexCapabilitiesReq", "IRadio_$"),
          "5 onSetRAUIndexCapabilitiesReq: RAU subband request is: 1"}},
        {"shift status; what stands behind the radio has not been looked up",
         "00200129" + head(ct),
         {toNode("00200130") + head(ct) + words(0), missing("onGetShiftStatusReq", "IAcmHandler_$")}},
    };
    runAll(cases);
}

TEST_F(Lifecycle, RequestsRefuseWhatIsMissing)
{
    startInService(0, {.state = R"({"interfaces":{"IRadio_2":false}})"});
    runOne({"the other channel is served",
            "00200022" + head(1),
            {toNode("00200023") + head(1) + words(0), "IRadio_1.isRadioUp()", "IRadio_1.setDefaultConfiguration()"}});

    start({.state = R"({"interfaces":{"IRlbspKroApi":false}})"});
    const Exchange withoutRlbsp[] = {
        {"self test of a node that takes BPM commands",
         selfTest(1, 0x20),
         {toNode("00200005") + head(0) + words(1, 0, 3, 0, 0, 0, 0x5b, 1, 3, 0, 0, 0, 0), "Bsp.getProductId()",
          "4 enableVornipcWhiteList: Disabling Vornipc white list for ANS RL5",
          "4 enableVornipcWhiteList: Disabling Vornipc white list for ANS RL5",
          missing("onSelftestReq", "IRlbspKroApi")}},
        {"BPM response", "00200135" + head(0) + zeros(240), {missing("onBpmCommandRes", "IRlbspKroApi")}},
        {"out of service",
         mmuState(3),
         {"IAlarmHandler.setMmuInService(false)",
          "3 onMMUState: MMU OutOfService, outgoing PCI messages are disabled"}},
        {"close-PCI with the traffic handler alone",
         "00200039" + head(2),
         {toNode("00200040") + head(2) + words(0), "ITrafHandler.quiesceChannel(1, true)",
          "ITrafHandler.quiesceChannel(2, true)",
          "3 onAdsClosePciReq: Received ADSClosePciReqIPC, outgoing PCI messages disabled",
          missing("onAdsClosePciReq", "IRadio_1"), missing("onAdsClosePciReq", "IRadio_2")}},
    };
    runAll(withoutRlbsp);
}

TEST_F(Lifecycle, UnloadingLeavesNothingBehind)
{
    start();
    EXPECT_TRUE(LoadedModule::libraryIsLoaded());
    stop();
    EXPECT_FALSE(LoadedModule::libraryIsLoaded());
    for (const std::string& tag : platform.traceTags()) {
        EXPECT_FALSE(tag.starts_with("KRO")) << tag;
    }
}

TEST_F(Lifecycle, StopsAtOnceWithTheReaderIdle)
{
    startInService();
    newTrace();
    const auto begin = std::chrono::steady_clock::now();
    stop();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s) << "the reader waits for mail 30 s at a time";
    auto lines = newTrace();
    std::sort(lines.begin(), lines.end()); // two threads write them
    EXPECT_EQ(lines, (std::vector<std::string>{"3 readThread: Shutting down VORNIPC thread",
                                               "3 ~VornipcMessageClient: Shutting down VORNIPC thread (T)"}));
}

TEST_F(Lifecycle, FinishesTheMessageInHandAndLetsTheWaitingOnesGo)
{
    startInService();
    newlySent();
    patch(R"({"delaysMs":{"IRadio_1.isRadioUp":600000}})");
    std::vector<std::thread> senders;
    deliver("00200020" + head(1));
    EXPECT_TRUE(comesTrue([&] { return isUnderWay("IRadio_1", "isRadioUp"); }));
    deliver("00200006" + head(1)); // fills the mailbox
    for (int i = 0; i < 3; ++i) {
        senders.emplace_back([&] { deliver("00200006" + head(2)); });
    }
    newTrace();
    const auto begin = std::chrono::steady_clock::now();
    std::thread destroyer([&] { module().destroy(); });
    // The senders, let go, find the driver open and the module closed.
    for (std::thread& sender : senders) {
        sender.join();
    }
    EXPECT_TRUE(newlySent().empty()) << "the message in hand is still in hand";
    platform.stop(); // ends the delay
    destroyer.join();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 30s);
    EXPECT_EQ(newlySent(), std::vector{toNode("00200021") + head(1) + words(31)})
        << "answered; the next one is not begun";
}

TEST_F(Lifecycle, TheDriverFindsAClosedDoorBehindTheModule)
{
    startInService();
    module().destroy();
    expectOutcome("driver", [&] { EXPECT_TRUE(deliver(selfTest(1, 0))); },
                  {"1 receive_vornipc_callback_func: receive_vornipc_callback_func(): the link is stopped, dropped a "
                   "buffer of 80 bytes"});
    expectOutcome("callbacks",
                  [&] {
                      EXPECT_FALSE(platform.radioUp(1));
                      EXPECT_FALSE(platform.radioDown(2));
                      EXPECT_FALSE(platform.bpmCommand({1}).has_value());
                  },
                  {});
}

TEST_F(Lifecycle, IsDestroyedInAStormOfBuffersAndCallbacks)
{
    // Slow queries keep callbacks and the reader inside of the module at the moment of its destruction.
    startInService(0x26, {.traceLevel = 1});
    patch(R"({"delaysMs":{"IRadio_1.getInventory":1,"IRadioCapability_2.getRfChannelPlan":1}})");
    std::atomic<bool> over = false;
    std::atomic<int> answered = 0;
    platform.driver().setTransmitter([&](const char* /*data*/, unsigned length) {
        ++answered;
        return static_cast<int>(length);
    });
    std::vector<std::thread> threads;
    const auto repeat = [&](const std::function<void()>& event) {
        threads.emplace_back([&over, event] {
            while (!over) {
                event();
            }
        });
    };
    repeat([&] { platform.radioUp(1); });
    repeat([&] { platform.radioUp(2); });
    repeat([&] { platform.radioDown(1); });
    repeat([&] { platform.radioCapabilitiesAvailable(2); });
    repeat([&] { platform.bpmCommand({1, 2, 3}); });
    repeat([&] { platform.fault(4, 1, true); });
    for (int i = 0; i < 2; ++i) {
        repeat([&] { deliver(mmuState(1)); });
        repeat([&] { deliver(selfTest(1, 0x26)); });
        repeat([&] { deliver("00700066" + head(1) + words(400, 2, 3, 400)); });
    }
    EXPECT_TRUE(comesTrue([&] { return answered > 300; })) << "the node's and the radios' messages get through";
    module().destroy();
    over = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    const int answers = answered;
    platform.radioUp(1);
    deliver(selfTest(1, 0));
    EXPECT_EQ(answered, answers) << "nothing is sent after destruction";
    platform.driver().setTransmitter({});
}

/// A part of the thousand lives that a process may see.
class ManyLives : public ModuleTest, public testing::WithParamInterface<int> {};

TEST_P(ManyLives, StartAndStopWithAndWithoutTraffic)
{
    constexpr int lives = 250;
    for (int life = 0; life < lives; ++life) {
        startInService(0x26, {.traceLevel = 1});
        std::vector<std::thread> traffic;
        std::atomic<bool> over = false;
        if (life % 5 == GetParam()) {
            traffic.emplace_back([&] {
                while (!over) {
                    deliver(mmuState(1));
                    deliver("00300031" + head(1) + words(0, 0, 0, -30, 1, 2));
                }
            });
            traffic.emplace_back([&] {
                while (!over) {
                    platform.radioUp(2);
                    platform.fault(4, 1, true);
                }
            });
        } else {
            ASSERT_TRUE(answersSelfTest());
        }
        module().destroy();
        over = true;
        for (std::thread& thread : traffic) {
            thread.join();
        }
        stop();
        ASSERT_FALSE(LoadedModule::libraryIsLoaded());
    }
}

INSTANTIATE_TEST_SUITE_P(Processes, ManyLives, testing::Range(0, 4));

} // namespace
