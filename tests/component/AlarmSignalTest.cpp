#include "FakedClock.h"
#include "support/ModuleTest.h"

#include <array>

using namespace std::chrono_literals;

namespace {

class AlarmSignal : public ChannelTest {
protected:
    std::function<void()> fault(std::uint8_t signal, bool active)
    {
        return [this, signal, active] { EXPECT_TRUE(platform.fault(signal, ct, active)); };
    }

    std::string setFault(std::int64_t number, std::int64_t faultId, std::int64_t status) const
    {
        return toNode("00100002") + spontaneousHead(number, ct) + words(faultId, status, 0, 0);
    }
};

FOR_EACH_CHANNEL(AlarmSignal);

/// The node's fault of each of the radio's signals; -1 where nothing is told. Higher signals are unknown.
constexpr std::array<int, 43> faults{0,  78, 79, 55, 1,  2,  3,  4,  6,  7,  8,  9,  10, 11, -1,
                                     12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 64, 65, 67, 66, 68,
                                     69, 70, 72, 71, 73, 54, 53, 50, 56, 0,  -1, 0,  -1};

TEST_P(AlarmSignal, EverySignalHasItsFault)
{
    startInService();
    module()->enableTimeStamp(false);
    std::int64_t number = 0;
    for (unsigned signal = 0; signal <= 255; ++signal) {
        const int faultId = signal < faults.size() ? faults.at(signal) : 0;
        Outcome expected;
        if (faultId > 0) {
            expected = {setFault(number, faultId, 1)};
        } else if (faultId == 0) {
            expected = {setFault(number, 0, 1),
                        "2 signalFault: Unhandled signalId (FaultSignal): " + std::to_string(signal)};
        }
        number += faultId >= 0 ? 1 : 0;
        expectOutcome("signal " + std::to_string(signal), fault(static_cast<std::uint8_t>(signal), true), expected);
    }
}

TEST_P(AlarmSignal, FaultsAreLoggedByName)
{
    startInService();
    module()->enableTimeStamp(false);
    const std::string sending = "5 notifyFault: [Ch ";
    expectOutcome("active", fault(4, true),
                  {setFault(0, 1, 1), sending + "$] Sending spontaneous fault(1: fiRadioCommChC) - Active"});
    expectOutcome("cleared", fault(34, false),
                  {setFault(1, 73, 0), sending + "$] Sending spontaneous fault(73: fiTLTM24hC) - Cleared"});
    expectOutcome("a fault without a name", fault(1, true),
                  {setFault(2, 78, 1), sending + "$] Sending spontaneous fault(78: fiUnKnownC) - Active"});
    expectOutcome("any channel is told", [this] { EXPECT_TRUE(platform.fault(13, -1, true)); },
                  {toNode("00100002") + spontaneousHead(3, -1) + words(11, 1, 0, 0),
                   sending + "4294967295] Sending spontaneous fault(11: fiBerC) - Active"});

    const auto received = [](const char* text) {
        return std::string("5 onFaultFromAds: [Ch $] Received spontaneous fault(") + text + " from ADS";
    };
    const Exchange cases[] = {
        {"from the node",
         "00100002" + head(ct) + words(53, 0, 9, 9),
         {"5 onFaultFromAds: onFaultFromAds() called (id: 0x100002)",
          received("53: fiRemoteTxSwitchOverC) - Cleared")}},
        {"any status but 0 is active",
         "00100002" + head(ct) + words(74, 5, 0, 0),
         {received("74: fiUnKnownC) - Active")}},
        {"no fault",
         "00100002" + head(ct) + words(4294967295, 1, 0, 0),
         {received("4294967295: fiUnKnownC) - Active")}},
    };
    runAll(cases);
}

TEST_P(AlarmSignal, TimeStampsTellWhenAFaultWasSentInWholeMicroseconds)
{
    const FakedClock clock(FakedClock::Time(1'700'000'000s + 123'456'789ns));
    startInService();
    expectOutcome("on at first", fault(4, true),
                  {toNode("00100002") + spontaneousHead(0, ct) + words(1, 1, 1'700'000'000, 123'456'000)});
    module()->enableTimeStamp(false);
    expectOutcome("off", fault(4, true), {setFault(1, 1, 1)});
}

TEST_P(AlarmSignal, GateAndWhitelistHoldFaultsBack)
{
    start();
    module()->enableTimeStamp(false);
    expectOutcome(
        "the gate drops it, with a line", fault(4, true),
        {"1 send: Send is not allowed since MMU state is not in service or PCI has been disabled, Id:1048578"});
    startInService(0x80);
    module()->enableTimeStamp(false);
    expectOutcome("the whitelist without a word, and without a number", fault(39, true),
                  {"2 signalFault: Unhandled signalId (FaultSignal): 39"});
    deliver(selfTest(1, 0));
    settle();
    expectOutcome("told again afterwards", fault(4, false), {setFault(0, 1, 0)});
}

TEST_P(AlarmSignal, WithoutAnAlarmHandlerTheNodesFaultsAreStillLogged)
{
    start({.state = R"({"interfaces":{"IAlarmHandler":false}})"});
    EXPECT_FALSE(platform.fault(4, ct, true)) << "nobody has registered";
    const Exchange exchange{"from the node",
                            "00100002" + head(ct) + words(1, 1, 0, 0),
                            {"5 onFaultFromAds: onFaultFromAds() called (id: 0x100002)"}};
    runAll({&exchange, 1});
}

} // namespace
