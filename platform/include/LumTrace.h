#pragma once

#include "PlatformApi.h"

#include <atomic>
#include <string>
#include <string_view>

/// One source of trace lines with its own level. Levels run from 1 (errors) to 6 (message dumps); a line is written
/// when the object's level is at least the line's. All operations may be called from any thread.
class PLATFORM_API LumTrace {
public:
    /// @param tag copied; several objects may have the same one. The platform may start the object at another level
    ///            than the one given here
    explicit LumTrace(const char* tag, int level = 3);
    ~LumTrace();

    /// One relaxed read: the question to ask before a text is put together.
    bool enabled(int level) const noexcept { return level <= m_level.load(std::memory_order_relaxed); }

    /// Writes a line if its level is enabled. The text is taken as it stands, line breaks included.
    /// @param file  source file; its directories are left out
    void write(int level, const char* file, int line, const char* method, std::string_view text) const;

    void setLevel(int level) noexcept { m_level.store(level, std::memory_order_relaxed); }
    int level() const noexcept { return m_level.load(std::memory_order_relaxed); }
    const std::string& tag() const noexcept { return m_tag; }

    LumTrace(const LumTrace&) = delete;
    LumTrace& operator=(const LumTrace&) = delete;

private:
    std::string m_tag;
    std::atomic<int> m_level;
};
