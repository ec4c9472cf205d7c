#include "AlarmSignalHandler.h"
#include "EquipmentHandler.h"
#include "FakedClock.h"
#include "Meeting.h"
#include "ProtectionHandler.h"
#include "TrafficHandler.h"
#include "support/SimulatedPlatformFixture.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <string>
#include <vector>

// Threads that meet where a lock keeps them apart. ThreadSanitizer sees a lock that is missing; what it cannot see,
// because something else orders the threads, is asserted. The trace is off: its lock would order them too.
// Behind the client's other tests in the program: the first client's end is the end of all readers of a process.

namespace {

using namespace kro::device::vornipc;
using namespace std::chrono_literals;
using Mail = std::vector<int>;
using Mailbox = vrel::kro::framework::gcl::Mailbox<Mail>;
using Names = std::vector<std::string>;

TEST(MailboxMeeting, EveryMailIsHandedOverOnce)
{
    Mailbox box;
    std::vector<std::atomic<int>> seen(300);
    const auto put = often([&box](int i) {
        Mail mail{i};
        EXPECT_TRUE(box.putMail(mail, 20s));
    });
    const auto get = often([&box, &seen](int) {
        Mail mail;
        EXPECT_TRUE(box.getMail(mail, 20s));
        ++seen.at(static_cast<std::size_t>(mail.at(0)));
    });
    meet({put, get, put, get, put, get});
    EXPECT_TRUE(std::all_of(seen.begin(), seen.end(), [](int count) { return count == 3; }));
}

TEST(MailboxMeeting, IsClosedWhileOthersUseIt)
{
    Mailbox box;
    Mail mail;
    bool closed = false;
    const std::function<void(int)> uses[] = {[&](int) { closed = box.closed(); }, [&](int) { box.putMail(mail, 0ms); },
                                             [&](int) { box.getMail(mail, 0ms); }};
    for (const auto& use : uses) {
        meetAgainAndAgain([&](int) { box.close(); }, use);
    }
    EXPECT_TRUE(box.closed());
    EXPECT_FALSE(box.putMail(mail, 1h));
    EXPECT_FALSE(box.getMail(mail, 1h));
}

TEST(MailboxMeeting, WhoWaitsIsWoken)
{
    Mail mail;
    const struct {
        std::string name;
        bool full; ///< so that putters wait, else getters
        std::function<void(Mailbox&)> event;
        std::size_t woken;
    } cases[] = {{"a getter by a mail", false, [&](Mailbox& box) { box.putMail(mail, 0ms); }, 1},
                 {"a putter by a free slot", true, [&](Mailbox& box) { box.getMail(mail, 0ms); }, 1},
                 {"getters by the end", false, [](Mailbox& box) { box.close(); }, 2},
                 {"putters by the end", true, [](Mailbox& box) { box.close(); }, 2}};
    for (const auto& [name, full, event, woken] : cases) {
        FakedClock clock; // or they would wake by themselves some day
        Mailbox box;
        EXPECT_TRUE(!full || box.putMail(mail, 0ms));
        const auto wait = [&box, full = full] {
            Mail own;
            full ? box.putMail(own, 1h) : box.getMail(own, 1h);
        };
        meet({wait, wait, [&, &name = name, &event = event, woken = woken] {
                  EXPECT_TRUE(clock.waitUntilWaiting(2));
                  event(box);
                  EXPECT_TRUE(clock.waitUntilWaiting(2 - woken)) << name;
                  clock.advance(1h); // lets go who has not been woken
              }});
    }
}

/// Takes every buffer, without a lock that would order who sends.
struct NoSender : IVornipcSender {
    int send(const char* /*data*/, unsigned length) override { return static_cast<int>(length); }
};

class PartsMeeting : public SimulatedPlatformFixture {
protected:
    PartsMeeting() { m_platform.setTraceLevel("*", 0); }

    static std::string nameOf(const Json& call)
    {
        return call["interface"].get<std::string>() + "." + call["operation"].get<std::string>();
    }

    /// Lets `second` come while `first` is inside of a platform operation.
    /// @return the platform's calls when the second is done, as "IRadio_1.getInventory"
    Names callsOfBoth(const std::string& operation, const std::function<void()>& first,
                      const std::function<void()>& second)
    {
        m_platform.patchState({{"delaysMs", {{operation, 60}}}});
        newCalls();
        Names names;
        meet({first, [&] {
                  EXPECT_TRUE(comesTrue([&] { return m_platform.state()["hits"]["delaysMs"][operation] == 1; }));
                  second();
                  const Json calls = newCalls();
                  std::transform(calls.begin(), calls.end(), std::back_inserter(names), nameOf);
              }});
        m_platform.patchState({{"delaysMs", {{operation, nullptr}}}});
        return names;
    }

