#include "TraceLog.h"

#include "LumTrace.h"
#include "ObserverSlot.h"
#include "ThreadNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

namespace simulated {

namespace {

bool isControl(unsigned char c)
{
    return c < 0x20 || c == 0x7F;
}

/// The terminal also obeys the control characters 0x80 to 0x9F, which are two bytes in UTF-8.
bool isLongControl(std::string_view text, std::size_t at)
{
    return static_cast<unsigned char>(text[at]) == 0xC2 && at + 1 < text.size() &&
           (static_cast<unsigned char>(text[at + 1]) & 0xE0U) == 0x80U;
}

std::string escaped(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (isLongControl(text, i)) {
            ++i;
            fmt::format_to(std::back_inserter(result), "\\u{:04x}", static_cast<unsigned char>(text[i]));
        } else if (isControl(byte) && byte != '\n') {
            fmt::format_to(std::back_inserter(result), "\\x{:02x}", byte);
        } else {
            result.push_back(text[i]);
        }
    }
    return result;
}

} // namespace

std::string printedForm(const TraceLog::Line& line, std::string_view thread)
{
    return fmt::format("{} {} {} {}:{} {} [{}] {}\n", line.time, line.level, line.tag, line.file, line.line,
                       line.method, escaped(thread), escaped(line.text));
}

TraceLog& TraceLog::instance()
{
    static TraceLog& log = *new TraceLog; // see the class
    return log;
}

void TraceLog::add(LumTrace& trace)
{
    const std::lock_guard lock{m_objectsMutex};
    m_objects.push_back({&trace, trace.level()});
    if (m_levelForAll) {
        trace.setLevel(*m_levelForAll);
    }
}

void TraceLog::remove(LumTrace& trace)
{
    const std::lock_guard lock{m_objectsMutex};
    std::erase_if(m_objects, [&](const Object& object) { return object.trace == &trace; });
}

void TraceLog::write(Line line)
{
    const std::string thread = currentThreadName();
    const std::lock_guard inOrder{m_writeMutex};
    const std::string printed = m_printing ? printedForm(line, thread) : std::string{};
    ObserverSlot::instance().tell(Platform::RecordKind::trace, [&line] {
        Json described;
        describe(described, line);
        return described;
    });
    {
        const std::lock_guard lock{m_linesMutex};
        m_lines.push(std::move(line));
    }
    std::fwrite(printed.data(), 1, printed.size(), stderr);
}

std::size_t TraceLog::setLevel(const std::string& tag, int level)
{
    const bool all = tag == "*";
    const std::lock_guard lock{m_objectsMutex};
    if (all) {
        m_levelForAll = level;
    }
    std::size_t count = 0;
    for (const Object& object : m_objects) {
        if (all || object.trace->tag() == tag) {
            object.trace->setLevel(level);
            ++count;
        }
    }
    return count;
}

std::vector<std::string> TraceLog::tags() const
{
    std::vector<std::string> list;
    {
        const std::lock_guard lock{m_objectsMutex};
        for (const Object& object : m_objects) {
            list.push_back(object.trace->tag());
        }
    }
    std::sort(list.begin(), list.end());
    list.erase(std::unique(list.begin(), list.end()), list.end());
    return list;
}

void TraceLog::setPrinting(bool on)
{
    const std::lock_guard lock{m_writeMutex};
    m_printing = on;
}

Json TraceLog::since(std::uint64_t number) const
{
    const std::lock_guard lock{m_linesMutex};
    return m_lines.since(number, "lines", describe);
}

void TraceLog::describe(Json& entry, const Line& line)
{
    entry["time"] = line.time;
    entry["level"] = line.level;
    entry["tag"] = line.tag;
    entry["file"] = line.file;
    entry["line"] = line.line;
    entry["method"] = line.method;
    entry["text"] = line.text;
}

void TraceLog::reset()
{
    {
        const std::lock_guard lock{m_objectsMutex};
        m_levelForAll.reset();
        for (const Object& object : m_objects) {
            object.trace->setLevel(object.createdWith);
        }
    }
    const std::lock_guard lock{m_linesMutex};
    m_lines = {};
}

} // namespace simulated
