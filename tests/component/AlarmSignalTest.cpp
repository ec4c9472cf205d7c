#include "FakedClock.h"
#include "TableFile.h"
#include "support/ModuleTest.h"

#include <map>

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

/// The name of each fault; those without one are called like fault 0.
std::string nameOfFault(std::int64_t id)
{
    static const std::map<std::int64_t, std::string> names = [] {
        std::map<std::int64_t, std::string> read;
        for (const TableLine& line : linesOfSection("words.txt", "faults")) {
            read[numberOf(line.words().at(0))] = line.words().at(1);
        }
        return read;
    }();
    const auto found = names.find(id);
    return found != names.end() ? found->second : names.at(0);
}

TEST_P(AlarmSignal, EverySignalHasItsFault)
{
    startInService();
    module()->enableTimeStamp(false);
    const auto signals = linesOfSection("words.txt", "signal ids");
    ASSERT_EQ(signals.size(), 256U);
    std::int64_t number = 0;
    for (const TableLine& line : signals) {
        const auto row = line.words();
        Outcome expected;
        if (row.at(1) != "-") {
            const std::int64_t id = numberOf(row[1]);
            const std::string unhandled = "2 signalFault: Unhandled signalId (FaultSignal): " + row[0];
            expected = {setFault(number++, id, 1), id == 0 ? std::vector{unhandled} : std::vector<std::string>{},
                        "5 notifyFault: [Ch $] Sending spontaneous fault(" + row[1] + ": " + nameOfFault(id) +
                            ") - Active"};
        }
        expectOutcome(line.place, fault(static_cast<std::uint8_t>(numberOf(row.at(0))), true), expected);
    }
}

TEST_P(AlarmSignal, EveryFaultOfTheNodeHasItsName)
{
    startInService();
    for (std::int64_t id = 0; id <= 80; ++id) {
        const Exchange exchange{std::to_string(id),
                                "00100002" + head(ct) + words(id, 1, 9, 9),
                                {"5 onFaultFromAds: [Ch $] Received spontaneous fault(" + std::to_string(id) + ": " +
                                 nameOfFault(id) + ") - Active from ADS"}};
        runAll({&exchange, 1});
    }
}

TEST_P(AlarmSignal, FaultsAreLoggedByName)
{
    startInService();
    module()->enableTimeStamp(false);
    const std::string sending = "5 notifyFault: [Ch ";
    expectOutcome("cleared", fault(34, false),
                  {setFault(0, 73, 0), sending + "$] Sending spontaneous fault(73: fiTLTM24hC) - Cleared"});
    expectOutcome("any channel is told", [this] { EXPECT_TRUE(platform.fault(13, -1, true)); },
                  {toNode("00100002") + spontaneousHead(1, -1) + words(11, 1, 0, 0),
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
    deliverAndSettle(selfTest(1, 0));
    expectOutcome("told again afterwards", fault(4, false), {setFault(0, 1, 0)});
}

TEST_P(AlarmSignal, WithoutAnAlarmHandlerTheNodesFaultsAreStillLogged)
{
    start({.state = R"({"interfaces":{"IAlarmHandler":false}})"});
    EXPECT_FALSE(platform.fault(4, ct, true)) << "nobody has registered";
    runOne({"from the node",
            "00100002" + head(ct) + words(1, 1, 0, 0),
            {"5 onFaultFromAds: onFaultFromAds() called (id: 0x100002)"}});
}

} // namespace
