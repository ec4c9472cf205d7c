#include "support/SimulatedPlatformFixture.h"

#include "IAlarmHandler.h"
#include "IRadio.h"
#include "IRlbspKroApi.h"
#include "ripc.h"

#include <atomic>
#include <functional>
#include <future>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace {

using simulated::Json;

/// Notes what it is told and does what the test wants meanwhile.
class Listener : public IRadioCallback, public IAlarmSignalHandlerCallback, public IRlbspKroApi::BpmCallback {
public:
    std::function<void()> during = [] {};

    void radioCapabilitiesAvailable(RadioChannel ct) override { note("capabilities " + std::to_string(ct)); }
    void radioUp(RadioChannel ct) override { note("up " + std::to_string(ct)); }
    void radioDown(RadioChannel ct) override { note("down " + std::to_string(ct)); }

    void radioOutputPowerNotification(RadioChannel ct, int power) override
    {
        note("power " + std::to_string(ct) + " " + std::to_string(power));
    }

    void signalFault(FaultSignal signal, int ct, bool active) override
    {
        note("fault " + std::to_string(signal) + " " + std::to_string(ct) + (active ? " on" : " off"));
    }

    int rawMsgCallback(const std::vector<unsigned char>& command) override
    {
        note("bpm " + std::to_string(command.size()));
        return 1;
    }

    std::vector<std::string> heard() const
    {
        const std::lock_guard lock{m_mutex};
        return m_heard;
    }

private:
    void note(std::string what)
    {
        during();
        const std::lock_guard lock{m_mutex};
        m_heard.push_back(std::move(what));
    }

    mutable std::mutex m_mutex;
    std::vector<std::string> m_heard;
};

class SimulatedPlatformEvents : public SimulatedPlatformFixture {
protected:
    void listen(IRadioCallback* callback) { find<IRadio>("IRadio_1")->registerCallback(RadioChannel{1}, callback); }

    Listener m_listener;
};

TEST_F(SimulatedPlatformEvents, ReachWhoeverRegisteredAndNobodyElse)
{
    listen(&m_listener);
    EXPECT_TRUE(m_platform.radioDown(1));
    EXPECT_EQ(at("/channels/1/radio/up"), false);
    EXPECT_TRUE(m_platform.radioUp(1));
    EXPECT_EQ(at("/channels/1/radio/up"), true);
    EXPECT_TRUE(m_platform.radioCapabilitiesAvailable(1));
    EXPECT_TRUE(m_platform.radioOutputPowerNotification(1, -3));
    for (const std::int32_t ct : {0, 2, 3, -1}) {
        EXPECT_FALSE(m_platform.radioDown(ct)) << ct;
    }
    EXPECT_EQ(at("/channels/2/radio/up"), true) << "a refused event changes nothing";
    EXPECT_FALSE(m_platform.fault(4, 1, true));
    EXPECT_EQ(m_platform.bpmCommand({1}), std::nullopt);

    find<IAlarmHandler>("IAlarmHandler")->registerFaultCallback(&m_listener);
    find<IRlbspKroApi>("IRlbspKroApi")->registerBpmCallback(&m_listener);
    EXPECT_TRUE(m_platform.fault(255, -7, false));
    EXPECT_EQ(m_platform.bpmCommand({1, 2}), 1);
    EXPECT_EQ(m_listener.heard(), (std::vector<std::string>{"down 1", "up 1", "capabilities 1", "power 1 -3",
                                                            "fault 255 -7 off", "bpm 2"}));
}

TEST_F(SimulatedPlatformEvents, MayOverlapAndCallThePlatform)
{
    std::promise<void> bothInside;
    std::atomic<int> inside{0};
    const auto both = bothInside.get_future().share();
    m_listener.during = [&] {
        find<IRadio>("IRadio_1")->isRadioUp();
        if (++inside == 2) {
            bothInside.set_value();
        }
        EXPECT_EQ(both.wait_for(deadline), std::future_status::ready);
    };
    listen(&m_listener);
    auto first = m_platform.runOnPlatformThread([&] { m_platform.radioUp(1); });
    auto second = m_platform.runOnPlatformThread([&] { m_platform.radioUp(1); });
    first.get();
    second.get();
    EXPECT_EQ(m_listener.heard().size(), 2U);
}

TEST_F(SimulatedPlatformEvents, WithdrawingACallbackWaitsForTheCallInFlight)
{
    std::promise<void> entered;
    std::promise<void> release;
    std::atomic<bool> isFirst{true};
    bool firstHasEnded = false;
    m_listener.during = [&, released = release.get_future().share()] {
        if (isFirst.exchange(false)) {
            entered.set_value();
            released.wait();
            firstHasEnded = true;
        }
    };
    listen(&m_listener);
    auto event = m_platform.runOnPlatformThread([&] { m_platform.radioUp(1); });
    entered.get_future().wait();
    auto withdrawal = std::async(std::launch::async, [&] { listen(nullptr); });
    EXPECT_TRUE(comesTrue([&] { return !m_platform.radioUp(1); })) << "new events find nobody while it waits";
    EXPECT_EQ(withdrawal.wait_for(std::chrono::milliseconds{20}), std::future_status::timeout);
    release.set_value();
    withdrawal.get();
    EXPECT_TRUE(firstHasEnded);
    event.get();
}

TEST_F(SimulatedPlatformEvents, ACallbackMayWithdrawItself)
{
    m_listener.during = [&] { listen(nullptr); };
    listen(&m_listener);
    EXPECT_TRUE(m_platform.radioUp(1));
    EXPECT_FALSE(m_platform.radioUp(1));
}

