#include "Meeting.h"
#include "AlarmSignalHandler.h"
#include "EquipmentHandler.h"
#include "FakedClock.h"
#include "ProtectionHandler.h"
#include "TrafficHandler.h"
#include "support/SimulatedPlatformFixture.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

// Threads that meet where a lock keeps them apart. ThreadSanitizer sees a lock that is missing; what it cannot see,
// because something else orders the threads, is asserted. The trace is off: its lock would order them too.

namespace {

using namespace kro::device::vornipc;
using namespace std::chrono_literals;
using Mailbox = vrel::kro::framework::gcl::Mailbox<std::vector<int>>;

TEST(MailboxMeeting, EveryMailIsHandedOverOnce)
{
    constexpr int putters = 3;
    constexpr int mailsEach = 500;
    Mailbox box;
    std::vector<std::atomic<int>> seen(putters * mailsEach);
    std::vector<std::function<void()>> threads;
    for (int putter = 0; putter < putters; ++putter) {
        threads.emplace_back([&box, putter] {
            for (int i = 0; i < mailsEach; ++i) {
                std::vector<int> mail{putter * mailsEach + i};
                EXPECT_TRUE(box.putMail(mail, 20s));
            }
        });
        threads.emplace_back([&box, &seen] {
            for (int i = 0; i < mailsEach; ++i) {
                std::vector<int> mail;
                EXPECT_TRUE(box.getMail(mail, 20s));
                ++seen.at(static_cast<std::size_t>(mail.at(0)));
            }
        });
    }
    meet(threads);
    EXPECT_TRUE(std::all_of(seen.begin(), seen.end(), [](int count) { return count == 1; }));
}

TEST(MailboxMeeting, IsClosedWhileOthersUseIt)
{
    Mailbox box;
    std::vector<int> mail{1};
    std::vector<int> other;
    meet({[&] { box.close(); }, often([&](int) { box.closed(); }), often([&](int) { box.putMail(mail, 0ms); }),
          often([&](int) { box.getMail(other, 0ms); })});
    EXPECT_TRUE(box.closed());
    EXPECT_FALSE(box.putMail(mail, 1h));
    EXPECT_FALSE(box.getMail(mail, 1h));
}

TEST(MailboxMeeting, WhoWaitsIsWoken)
{
    std::vector<int> mail{1};
    const struct {
        std::string name;
        bool full; ///< so that putters wait, else getters
        std::function<void(Mailbox&)> event;
        std::size_t woken;
    } cases[] = {
        {"a getter by a mail", false, [&](Mailbox& box) { box.putMail(mail, 0ms); }, 1},
        {"a putter by a free slot", true, [&](Mailbox& box) { box.getMail(mail, 0ms); }, 1},
        {"getters by the end", false, [](Mailbox& box) { box.close(); }, 2},
        {"putters by the end", true, [](Mailbox& box) { box.close(); }, 2},
    };
    for (const auto& [name, full, event, woken] : cases) {
        SCOPED_TRACE(name);
        FakedClock clock; // or they would wake by themselves some day
        Mailbox box;
        EXPECT_TRUE(!full || box.putMail(mail, 0ms));
        std::vector<std::thread> waiting;
        for (int i = 0; i < 2; ++i) {
            waiting.emplace_back([&box, full = full] {
                std::vector<int> own;
                full ? box.putMail(own, 1h) : box.getMail(own, 1h);
            });
        }
        EXPECT_TRUE(clock.waitUntilWaiting(2));
        event(box);
        EXPECT_TRUE(clock.waitUntilWaiting(2 - woken));
        clock.advance(1h); // lets go who has not been woken
        for (std::thread& thread : waiting) {
            thread.join();
        }
    }
}

/// Takes every buffer, without a lock that would order who sends.
struct NoSender : IVornipcSender {
    int send(const char* /*data*/, unsigned length) override { return static_cast<int>(length); }
};

class ModulePartsMeeting : public SimulatedPlatformFixture {
protected:
    ModulePartsMeeting() { renew(Json::object()); }

    void renew(const Json& patch)
    {
        m_equipment.reset();
        m_model.reset();
        m_hub.reset();
        restart(2, patch);
        m_platform.setTraceLevel("*", 0);
        m_hub.emplace("", std::make_shared<NoSender>());
        m_model.emplace(2);
        m_equipment.emplace(2U, *m_hub, *m_model);
    }

    VornipcMessageHandler& hub() { return *m_hub; }
    AdapterModel& model() { return *m_model; }
    EquipmentHandler& equipment() { return *m_equipment; }

