#include "Events.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <functional>
#include <future>
#include <string_view>
#include <system_error>

#include "EventArguments.h"

namespace radiounit {
namespace {

using simulated::Json;
using Kind = EventArgument::Kind;

struct Event {
    std::string_view name;
    std::vector<EventArgument> arguments;
    std::function<Json(const EventTargets&, const EventArguments&)> raise;
};

/// What an event without a result answers.
Json nothing(bool somebodyRegistered = true)
{
    if (!somebodyRegistered) {
        throw NobodyRegistered{"nobody has registered for it"};
    }
    return nullptr;
}

Json bpmCommand(const EventTargets& to, const EventArguments& with)
{
    const auto result = to.platform.bpmCommand(with.bytes("data"));
    nothing(result.has_value());
    return *result;
}

Json npuSyslog(const EventTargets& to, const EventArguments& with)
{
    if (with.has("ct")) {
        to.module.sendToNpuSyslog(with.text("text"), static_cast<RadioChannel>(with.i32("ct")));
    } else {
        to.module.sendToNpuSyslog(with.text("text"));
    }
    return nothing();
}

/// Data that came over the radio link, and the length that the module is told of them.
class LinkData {
public:
    explicit LinkData(const EventArguments& with)
        : m_bytes{with.bytes("data")},
          m_length{with.has("length") ? with.i32("length") : static_cast<std::int32_t>(m_bytes.size())}
    {
        if (m_length > 0 && static_cast<std::size_t>(m_length) > m_bytes.size()) {
            m_bytes.resize(std::min(static_cast<std::size_t>(m_length), longestEventData)); // zeros behind the data
        }
    }

