#pragma once

#include "SimulatedPlatform.h"
#include "support/Journal.h"
#include "support/LoadedModule.h"
#include "support/Wire.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <thread>
#include <utility>
#include <vector>

/// What comes of something that happens to the module, line by line: first the buffers that it sends, as hexadecimal
/// digits; then its platform calls, "IRadio_1.setRfLoop(true)", but for those that send; then its trace, "1 onRAUState:
/// text", which is level, method and text. Of the trace it has all lines up to level 4, and those of levels 5 and 6 that
/// are wanted; a message in a text is cut to its name.
class Outcome {
public:
    /// One line, or several that go together.
    struct Lines {
        Lines(const char* line) : lines{line} {}
        Lines(std::string line) : lines{std::move(line)} {}
        Lines(std::vector<std::string> several) : lines(std::move(several)) {}
        std::vector<std::string> lines;
    };

    Outcome() = default;
    Outcome(std::initializer_list<Lines> parts);

    const std::vector<std::string>& lines() const { return m_lines; }

private:
    std::vector<std::string> m_lines;
};

/// One buffer from the node and what comes of it.
struct Exchange {
    std::string name;
    std::string request; ///< hexadecimal digits
    Outcome outcome = {};
    std::string given = {}; ///< merge patch of the platform state, before; injections of it end with the exchange
    unsigned device = 0;
};

/// The whole module on the simulated platform, in this process. The test's thread is the framework's, called "main".
/// A platform of two channels has two radios of which no value is the same, so that an answer of the wrong one shows;
/// but both are up, active, without loops.
class ModuleTest : public testing::Test {
protected:
    struct Setup {
        unsigned channels = 2;                            ///< radios of the platform
        std::optional<unsigned char> moduleChannels = {}; ///< channel count of the module; by default the same
        std::string state = "{}";                         ///< merge patch, before anything is created
        const char* mmuAddress = "127.0.0.1";
        int traceLevel = 6;
    };

    ModuleTest();
    ~ModuleTest() override;

    /// Creates and initialises the module.
    void start(const Setup& setup);
    void start() { start(Setup{}); }

    /// The same with a node that has told its capabilities and put the unit in service, in slot 3.
    void startInService(std::int64_t capabilityEH, const Setup& setup);
    void startInService(std::int64_t capabilityEH = 0) { startInService(capabilityEH, Setup{}); }

    /// Stops the platform, destroys the module and unloads it.
    void stop();

    LoadedModule& module() { return *m_module; }

    /// Hands a buffer to the module as the driver does.
    bool deliver(const std::string& hexDigits, unsigned device = 0);

    /// Returns when the module has processed what has been delivered. Only while its reader runs.
    void settle();

    void deliverAndSettle(const std::string& hexDigits, unsigned device = 0);

    /// Whether the module still answers a self test.
    bool answersSelfTest();

    void runAll(std::span<const Exchange> exchanges);
    void runOne(const Exchange& exchange) { runAll({&exchange, 1}); }

    /// Lets something happen and compares what comes of it.
    void expectOutcome(const std::string& name, const std::function<void()>& event, const Outcome& expected);

    /// Lets the journal tell from now on what changes in the state of the link: "gate open", "whitelist on", "slot 3",
    /// "sender 7".
    void watchLink();

    /// All that the module has done since the last time that this was asked, in its order.
    std::vector<JournalEntry> newEntries() { return m_journal.takeAll(); }

    /// What the module has sent since the last time that this was asked; the same for the two below.
    std::vector<std::string> newlySent();
    std::vector<std::string> newCalls(bool withSending = false);

    /// @param alsoLines lines of level 5 and 6 that are wanted
    std::vector<std::string> newTrace(const std::vector<std::string>& alsoLines = {});

    void patch(const std::string& mergePatch) { platform.patchState(simulated::Json::parse(meant(mergePatch))); }
    void endInjections();

    template <class Condition>
    static bool comesTrue(Condition condition)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            std::this_thread::yield();
        }
        return true;
    }

    /// The platform's records since its start. A list of its own, so that a loop over it is safe.
    simulated::Json allCalls() const { return platform.calls(0)["calls"]; }
    simulated::Json allTraceLines() const { return platform.traceLines(0)["lines"]; }

    /// Whether the module is inside of a platform operation that has this name.
    bool isUnderWay(const std::string& interface, const std::string& operation) const;

    simulated::Platform& platform = simulated::Platform::instance();

    /// What a text of a test case means here: in tests that run for each channel, `$` is the channel's number and `@`
    /// its index.
    virtual std::string meant(std::string text) const { return text; }

    simulated::Json stateAtStart; ///< of the platform, when the module was initialised

private:
    Journal m_journal;
    std::optional<LoadedModule> m_module;
};

/// A test that runs for either channel of a unit with two radios. Its cases are written once: `ct` is the channel, and in
/// names, given states and outcomes `$` stands for its number and `@` for its index. In the end the other channel has
/// neither been asked nor changed.
class ChannelTest : public ModuleTest, public testing::WithParamInterface<std::int32_t> {
protected:
    void TearDown() override;
    std::string meant(std::string text) const override;

    /// A request for channel numbers that no unit has: all get the answer and the line, in which `#` is the number.
    /// @param answerId empty where there is no answer
    void expectForWrongChannels(const std::string& requestId, const std::string& requestBody,
                                const std::string& answerId, const std::string& answerBody, const std::string& line);

    /// What is expected of channel 1, or of channel 2.
    template <class T>
    T ofChannel(T first, T second) const
    {
        return ct == 1 ? first : second;
    }

    const std::int32_t ct = GetParam();
    const EChannelSelector channelOfTest{static_cast<std::uint32_t>(ct)};
};

/// Runs the tests of a class derived from ChannelTest for both channels.
#define FOR_EACH_CHANNEL(Suite)                                                                                        \
    INSTANTIATE_TEST_SUITE_P(OnChannel, Suite, testing::Values(1, 2), testing::PrintToStringParamName())

/// Request with which the node announces its capabilities.
std::string selfTest(std::int64_t type, std::int64_t capabilityEH);

/// State of the modem unit, for slot 3.
std::string mmuState(std::int64_t state);

/// The line that refuses to use an interface that is missing.
std::string missing(const std::string& method, const std::string& interface);
