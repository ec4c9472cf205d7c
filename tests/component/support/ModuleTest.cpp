#include "support/ModuleTest.h"

#include <algorithm>

using simulated::Json;

namespace {

/// What the radio of channel 2 has that the one of channel 1, which keeps the platform's defaults, has not.
constexpr const char* secondRadio = R"({"channels":{"2":{
    "radio":{"temperature":44,"transmitterState":5,"rfPower":{"output":17,"input":-523},"selectedSubBand":6,
        "compatibilityCodes":[21,23,20,24,25,71,26,33,27,28,29,30],"subBands":[6,5,4,9],
        "inventory":{"productName":"Simulated radio 23 GHz","hwProductNumber":"SIM 100 23/4","hwRevision":"R4C",
            "swProductNumber":"SIM 200 23","swRevision":"R5D06","resetType":2,"supplyVoltage":4}},
    "channelPlan":{"frequencyBand":23,"subBand":6,"stepSize":500,"rfBaseTxFrequency":21200000,
        "rfBaseRxFrequency":22432000,"rfStepLimitLowTx":20,"rfStepLimitHighTx":980,"rfStepLimitLowRx":30,
        "rfStepLimitHighRx":990},
    "rfLoopAvailable":false,"acm":{"engineEnabled":false,"min":41,"max":111},
    "frequency":{"tx":21300000,"rx":22532000},
    "systemPower":{"referenceSec":5,"transmitterOff":true,"atpcTarget":-4700,"minOutputPower":300,
        "maxOutputPower":1700,"inputPowerThreshold":-7300},
    "outputPower":{"highestModulationBit":2048,"minOutputPower":-300,"highPowerReduction":100,
        "pairs":[[31,2310],[41,2120],[51,2030],[61,1940],[71,1850],[81,1760],[91,1670],[101,1580],[111,1490],
            [121,1400]]},
    "taps":true,"radioFrameId":2,"txMaxAcmLimit":27}}})";

void append(std::vector<std::string>& lines, const std::vector<std::string>& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
}

} // namespace

Outcome::Outcome(std::initializer_list<Lines> parts)
{
    for (const Lines& part : parts) {
        append(m_lines, part.lines);
    }
}

ModuleTest::ModuleTest()
{
    simulated::nameThisThread("main");
}

ModuleTest::~ModuleTest()
{
    stop();
}

void ModuleTest::start(const Setup& setup)
{
    stop();
    platform.configure(setup.channels);
    platform.setTracePrinting(false);
    platform.setTraceLevel("*", setup.traceLevel);
    if (setup.channels == 2) {
        patch(secondRadio);
    }
    patch(setup.state);
    platform.start();
    m_journal.begin();
    m_journal.takeAll();
    m_module.emplace(setup.moduleChannels.value_or(static_cast<unsigned char>(setup.channels)), setup.mmuAddress);
    m_module->initialize();
    stateAtStart = platform.state();
}

void ModuleTest::startInService(std::int64_t capabilityEH, const Setup& setup)
{
    start(setup);
    deliver(selfTest(1, capabilityEH));
    deliver(mmuState(1));
    settle();
}

void ModuleTest::stop()
{
    platform.stop();
    m_journal.watch({});
    m_module.reset();
    m_journal.end();
}

bool ModuleTest::deliver(const std::string& hexDigits, unsigned device)
{
    const std::string bytes = bytesOf(hexDigits);
    return platform.driver().deliver(bytes.data(), static_cast<unsigned>(bytes.size()), device);
}

void ModuleTest::settle()
{
    // The mailbox has one slot: the second empty buffer finds it free only when the reader has fetched the first, and it
    // does that when it is done with everything before. Empty buffers themselves are ignored.
    deliver("");
    deliver("");
}

void ModuleTest::deliverAndSettle(const std::string& hexDigits, unsigned device)
{
    deliver(hexDigits, device);
    settle();
}

bool ModuleTest::answersSelfTest()
{
    settle();
    newlySent();
    deliver(selfTest(1, 0));
    settle();
    const auto sent = newlySent();
    return sent.size() == 1 && sent[0].starts_with(toNode("00200005") + head(0) + words(1));
}

void ModuleTest::runAll(std::span<const Exchange> exchanges)
{
    for (const Exchange& exchange : exchanges) {
        if (!exchange.given.empty()) {
            patch(exchange.given);
        }
        expectOutcome(
            exchange.name, [&] { deliverAndSettle(exchange.request, exchange.device); }, exchange.outcome);
        endInjections();
    }
}