    /// A message without a body to speak of.
    void receive(std::uint32_t messageId)
    {
        std::string buffer(32, '\0');
        for (const std::size_t i : {0U, 1U, 2U, 3U}) {
            buffer[i] = static_cast<char>(messageId >> (24 - 8 * i));
        }
        hub().onMessageReceived(buffer.data(), static_cast<unsigned>(buffer.size()), VornipcDeviceId::ads);
    }

    /// Lets `second` come while `first` is inside of a platform operation.
    /// @return the platform's calls when the second is done, as "IRadio_1.getInventory"
    std::vector<std::string> callsOfBoth(const std::string& operation, const std::function<void()>& first,
                                         const std::function<void()>& second)
    {
        m_platform.patchState({{"delaysMs", {{operation, 60}}}});
        newCalls();
        std::thread firstThread(first);
        EXPECT_TRUE(comesTrue([&] { return isUnderWay(operation); }));
        second();
        std::vector<std::string> names;
        const Json calls = newCalls();
        std::transform(calls.begin(), calls.end(), std::back_inserter(names), nameOf);
        firstThread.join();
        m_platform.patchState({{"delaysMs", {{operation, nullptr}}}});
        return names;
    }

private:
    static std::string nameOf(const Json& call)
    {
        return call["interface"].get<std::string>() + "." + call["operation"].get<std::string>();
    }

    bool isUnderWay(const std::string& operation)
    {
        const Json answer = m_platform.calls(0);
        const Json& calls = answer["calls"];
        return std::any_of(calls.begin(), calls.end(), [&operation](const Json& call) {
            return nameOf(call) == operation && !call.contains("result");
        });
    }

