#include "StoryTable.h"
#include "WireTable.h"
#include "support/ModuleTest.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>

using simulated::Json;

namespace {

/// Tells the stories of tests/protocol/exchanges.txt to the module and compares all that it does, in its order.
class Exchanges : public ModuleTest, public testing::WithParamInterface<int> {
protected:
    void begin(const Story& story);
    void carryOut(const Story::Deed& deed);
    void raise(const Json& event);

    /// What the module has done, as the table writes it.
    std::vector<std::string> newSteps();

    /// The same of what a story tells, in which an answer has its request's header.
    static std::vector<std::string> wantedSteps(const Story& story);
};

/// A request's header where the story does not say otherwise.
const std::string plainHeader = "slot=3 sigId=161 senderId=7 seqNr=85 spare1=90 ct=1";

/// The header's fields that a message is given.
std::string headerOf(const std::string& message)
{
    const WireTableMessage& definition = wireTableMessage(nameOfMessage(message));
    const bool ps = definition.header == "PsSignalHeader";
    const auto values = definition.decode(bytesOfMessage(message, ps ? "" : plainHeader));
    std::string header;
    for (const auto& [name, value] : values) {
        if (name.starts_with(definition.header + ".")) {
            header += " " + name + "=" + std::to_string(value);
        }
    }
    return header;
}

/// A frame in words: device, message and all fields that are not 0. Several messages have one id; the first names it.
std::string inWords(const std::string& device, const WireTableMessage& message, const std::string& bytes)
{
    std::string words = "out device=" + device + " " + message.name;
    for (const auto& [name, value] : message.decode(bytes)) {
        words += " " + name + "=" + std::to_string(value);
    }
    return words;
}

const WireTableMessage& sentMessage(std::uint32_t id)
{
    const auto& table = wireTable();
    return *std::find_if(table.begin(), table.end(),
                         [id](const auto& message) { return message.id == id && message.direction != "in"; });
}

/// A state of the link is known when the next thing is asked of the platform or leaves: the table may tell it earlier.
void settleLinkSteps(std::vector<std::string>& steps)
{
    std::vector<std::string> settled;
    std::vector<std::string> pending;
    const auto settle = [&] {
        std::sort(pending.begin(), pending.end());
        settled.insert(settled.end(), pending.begin(), pending.end());
        pending.clear();
    };
    for (const std::string& step : steps) {
        if (step.starts_with("gate ") || step.starts_with("slot ") || step.starts_with("sender ") ||
            step.starts_with("whitelist ")) {
            pending.push_back(step);
            continue;
        }
        if (step.starts_with("call ") || step.starts_with("out ")) {
            settle();
        }
        settled.push_back(step);
    }
    settle();
    steps = settled;
}

void Exchanges::begin(const Story& story)
{
    start();
    if (!story.fresh) {
        platform.radioUp(1);
        platform.radioUp(2);
        deliver(selfTest(1, std::stoi(story.capability)));
        deliver(mmuState(1));
        settle();
        module()->resetSpontaneousMessageSequenceNumber();
    }
    watchLink();
}

void Exchanges::carryOut(const Story::Deed& deed)
{
    switch (deed.kind) {
    case Story::Deed::Kind::given:
        patch(deed.text);
        break;
    case Story::Deed::Kind::message: {
        const WireTableMessage& message = wireTableMessage(nameOfMessage(deed.text));
        const bool ps = message.header == "PsSignalHeader";
        deliver((ps ? "" : word(message.id)) + hexOf(bytesOfMessage(deed.text, ps ? "" : plainHeader)), ps ? 1 : 0);
        settle();
        break;
    }
    case Story::Deed::Kind::event:
        raise(Json::parse(deed.text));
        break;
    }
}

void Exchanges::raise(const Json& event)
{
    const auto number = [&event](const char* name) { return static_cast<int>(event.at(name).get<std::int64_t>()); };
    const auto channel = [&] { return static_cast<EChannelSelector>(number("channel")); };
    const auto value = [&] { return static_cast<std::uint32_t>(number("value")); };
    const std::string data = event.contains("data") ? bytesOf(event["data"].get<std::string>()) : "";
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(data.data());
    const int length = event.contains("length") ? number("length") : static_cast<int>(data.size());
    const std::map<std::string, std::function<void()>> events{
        {"radioUp", [&] { platform.radioUp(number("ct")); }},
        {"radioDown", [&] { platform.radioDown(number("ct")); }},
        {"radioCapabilitiesAvailable", [&] { platform.radioCapabilitiesAvailable(number("ct")); }},
        {"radioOutputPowerNotification", [&] { platform.radioOutputPowerNotification(number("ct"), number("power")); }},
        {"fault",
         [&] {
             platform.fault(static_cast<std::uint8_t>(number("signal")), number("ct"), event["active"].get<bool>());
         }},
        {"bpmCommand",
         [&] {
             platform.bpmCommand({data.begin(), data.end()});
         }},
        {"hopRx", [&] { module()->notifyHopRx(channel(), length, bytes); }},
        {"hccRx",
         [&] {
             module()->notifyHccRx(channel(), number("wanOffset"), static_cast<std::uint32_t>(number("handler")),
                                   length, bytes);
         }},
        {"protectionModeOperStatus", [&] { module()->notifyProtectionModeOperStatus(channel(), value()); }},
        {"activeRadioSw", [&] { module()->notifyActiveRadioSw(channel(), value()); }},
        {"workingRxSw", [&] { module()->notifyWorkingRxSw(channel(), value()); }},
        {"setFrameFormat",
         [&] {
             module()->setFrameFormat(number("index"), number("frameId"), number("minAcm"), number("maxAcm"),
                                      number("sec"));
         }},
        {"acmCapacities",
         [&] {
             std::array<int, 30> capacities{};
             module()->getAcmCapacities(number("frameId"), capacities.data(),
                                        [](const SRadioFrameItem&, unsigned) { return true; });
         }},
        {"enableTimeStamp", [&] { module()->enableTimeStamp(event["on"].get<bool>()); }},
        {"setOutgoingIpcMessagesAllowed", [&] { module()->setOutgoingIpcMessagesAllowed(event["on"].get<bool>()); }},
        {"npuSyslog",
         [&] {
             const auto text = event["text"].get<std::string>();
             if (event.contains("ct")) {
                 module()->sendToNpuSyslog(text, RadioChannel{number("ct")});
             } else {
                 module()->sendToNpuSyslog(text);
             }
         }},
        {"testCommandTx",
         [&] {
             const Json& from = event.at("frame");
             VornipcTestCommandFrame frame;
             from.at("length").get_to(frame.length);
             from.at("slot").get_to(frame.slot);
             from.at("source").get_to(frame.source);
             from.at("dest").get_to(frame.dest);
             from.at("tmt").get_to(frame.tmt);
             from.at("operation").get_to(frame.operation);
             from.at("direction").get_to(frame.direction);
             from.at("jobId").get_to(frame.jobId);
             const std::string frameData = bytesOf(from.at("data").get<std::string>());
             std::copy(frameData.begin(), frameData.end(), frame.data.begin());
             module()->notifyTestCommandTx(channel(), frame);
         }},
    };
    events.at(event.at("event").get<std::string>())();
}

std::vector<std::string> Exchanges::newSteps()
{
    std::vector<std::string> steps;
    for (const JournalEntry& entry : newEntries()) {
        const bool ofTheRoad = entry.line.starts_with("ripc.") ||
                               entry.line.find(": Message with id ") != std::string::npos ||
                               entry.tag == "VornipcMessageClientOnTarget";
        if (ofTheRoad) {
            continue;
        }
        switch (entry.kind) {
        case JournalEntry::Kind::call:
            steps.push_back("call " + entry.line);
            break;
        case JournalEntry::Kind::link:
            steps.push_back(entry.line);
            break;
        case JournalEntry::Kind::trace: {
            const std::string step = entry.line.substr(0, 2) + entry.tag + entry.line.substr(1);
            steps.push_back(step.substr(0, step.find_last_not_of(' ') + 1));
            break;
        }
        case JournalEntry::Kind::frame: {
            const std::string bytes = bytesOf(entry.line);
            const bool ps = bytes.at(3) != 0;
            const std::size_t envelope = ps ? 4 : 8;
            const std::string id = entry.line.substr(ps ? 2 * (envelope + 20) : 8, 8);
            steps.push_back(inWords(std::to_string(bytes[3]),
                                    sentMessage(static_cast<std::uint32_t>(std::stoul(id, nullptr, 16))),
                                    bytes.substr(envelope)));
            break;
        }
        }
    }
    settleLinkSteps(steps);
    return steps;
}

std::vector<std::string> Exchanges::wantedSteps(const Story& story)
{
    std::vector<std::string> steps;
    for (const std::string& step : story.steps) {
        if (!step.starts_with("out ")) {
            steps.push_back(step);
            continue;
        }
        const std::string sent = step.substr(4);
        const Story::Deed& cause = story.deeds.back();
        const bool isAnswer = cause.kind == Story::Deed::Kind::message &&
                              wireTableMessage(nameOfMessage(cause.text)).answer == nameOfMessage(sent);
        const WireTableMessage& message = wireTableMessage(nameOfMessage(sent));
        steps.push_back(inWords(sent.starts_with("device=1") ? "1" : "0", sentMessage(message.id),
                                bytesOfMessage(sent, isAnswer ? headerOf(cause.text) : "")));
    }
    settleLinkSteps(steps);
    return steps;
}

TEST_P(Exchanges, HappenStepByStep)
{
    for (const Story& story : storiesOfChannel(GetParam())) {
        SCOPED_TRACE(story.title);
        begin(story);
        newEntries();
        for (const Story::Deed& deed : story.deeds) {
            carryOut(deed);
            if (deed.isBefore) {
                newEntries();
            }
        }
        EXPECT_EQ(newSteps(), wantedSteps(story));
        if (HasFailure() && testing::GTEST_FLAG(fail_fast)) {
            return;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(OnChannel, Exchanges, testing::Values(1, 2), testing::PrintToStringParamName());

} // namespace