void ModuleTest::expectOutcome(const std::string& name, const std::function<void()>& event, const Outcome& expected)
{
    SCOPED_TRACE(meant(name));
    m_journal.takeAll();
    event();
    std::vector<std::string> wanted = expected.lines();
    std::transform(wanted.begin(), wanted.end(), wanted.begin(), [this](const auto& line) { return meant(line); });
    std::vector<std::string> actual = newlySent();
    append(actual, newCalls());
    append(actual, newTrace(wanted));
    EXPECT_EQ(actual, wanted);
}

void ModuleTest::watchLink()
{
    m_journal.watch([this] {
        const VornipcLinkFacts facts = module()->linkFacts();
        return std::vector{std::string(facts.outgoingIpcMessagesAllowed ? "gate open" : "gate closed"),
                           std::string(facts.vornipcWhiteListActive ? "whitelist on" : "whitelist off"),
                           "slot " + std::to_string(facts.slotNumber), "sender " + std::to_string(facts.senderId)};
    });
}

std::vector<std::string> ModuleTest::newlySent()
{
    return m_journal.take(JournalEntry::Kind::frame, [](const JournalEntry& /*entry*/) { return true; });
}

std::vector<std::string> ModuleTest::newCalls(bool withSending)
{
    return m_journal.take(JournalEntry::Kind::call, [withSending](const JournalEntry& entry) {
        return withSending || !entry.line.starts_with("ripc.");
    });
}

std::vector<std::string> ModuleTest::newTrace(const std::vector<std::string>& alsoLines)
{
    constexpr int alwaysWanted = 4;
    return m_journal.take(JournalEntry::Kind::trace, [&alsoLines](const JournalEntry& entry) {
        return entry.level <= alwaysWanted ||
               std::find(alsoLines.begin(), alsoLines.end(), entry.line) != alsoLines.end();
    });
}

void ModuleTest::endInjections()
{
    const Json state = platform.state();
    for (const char* section : {"results", "resultTexts", "errorIndicators", "delaysMs"}) {
        if (state.contains(section)) {
            for (const auto& [operation, value] : state[section].items()) {
                platform.patchState({{section, {{operation, nullptr}}}});
            }
        }
    }
}

bool ModuleTest::isUnderWay(const std::string& interface, const std::string& operation) const
{
    const Json calls = allCalls();
    return std::any_of(calls.begin(), calls.end(), [&](const Json& call) {
        return call["interface"] == interface && call["operation"] == operation && !call.contains("result");
    });
}

void ChannelTest::TearDown()
{
    const int other = 3 - ct;
    const std::string number = std::to_string(other);
    EXPECT_EQ(platform.state()["channels"][number], stateAtStart["channels"][number])
        << "the other channel has changed";
    for (const Json& call : allCalls()) {
        const bool isOfOther =
            call["interface"].get<std::string>().ends_with("_" + number) || call["args"].value("channel", ct) == other;
        EXPECT_FALSE(isOfOther && call["operation"] != "registerCallback") << "the other channel was asked: " << call;
    }
}

std::string ChannelTest::meant(std::string text) const
{
    std::string result;
    for (const char character : text) {
        result += character == '$'   ? std::to_string(ct)
                  : character == '@' ? std::to_string(ct - 1)
                                     : std::string(1, character);
    }
    return result;
}

void ChannelTest::expectForWrongChannels(const std::string& requestId, const std::string& requestBody,
                                         const std::string& answerId, const std::string& answerBody,
                                         const std::string& line)
{
    for (const std::int64_t wrong : {0LL, 3LL, 4294967295LL}) {
        const std::string number = std::to_string(wrong);
        std::vector<std::string> outcome{toNode(answerId) + head(wrong) + answerBody,
                                         std::string(line).replace(line.find('#'), 1, number)};
        outcome.erase(outcome.begin(), outcome.begin() + (answerId.empty() ? 1 : 0));
        runOne({requestId + " for channel " + number, requestId + head(wrong) + requestBody, {outcome}});
    }
}

std::string selfTest(std::int64_t type, std::int64_t capabilityEH)
{
    return "00200004" + head(0) + words(type) + words(0, 0, 0, 0, 0, capabilityEH, 0, 0, 0, 0, 0, 0);
}

std::string mmuState(std::int64_t state)
{
    return "00200009" + head(0) + words(state);
}

std::string missing(const std::string& method, const std::string& interface)
{
    return "1 " + method + ": " + method + "(): " + interface + " was not found at the start, it was not called";
}
