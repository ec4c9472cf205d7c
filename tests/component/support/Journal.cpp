#include "support/Journal.h"

#include "support/Wire.h"

#include <algorithm>
#include <utility>

using simulated::Json;
using Kind = JournalEntry::Kind;

namespace {

std::string describeCall(const Json& call)
{
    std::string arguments;
    for (const Json& value : call["args"]) {
        arguments += (arguments.empty() ? "" : ", ") + (value.is_string() ? value.get<std::string>() : value.dump());
    }
    return call["interface"].get<std::string>() + "." + call["operation"].get<std::string>() + "(" + arguments + ")";
}

/// Cuts the message that some texts end with to its name. PS messages print their type under its own key.
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

} // namespace

void Journal::begin()
{
    auto& platform = simulated::Platform::instance();
    platform.driver().setTransmitter([this](const char* data, unsigned length) {
        noteState();
        add({Kind::frame, hexOf({data, length})});
        return static_cast<int>(length);
    });
    platform.setObserver([this](simulated::Platform::RecordKind kind, const Json& record) {
        if (kind == simulated::Platform::RecordKind::call) {
            noteState();
            add({Kind::call, describeCall(record)});
        } else if (const auto tag = record["tag"].get<std::string>(); tag.starts_with("KRO.VORNIPC")) {
            const int level = record["level"].get<int>();
            add({Kind::trace,
                 std::to_string(level) + " " + record["method"].get<std::string>() + ": " +
                     shortened(record["text"].get<std::string>()),
                 level, tag});
        }
    });
}

void Journal::end()
{
    auto& platform = simulated::Platform::instance();
    platform.setObserver({});
    platform.driver().setTransmitter({});
}

void Journal::watch(std::function<std::vector<std::string>()> state)
{
    auto now = state ? state() : std::vector<std::string>{};
    const std::lock_guard lock(m_mutex);
    m_state = std::move(state);
    m_lastState = std::move(now);
}

void Journal::noteState()
{
    std::function<std::vector<std::string>()> state;
    {
        const std::lock_guard lock(m_mutex);
        state = m_state;
    }
    if (!state) {
        return;
    }
    auto now = state();
    const std::lock_guard lock(m_mutex);
    for (std::size_t i = 0; i < now.size(); ++i) {
        if (now[i] != m_lastState[i]) {
            m_entries.push_back({Kind::link, now[i]});
        }
    }
    m_lastState = std::move(now);
}

void Journal::add(JournalEntry entry)
{
    const std::lock_guard lock(m_mutex);
    m_entries.push_back(std::move(entry));
}

std::vector<JournalEntry> Journal::takeAll()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_entries, {});
}

std::vector<std::string> Journal::take(Kind kind, const std::function<bool(const JournalEntry&)>& isWanted)
{
    const std::lock_guard lock(m_mutex);
    std::vector<std::string> lines;
    for (const JournalEntry& entry : m_entries) {
        if (entry.kind == kind && isWanted(entry)) {
            lines.push_back(entry.line);
        }
    }
    std::erase_if(m_entries, [kind](const JournalEntry& entry) { return entry.kind == kind; });
    return lines;
}
