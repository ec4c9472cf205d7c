#include "support/ModuleTest.h"

#include <algorithm>

using simulated::Json;

namespace {

std::string describeCall(const Json& call)
{
    std::string arguments;
    for (const Json& value : call["args"]) {
        arguments += (arguments.empty() ? "" : ", ") + (value.is_string() ? value.get<std::string>() : value.dump());
    }
    return call["interface"].get<std::string>() + "." + call["operation"].get<std::string>() + "(" + arguments + ")";
}

/// Cuts the message that some texts end with to its name.
std::string shortened(const std::string& text)
{
    const auto begin = text.find('{');
    if (begin == std::string::npos) {
        return text;
    }
    const Json message = Json::parse(text.substr(begin), nullptr, false);
    return message.is_object() && message.contains("name") ? text.substr(0, begin) + message["name"].get<std::string>()
                                                           : text;
}

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
    patch(setup.state);
    platform.start();
    platform.driver().setTransmitter([this](const char* data, unsigned length) {
        const std::lock_guard lock(m_mutex);
        m_sent.push_back(hexOf({data, length}));
        return static_cast<int>(length);
    });
    m_nextCall = 0;
    m_nextLine = 0;
    newlySent();
    m_module.emplace(setup.moduleChannels.value_or(static_cast<unsigned char>(setup.channels)), setup.mmuAddress);
    m_module->initialize();
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
    m_module.reset();
    platform.driver().setTransmitter({});
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
        const auto event = [&] {
            deliver(exchange.request, exchange.device);
            settle();
        };
        expectOutcome(exchange.name, event, exchange.outcome);
        endInjections();
    }
}

void ModuleTest::expectOutcome(const std::string& name, const std::function<void()>& event, const Outcome& expected)
{
    SCOPED_TRACE(name);
    newlySent();
    newCalls();
    newTrace();
    event();
    std::vector<std::string> actual = newlySent();
    append(actual, newCalls());
    append(actual, newTrace(expected.lines()));
    EXPECT_EQ(actual, expected.lines());
}

std::vector<std::string> ModuleTest::newlySent()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_sent, {});
}

std::vector<std::string> ModuleTest::newCalls(bool withSending)
{
    const Json answer = platform.calls(m_nextCall);
    answer["next"].get_to(m_nextCall);
    std::vector<std::string> calls;
    for (const Json& call : answer["calls"]) {
        if (withSending || call["interface"] != "ripc") {
            calls.push_back(describeCall(call));
        }
    }
    return calls;
}

std::vector<std::string> ModuleTest::newTrace(const std::vector<std::string>& alsoLines)
{
    constexpr int alwaysWanted = 4;
    const Json answer = platform.traceLines(m_nextLine);
    answer["next"].get_to(m_nextLine);
    std::vector<std::string> lines;
    for (const Json& entry : answer["lines"]) {
        const std::string line = std::to_string(entry["level"].get<int>()) + " " + entry["method"].get<std::string>() +
                                 ": " + shortened(entry["text"].get<std::string>());
        const bool wanted = entry["level"].get<int>() <= alwaysWanted ||
                            std::find(alsoLines.begin(), alsoLines.end(), line) != alsoLines.end();
        if (wanted && entry["tag"].get<std::string>().starts_with("KRO.VORNIPC")) {
            lines.push_back(line);
        }
    }
    return lines;
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

std::string selfTest(std::int64_t type, std::int64_t capabilityEH)
{
    return "00200004" + head(0) + words(type) + words(0, 0, 0, 0, 0, capabilityEH, 0, 0, 0, 0, 0, 0);
}

std::string mmuState(std::int64_t state)
{
    return "00200009" + head(0) + words(state);
}
