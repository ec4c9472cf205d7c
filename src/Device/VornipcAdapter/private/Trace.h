#pragma once

#include <cstdint>
#include <ios>
#include <locale>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>

#include "LumTrace.h"

namespace kro::device::vornipc {

/// Levels of the trace library, from what somebody has to act on to message dumps.
enum class TraceLevel : int { Error = 1, Warning = 2, Event = 3, Action = 4, Call = 5, Dump = 6 };

/// Place in the source that a trace line tells in its header. Taken by default arguments: a function that traces for its
/// caller has a parameter `CallSite site = CallSite::here()` and passes it on.
struct CallSite {
    const char* file;
    int line;
    const char* method;

    static constexpr CallSite here(const char* file = __builtin_FILE(), int line = __builtin_LINE(),
                                   const char* method = __builtin_FUNCTION())
    {
        return {file, line, method};
    }
};

/// One trace line in the making. It takes text only while its level is on, and writes itself at the end of its life.
class TraceLine {
public:
    /// @param trace where the line goes; null: nowhere, and nothing put into it is formatted
    TraceLine(const LumTrace* trace, TraceLevel level, const CallSite& site)
        : m_trace(trace), m_level(level), m_site(site)
    {
        if (m_trace != nullptr) {
            m_text = std::make_unique<std::ostringstream>();
            m_text->imbue(std::locale::classic()); // the process may have set another one
        }
    }
    TraceLine(const TraceLine&) = delete;
    TraceLine& operator=(const TraceLine&) = delete;
    ~TraceLine()
    {
        if (m_trace != nullptr) {
            write();
        }
    }

    template <class T>
    TraceLine& operator<<(const T& value)
    {
        if (m_trace != nullptr) {
            *m_text << value;
        }
        return *this;
    }

private:
    void write() const noexcept;

    const LumTrace* m_trace;
    TraceLevel m_level;
    CallSite m_site;
    std::unique_ptr<std::ostringstream> m_text;
};

/// The trace object of a source file, at level 3 until somebody turns it up. May be used from any thread.
class Trace {
public:
    explicit Trace(const char* tag) : m_lumTrace(tag) {}

    /// For text that takes more than a line's operators to compose.
    bool enabled(TraceLevel level) const { return m_lumTrace.enabled(static_cast<int>(level)); }

    /// A line of the given level. Costs one comparison while the level is off.
    TraceLine at(TraceLevel level, const CallSite& site = CallSite::here()) const
    {
        return {enabled(level) ? &m_lumTrace : nullptr, level, site};
    }

private:
    LumTrace m_lumTrace;
};

struct Hex {
    std::uint32_t number;
};

/// Prints a number in lower-case hexadecimal digits and leaves the stream's flags as they were.
constexpr Hex hex(std::uint32_t number)
{
    return {number};
}

inline std::ostream& operator<<(std::ostream& os, Hex value)
{
    const std::ios_base::fmtflags flags = os.flags();
    os << std::hex << std::nouppercase << std::noshowbase << value.number;
    os.flags(flags);
    return os;
}

} // namespace kro::device::vornipc