    std::optional<VornipcMessageHandler> m_hub;
    std::optional<AdapterModel> m_model;
    std::optional<EquipmentHandler> m_equipment;
};

TEST_F(ModulePartsMeeting, ReceiversAreRegisteredWhileMessagesArrive)
{
    ProtectionHandler area(hub());
    meet({often([&](int) { receive(SetSwitchModeReqIPC::messageId); }), [&] { area.onModuleInit(); },
          [&] { equipment().onModuleInit(); }});
    receive(SetSwitchModeReqIPC::messageId);
}

TEST_F(ModulePartsMeeting, TheHubsValuesAreReadWhileTheyAreSet)
{
    VornipcMessageHandler& all = hub();
    MMUStateIPC message;
    const std::function<void(int)> pairs[][2] = {
        {[&](int i) { all.setSlotNumber(static_cast<std::uint8_t>(i)); }, [&](int) { all.getSlotNumber(); }},
        {[&](int i) { all.setSenderID(static_cast<std::uint32_t>(i)); }, [&](int) { all.getSenderID(); }},
        {[&](int i) { all.enableVornipcWhiteList(i % 2 == 0); }, [&](int) { all.vornipcWhiteListActive(); }},
        {[&](int i) { all.setOutgoingIpcMessagesAllowed(i % 2 == 0); },
         [&](int) { all.send(message, VornipcDeviceId::ads); }},
    };
    for (const auto& [set, get] : pairs) {
        meet({often(set), often(get), often(set)});
    }
    EXPECT_EQ(all.getSlotNumber(), 43) << "the last of 300";
    EXPECT_EQ(all.getSenderID(), 299U);
}

TEST_F(ModulePartsMeeting, EachSpontaneousNumberIsGivenOutOnce)
{
    std::vector<std::atomic<int>> taken(900);
    const auto take = often([&](int) { ++taken.at(hub().getSpontaneousMessageSequenceNumber() - 0x80000000U); });
    meet({take, take, take});
    EXPECT_TRUE(std::all_of(taken.begin(), taken.end(), [](int count) { return count == 1; }));
}

TEST_F(ModulePartsMeeting, TheNodesCapabilitiesAreNeverHalfOfOneSelfTest)
{
    const auto selfTest = [&](int i) {
        ADSSelftestReqIPC request; // of a node that takes all or nothing, and will tell again
        request.tCompatibilityCodes.capabilityEH = i % 2 == 0 ? 0xffffffff : 0;
        equipment().onSelftestReq(&request);
    };
    const auto read = [&](int) {
        EquipmentHandler::AnsCapabilities seen;
        equipment().getAnsCapabilities(seen);
        const int count = int{seen.rauDetected1Capable} + int{seen.spareCapability} + int{seen.rlaprintExtCapable} +
                          int{seen.bpmCommandCapable} + int{seen.qesMode};
        EXPECT_EQ(count % 5, 0);
    };
    meet({often(selfTest), often(read)});
    meet({often([&](int) { equipment().setAnsCapabilities({}); }), often(read)});
    meet({often([&](int) { equipment().resetSelfTestCheckPerformed(); }), often(read)});
}

TEST_F(ModulePartsMeeting, RadiosComeAndGoOnThreadsOfTheirOwn)
{
    const RadioChannel ct{1};
    meet({often([&](int i) { equipment().setRadioUp(ct, i % 2 != 0); }),
          often([&](int) { equipment().getRadioUp(ct); }),
          often([&](int i) { equipment().setRadioUp(ct, i % 2 != 0); })});
    EXPECT_TRUE(equipment().getRadioUp(ct));
}

TEST_F(ModulePartsMeeting, OneRadioIsDetectedAtATime)
{
    model().onModuleInit();
    equipment().onModuleInit();
    const auto names = callsOfBoth(
        "IRadio_1.getInventory", [&] { equipment().radioUp(RadioChannel{1}); },
        [&] { equipment().radioUp(RadioChannel{2}); });
    EXPECT_EQ(names, (std::vector<std::string>{"IRadio_1.getInventory", "IRadioCapability_1.getRfChannelPlan",
                                               "IRadioCapability_1.getRfLoopCapability", "IRadio_2.getInventory",
                                               "IRadioCapability_2.getRfChannelPlan",
                                               "IRadioCapability_2.getRfLoopCapability"}));
}

TEST_F(ModulePartsMeeting, OneConfigurationIsMadeAtATime)
{
    model().onModuleInit();
    RfChannelPlan plan;
    plan.stepSize = 1;
    model().onRfChannelPlanReceived(RadioChannel{1}, plan);
    model().onSetFrameFormatReq(0, 1, 2, 29, 4);
    const std::vector<std::string> first{
        "IHardwareConfigurationHandler.getRadioFrameId", "IAcmHandler_1.getMinMaxModulationAndCode",
        "ISystemPowerController_1.getReferenceSec",      "IFrequencyController_1.getTxFrequency",
        "IFrequencyController_1.getRxFrequency",         "kro_top_api.criSetRadioChannelNearEnd"};
    int step = 0;
    const struct {
        std::string name;
        std::function<void()> second;
        std::vector<std::string> calls;
    } cases[] = {
        {"a plan", [&] { model().onRfChannelPlanReceived(RadioChannel{2}, {}); }, {}},
        {"a frequency", [&] { model().onSetFrequency(1, 1, 1); }, {}},
        {"a frame format",
         [&] { model().onSetFrameFormatReq(1, 1, 2, 29, 4); },
         {"IHardwareConfigurationHandler.getRadioFrameId", "IAcmHandler_2.getMinMaxModulationAndCode",
          "ISystemPowerController_2.getReferenceSec", "IFrequencyController_2.getTxFrequency",
          "IFrequencyController_2.getRxFrequency", "kro_top_api.criSetRadioChannelNearEnd"}},
        {"the far end's limits",
         [&] { model().onSetFarEndPmaxCapability(RadioChannel{2}, {}); },
         {"kro_top_api.criSetFarEndPmaxCapability"}},
    };
    for (const auto& [name, second, calls] : cases) {
        const auto names = callsOfBoth(
            "IHardwareConfigurationHandler.getRadioFrameId", [&] { model().onSetFrequency(0, ++step, 1); }, second);
        auto expected = first;
        expected.insert(expected.end(), calls.begin(), calls.end());
        EXPECT_EQ(names, expected) << name;
    }
}

TEST_F(ModulePartsMeeting, MessagesArriveWhileThePartsLookUpTheirInterfaces)
{
    TrafficHandler traffic(2, hub(), model());
    meet({[&] { model().onModuleInit(); }, [&] { traffic.onModuleInit(); }, often([&](int) {
              traffic.handleMlmChanelStatus(RadioChannel{2});
              model().onSetFrequency(0, 1, 1);
          })});
    EXPECT_TRUE(traffic.handleMlmChanelStatus(RadioChannel{2}));
}

TEST_F(ModulePartsMeeting, TimeStampsAreSwitchedWhileFaultsAreTold)
{
    AlarmSignalHandler alarms(2, hub());
    meet({often([&](int i) { alarms.enableTimeStamp(i % 2 == 0); }),
          often([&](int) { alarms.notifyFault(1, fiBerC, faultActive); })});
    EXPECT_EQ(hub().getSpontaneousMessageSequenceNumber(), 0x80000000U + 300);
}

} // namespace
