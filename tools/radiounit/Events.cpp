#include "Events.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <functional>
#include <future>
#include <string_view>

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

const EventArgument ct{"ct", Kind::i32};

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
        {"bpmCommand", {{"data", Kind::bytes}}, bpmCommand},
        {"npuSyslog", {{"text", Kind::text}, {"ct", Kind::i32, true}}, npuSyslog},
        {"setOutgoingIpcMessagesAllowed",
         {{"on", Kind::flag}},
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