    VornipcMessageHandler hub{"", std::make_shared<NoSender>()};
    AdapterModel model{2};
    EquipmentHandler equipment{2, hub, model};
};

TEST_F(PartsMeeting, EachSpontaneousNumberIsGivenOutOnce)
{
    std::atomic<std::uint32_t> taken = 0;
    const auto take = [&](int) {
        for (int i = 0; i < 200; ++i) {
            hub.getSpontaneousMessageSequenceNumber();
        }
        taken += 200;
    };
    meetAgainAndAgain(take, take);
    EXPECT_EQ(hub.getSpontaneousMessageSequenceNumber(), 0x80000000 + taken) << "a number given out twice is missing";
}

TEST_F(PartsMeeting, WhatIsSetIsReadMeanwhile)
{
    const RadioChannel ct{1};
    VornipcMessageClient client(&hub);
    ProtectionHandler protection(hub);
    TrafficHandler traffic(2, hub, model);
    AlarmSignalHandler alarms(2, hub);
    MMUStateIPC message;
    const std::string request = std::string("\x01\0\0\x09", 4) + std::string(24, '\0');
    const auto selfTest = [&](int i) {
        ADSSelftestReqIPC ofNode; // which takes all or nothing, and will tell again
        ofNode.tCompatibilityCodes.capabilityEH = i % 2 == 0 ? 0xffffffff : 0;
        equipment.onSelftestReq(&ofNode);
    };
    const auto readCapabilities = [&](int) {
        EquipmentHandler::AnsCapabilities seen;
        equipment.getAnsCapabilities(seen);
        EXPECT_EQ((int{seen.rauDetected1Capable} + int{seen.spareCapability} + int{seen.rlaprintExtCapable} +
                   int{seen.bpmCommandCapable} + int{seen.qesMode}) %
                      5,
                  0)
            << "half of a self test";
    };
    const struct {
        std::string name;
        std::function<void(int)> set;
        std::function<void(int)> get;
    } pairs[] = {
        {"slot", [&](int i) { hub.setSlotNumber(static_cast<std::uint8_t>(i)); }, [&](int) { hub.getSlotNumber(); }},
        {"sender", [&](int i) { hub.setSenderID(static_cast<std::uint32_t>(i)); }, [&](int) { hub.getSenderID(); }},
        {"whitelist", [&](int i) { hub.enableVornipcWhiteList(i % 2 == 0); },
         [&](int) { hub.vornipcWhiteListActive(); }},
        {"gate", [&](int i) { hub.setOutgoingIpcMessagesAllowed(i % 2 == 0); },
         [&](int) { hub.send(message, VornipcDeviceId::ads); }},
        {"receivers", [&](int) { protection.onModuleInit(); },
         [&](int) { hub.onMessageReceived(request.data(), 28, VornipcDeviceId::ads); }},
        {"reader", [&](int) { client.startReadThread(); }, [&](int) { client.readerState(); }},
        {"radio up", [&](int i) { equipment.setRadioUp(ct, i % 2 != 0); }, [&](int) { equipment.getRadioUp(ct); }},
        {"self test", selfTest, readCapabilities},
        {"capabilities", [&](int) { equipment.setAnsCapabilities({}); }, readCapabilities},
        {"another self test", [&](int) { equipment.resetSelfTestCheckPerformed(); }, readCapabilities},
        {"time stamps", [&](int i) { alarms.enableTimeStamp(i % 2 == 0); },
         [&](int) { alarms.notifyFault(1, fiBerC, faultActive); }},
        {"the model's interfaces", [&](int) { model.onModuleInit(); }, [&](int) { model.onSetFrequency(0, 1, 1); }},
        {"a handler's interfaces", [&](int) { traffic.onModuleInit(); },
         [&](int) { traffic.handleMlmChanelStatus(ct); }},
    };
    for (const auto& [name, set, get] : pairs) {
        SCOPED_TRACE(name);
        meetAgainAndAgain(set, get);
    }
}

TEST_F(PartsMeeting, OnePlatformIsAskedForOneThingAtATime)
{
    model.onModuleInit();
    equipment.onModuleInit();
    RfChannelPlan plan;
    plan.stepSize = 1;
    model.onRfChannelPlanReceived(RadioChannel{1}, plan);
    model.onSetFrameFormatReq(0, 1, 2, 29, 4);
    int step = 0;
    const auto setFrequency = [&] { model.onSetFrequency(0, ++step, 1); };
    const auto detected = [](const std::string& ct) {
        return Names{"IRadio_" + ct + ".getInventory", "IRadioCapability_" + ct + ".getRfChannelPlan",
                     "IRadioCapability_" + ct + ".getRfLoopCapability"};
    };
    const Names configured{"IHardwareConfigurationHandler.getRadioFrameId", "IAcmHandler_1.getMinMaxModulationAndCode",
                           "ISystemPowerController_1.getReferenceSec",      "IFrequencyController_1.getTxFrequency",
                           "IFrequencyController_1.getRxFrequency",         "kro_top_api.criSetRadioChannelNearEnd"};
    const struct {
        std::string name;
        Names firstCalls;
        std::function<void()> first;
        std::function<void()> second;
        Names secondCalls;
    } cases[] = {
        {"a plan meets a configuration",
         configured,
         setFrequency,
         [&] { model.onRfChannelPlanReceived(RadioChannel{2}, {}); },
         {}},
        {"a frequency", configured, setFrequency, [&] { model.onSetFrequency(1, 1, 1); }, {}},
        {"a frame format", configured, setFrequency, [&] { model.onSetFrameFormatReq(0, 1, 2, 29, 4); },
         Names(configured.begin(), configured.end() - 1)},
        {"the far end's limits",
         configured,
         setFrequency,
         [&] { model.onSetFarEndPmaxCapability(RadioChannel{2}, {}); },
         {"kro_top_api.criSetFarEndPmaxCapability"}},
        {"a radio meets another", detected("1"), [&] { equipment.radioUp(RadioChannel{1}); },
         [&] { equipment.radioUp(RadioChannel{2}); }, detected("2")},
    };
    for (const auto& [name, firstCalls, first, second, secondCalls] : cases) {
        Names expected = firstCalls;
        expected.insert(expected.end(), secondCalls.begin(), secondCalls.end());
        EXPECT_EQ(callsOfBoth(firstCalls[0], first, second), expected) << name;
    }
}

} // namespace