    int length() const { return m_length; }
    const unsigned char* data() const { return m_bytes.data(); }

private:
    std::vector<unsigned char> m_bytes;
    std::int32_t m_length;
};

EChannelSelector channelOf(const EventArguments& with)
{
    return EChannelSelector{with.word("channel")};
}

Json hopRx(const EventTargets& to, const EventArguments& with)
{
    const LinkData received{with};
    to.module.notifyHopRx(channelOf(with), received.length(), received.data());
    return nothing();
}

Json hccRx(const EventTargets& to, const EventArguments& with)
{
    const LinkData received{with};
    to.module.notifyHccRx(channelOf(with), with.i32("wanOffset"), with.word("handler"), received.length(),
                          received.data());
    return nothing();
}

Json testCommandTx(const EventTargets& to, const EventArguments& with)
{
    const EventArguments given = with.object("frame");
    const auto word = [&](std::string_view name) { return given.has(name) ? given.word(name) : 0; };
    const auto number = [&](std::string_view name) { return static_cast<std::int32_t>(word(name)); };
    VornipcTestCommandFrame frame;
    frame.length = number("length");
    frame.slot = number("slot");
    frame.source = word("source");
    frame.dest = number("dest");
    frame.tmt = number("tmt");
    frame.operation = word("operation");
    frame.direction = word("direction");
    frame.jobId = number("jobId");
    if (given.has("data")) {
        const auto data = given.bytes("data");
        std::copy(data.begin(), data.end(), frame.data.begin());
    }
    to.module.notifyTestCommandTx(channelOf(with), frame);
    return nothing();
}

Json setFrameFormat(const EventTargets& to, const EventArguments& with)
{
    return to.module.setFrameFormat(with.i32("index"), static_cast<std::int32_t>(with.word("frameId")),
                                    with.i32("minAcm"), with.i32("maxAcm"), with.i32("sec"));
}

Json acmCapacities(const EventTargets& to, const EventArguments& with)
{
    std::array<int, 30> capacities{};
    to.module.getAcmCapacities(static_cast<std::int32_t>(with.word("frameId")), capacities.data(),
                               [](const SRadioFrameItem&, unsigned) { return true; });
    return capacities;
}

const EventArgument ct{"ct", Kind::i32};
const EventArgument channel{"channel", Kind::word};
const EventArgument value{"value", Kind::word};
const EventArgument data{"data", Kind::bytes};
const EventArgument length{"length", Kind::i32, true};
const EventArgument on{"on", Kind::flag};

/// Members that are not given are 0.
const EventArgument frame{"frame",
                          Kind::object,
                          false,
                          {{"length", Kind::word, true},
                           {"slot", Kind::word, true},
                           {"source", Kind::word, true},
                           {"dest", Kind::word, true},
                           {"tmt", Kind::word, true},
                           {"operation", Kind::word, true},
                           {"direction", Kind::word, true},
                           {"jobId", Kind::word, true},
                           {"data", Kind::bytes, true, {}, sizeof(VornipcTestCommandFrame::data)}}};

/// All events: what each takes, and what it does. Channels are passed on unchecked, refusing them is the module's part.
const std::vector<Event>& allEvents()
{
    static const std::vector<Event> events{
        {"radioUp", {ct}, [](auto& to, auto& with) { return nothing(to.platform.radioUp(with.i32("ct"))); }},
        {"radioDown", {ct}, [](auto& to, auto& with) { return nothing(to.platform.radioDown(with.i32("ct"))); }},
        {"radioCapabilitiesAvailable",
         {ct},
         [](auto& to, auto& with) { return nothing(to.platform.radioCapabilitiesAvailable(with.i32("ct"))); }},
        {"radioOutputPowerNotification",
         {ct, {"power", Kind::i32}},
         [](auto& to, auto& with) {
             return nothing(to.platform.radioOutputPowerNotification(with.i32("ct"), with.i32("power")));
         }},
        {"fault",
         {{"signal", Kind::u8}, ct, {"active", Kind::flag}},
         [](auto& to, auto& with) {
             return nothing(to.platform.fault(with.u8("signal"), with.i32("ct"), with.flag("active")));
         }},
        {"bpmCommand", {data}, bpmCommand},
        {"hopRx", {channel, data, length}, hopRx},
        {"hccRx", {channel, {"wanOffset", Kind::i32}, {"handler", Kind::word}, data, length}, hccRx},
        {"testCommandTx", {channel, frame}, testCommandTx},
        {"protectionModeOperStatus",
         {channel, value},
         [](auto& to, auto& with) {
             to.module.notifyProtectionModeOperStatus(channelOf(with), with.word("value"));
             return nothing();
         }},
        {"activeRadioSw",
         {channel, value},
         [](auto& to, auto& with) {
             to.module.notifyActiveRadioSw(channelOf(with), with.word("value"));
             return nothing();
         }},
        {"workingRxSw",
         {channel, value},
         [](auto& to, auto& with) {
             to.module.notifyWorkingRxSw(channelOf(with), with.word("value"));
             return nothing();
         }},
        {"setFrameFormat",
         {{"index", Kind::i32},
          {"frameId", Kind::word},
          {"minAcm", Kind::i32},
          {"maxAcm", Kind::i32},
          {"sec", Kind::i32}},
         setFrameFormat},
        {"acmCapacities", {{"frameId", Kind::word}}, acmCapacities},
        {"enableTimeStamp",
         {on},
         [](auto& to, auto& with) {
             to.module.enableTimeStamp(with.flag("on"));
             return nothing();
         }},
        {"npuSyslog", {{"text", Kind::text}, {"ct", Kind::i32, true}}, npuSyslog},
        {"setOutgoingIpcMessagesAllowed",
         {on},
         [](auto& to, auto& with) {
             to.module.setOutgoingIpcMessagesAllowed(with.flag("on"));
             return nothing();
         }},
        {"resetSelfTestCheckPerformed",
         {},
         [](auto& to, auto&) {
             to.module.resetSelfTestCheckPerformed();
             return nothing();
         }},
        {"resetSpontaneousMessageSequenceNumber",
         {},
         [](auto& to, auto&) {
             to.module.resetSpontaneousMessageSequenceNumber();
             return nothing();
         }},
    };
    return events;
}

const Event& findEvent(const Json& event)
{
    const auto& events = allEvents();
    const auto name = event.find("event");
    if (name == event.end() || !name->is_string()) {
        throw EventError{"event: missing; expected {\"event\":NAME, ...}"};
    }
    const auto found = std::find_if(events.begin(), events.end(),
                                    [&](const Event& one) { return one.name == name->get_ref<const std::string&>(); });
    if (found == events.end()) {
        std::vector<std::string_view> names(events.size());
        std::transform(events.begin(), events.end(), names.begin(), [](const Event& one) { return one.name; });
        throw EventError{
            fmt::format("event: {} is none; there are {}", simulated::toText(*name), fmt::join(names, ", "))};
    }
    return *found;
}

} // namespace

Json raiseEvent(const EventTargets& targets, const Json& event)
{
    const Event& known = findEvent(event);
    const EventArguments arguments{event, known.arguments};

    // Nothing is thrown from one thread to the other: race detectors cannot see how exceptions count their owners.
    Json result;
    bool reached = true;
    std::string failure;
    const auto raise = [&] {
        try {
            result = known.raise(targets, arguments);
        } catch (const NobodyRegistered&) {
            reached = false;
        } catch (const std::exception& error) {
            failure = error.what();
        }
    };
    std::future<void> done;
    try {
        done = targets.platform.runOnPlatformThread(raise);
    } catch (const std::system_error&) {
        throw; // no thread left: that says nothing of who has registered
    } catch (const std::runtime_error& stopped) {
        throw NobodyRegistered{fmt::format("{}: {}", known.name, stopped.what())};
    }
    done.get();
    if (!reached) {
        throw NobodyRegistered{fmt::format("{}: nobody has registered for it", known.name)};
    }
    if (!failure.empty()) {
        throw std::runtime_error{fmt::format("{}: the module threw: {}", known.name, failure)};
    }
    return result;
}

} // namespace radiounit