TEST_F(SimulatedPlatformEvents, ARestartTakesTheRadioDownAndUpAgain)
{
    listen(&m_listener);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(find<IRadio>("IRadio_1")->restart(0), resultOk);
    EXPECT_TRUE(comesTrue([&] { return m_listener.heard().size() == 2; }));
    EXPECT_EQ(m_listener.heard(), (std::vector<std::string>{"down 1", "up 1"}));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds{1000});
    EXPECT_EQ(at("/channels/1/radio/up"), true);
}

TEST_F(SimulatedPlatformEvents, NothingHappensAfterAStop)
{
    listen(&m_listener);
    find<IRadio>("IRadio_1")->restart(0);
    EXPECT_TRUE(comesTrue([&] { return m_listener.heard().size() == 1; }));
    m_platform.stop(); // in the middle of the restart
    EXPECT_EQ(at("/channels/1/radio/up"), false);
    EXPECT_FALSE(m_platform.radioUp(1));
    EXPECT_THROW(m_platform.runOnPlatformThread([] {}), std::runtime_error);
    EXPECT_EQ(find<IRadio>("IRadio_1")->restart(0), resultOk);
    EXPECT_EQ(m_listener.heard(), (std::vector<std::string>{"down 1"}));

    restart(2);
    listen(&m_listener);
    EXPECT_TRUE(m_platform.radioUp(1)) << "a fresh platform runs again";
}

TEST_F(SimulatedPlatformEvents, PlatformThreadsTakeTheLowestFreeNumber)
{
    const auto nameOfOne = [&] {
        m_platform.runOnPlatformThread([&] { find<IRadio>("IRadio_1")->isRadioUp(); }).get();
        return newCalls().back()["thread"].get<std::string>();
    };
    std::promise<void> release;
    auto held = m_platform.runOnPlatformThread([&] { release.get_future().wait(); });
    EXPECT_EQ(nameOfOne(), "platform-2");
    release.set_value();
    held.get();
    EXPECT_TRUE(comesTrue([&] { return nameOfOne() == "platform-1"; }));
}

/// Notes the deliveries of the driver.
struct Receiver {
    std::function<void()> during = [] {};
    std::vector<std::pair<std::string, unsigned>> received;

    static void receive(void* context, const char* data, unsigned length, unsigned deviceFlag)
    {
        auto& self = *static_cast<Receiver*>(context);
        self.during();
        self.received.emplace_back(std::string(data, length), deviceFlag);
    }
};

TEST_F(SimulatedPlatformEvents, TheDriverDeliversOneBufferAtATime)
{
    simulated::PciDriver& driver = m_platform.driver();
    EXPECT_FALSE(driver.deliver("x", 1, 0)) << "nobody has registered";
    Receiver receiver;
    std::atomic<int> inside{0};
    receiver.during = [&] {
        EXPECT_EQ(++inside, 1);
        std::this_thread::yield();
        --inside;
    };
    ripc_hijack_register_receive_callback(&Receiver::receive, &receiver);
    std::vector<std::thread> nodes;
    for (int i = 0; i < 4; ++i) {
        nodes.emplace_back([&] {
            for (int n = 0; n < 50; ++n) {
                EXPECT_TRUE(driver.deliver("ab", 2, 10));
            }
        });
    }
    for (std::thread& node : nodes) {
        node.join();
    }
    EXPECT_EQ(receiver.received, (std::vector<std::pair<std::string, unsigned>>(200, {"ab", 10})));
    EXPECT_TRUE(driver.deliver("", 0, 0));
    driver.stop();
    EXPECT_FALSE(driver.deliver("ab", 2, 0));
}

TEST_F(SimulatedPlatformEvents, AStoppedDriverStillWaitsForTheDeliveryInFlight)
{
    simulated::PciDriver& driver = m_platform.driver();
    Receiver receiver;
    std::promise<void> entered;
    std::promise<void> release;
    receiver.during = [&] {
        entered.set_value();
        release.get_future().wait();
    };
    ripc_hijack_register_receive_callback(&Receiver::receive, &receiver);
    auto delivery = std::async(std::launch::async, [&] { return driver.deliver("ab", 2, 0); });
    entered.get_future().wait();
    m_platform.stop(); // returns: the module's end is what lets the delivery go
    auto idle = std::async(std::launch::async, [&] { driver.waitUntilIdle(); });
    EXPECT_EQ(idle.wait_for(std::chrono::milliseconds{20}), std::future_status::timeout);
    release.set_value();
    idle.get();
    EXPECT_EQ(receiver.received.size(), 1U);
    EXPECT_TRUE(delivery.get());
}

TEST_F(SimulatedPlatformEvents, OutgoingBuffersGoToTheTransmitter)
{
    const std::string buffer{"\0\0\0\0abc", 7};
    EXPECT_EQ(ripc_sendBufferToPci(buffer.data(), 7), -1);
    std::string sent;
    m_platform.driver().setTransmitter([&](const char* data, unsigned length) {
        sent.assign(data, length);
        return static_cast<int>(length);
    });
    newCalls();
    EXPECT_EQ(ripc_sendBufferToPci(buffer.data(), 7), 7);
    EXPECT_EQ(sent, buffer);
    m_platform.patchState({{"results", {{"ripc.sendBufferToPci", -1}}}});
    sent.clear();
    EXPECT_EQ(ripc_sendBufferToPci(buffer.data(), 7), -1);
    EXPECT_EQ(sent, "");
    EXPECT_EQ(newCalls()[0]["args"], (Json{{"length", 7}}));
}

} // namespace
