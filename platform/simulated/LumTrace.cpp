#include "LumTrace.h"

#include "TraceLog.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <chrono>
#include <string>

using simulated::TraceLog;

namespace {

/// ISO 8601 in UTC, to the microsecond.
std::string timeText(std::chrono::system_clock::time_point time)
{
    const auto sinceEpoch = std::chrono::duration_cast<std::chrono::microseconds>(time.time_since_epoch());
    const auto fraction = sinceEpoch - std::chrono::floor<std::chrono::seconds>(sinceEpoch);
    return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:06}Z", fmt::gmtime(std::chrono::system_clock::to_time_t(time)),
                       fraction.count());
}

std::string_view baseName(std::string_view path)
{
    return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

std::string_view textOf(const char* text)
{
    return text == nullptr ? std::string_view{} : std::string_view{text};
}

} // namespace

LumTrace::LumTrace(const char* tag, int level) : m_tag{textOf(tag)}, m_level{level}
{
    TraceLog::instance().add(*this);
}

LumTrace::~LumTrace()
{
    TraceLog::instance().remove(*this);
}

void LumTrace::write(int level, const char* file, int line, const char* method, std::string_view text) const
{
    if (!enabled(level)) {
        return;
    }
    TraceLog::instance().write({timeText(std::chrono::system_clock::now()), level, m_tag,
                                std::string{baseName(textOf(file))}, line, std::string{textOf(method)},
                                std::string{text}});
}
