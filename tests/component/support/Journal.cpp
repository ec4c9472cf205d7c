#include "support/Journal.h"

#include "LineTable.h"
#include "support/Wire.h"

#include <gtest/gtest.h>

#include <iterator>
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

/// Cuts the message that some texts end with to its name. The messages of the PS device have theirs, with its length in
/// front, as the key of their fields.
std::string shortened(const std::string& text)
{
    const auto begin = text.find('{');
    const Json message = begin != std::string::npos ? Json::parse(text.substr(begin), nullptr, false) : Json();
    if (!message.is_object() || message.size() < 2) {
        return text;
    }
    const std::string key = std::next(message.begin()).key();
    const std::string name = key == "name" ? message["name"].get<std::string>() : key;
    return text.substr(0, begin) + name.substr(name.find_first_not_of("0123456789"));
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
        } else {
            addTrace(record);
        }
    });
}

void Journal::end()
{
    auto& platform = simulated::Platform::instance();
    platform.setObserver({});
    platform.driver().setTransmitter({});
    const std::lock_guard lock(m_mutex);
    m_state = {};
    for (const auto& [tag, level, method, text] : m_linesSeen) {
        const std::string fault = faultOfTraceLine(tag, level, method, text);
        EXPECT_TRUE(fault.empty()) << "tests/protocol/lines.txt: " << fault << " for\n"
                                   << tag << "  " << level << "  " << method << "  \"" << text << '"';
    }
    m_linesSeen.clear();
}

void Journal::addTrace(const Json& line)
{
    const std::string family = "KRO.VORNIPC.";
    const auto tag = line["tag"].get<std::string>();
    if (!tag.starts_with("KRO")) {
        return; // the platform's own
    }
    const int level = line["level"].get<int>();
    const auto method = line["method"].get<std::string>();
    const std::string text = shortened(line["text"].get<std::string>());
    const std::string area = tag.starts_with(family) ? tag.substr(family.size()) : tag;
    add({Kind::trace, std::to_string(level) + " " + method + ": " + text, level, area});
    const std::lock_guard lock(m_mutex);
    m_linesSeen.emplace(area, level, method, text);
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
    noteState();
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
