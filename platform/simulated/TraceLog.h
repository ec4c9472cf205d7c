#pragma once

#include "Json.h"
#include "RecordRing.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class LumTrace;

namespace simulated {

/// All trace objects of the process and the lines that they write. Never destroyed, since trace objects are static: some
/// are there before main() and after it. All operations may be called from any thread.
class TraceLog {
public:
    static TraceLog& instance();

    struct Line {
        std::string time;
        int level = 0;
        std::string tag;
        std::string file;
        int line = 0;
        std::string method;
        std::string text;
    };

    /// Keeps track of a trace object until it is removed, and starts it at the level asked for all objects, if any.
    void add(LumTrace& trace);
    void remove(LumTrace& trace);

    void write(Line line);

    /// @see Platform::setTraceLevel
    std::size_t setLevel(const std::string& tag, int level);
    std::vector<std::string> tags() const;
    void setPrinting(bool on);

    Json since(std::uint64_t number) const;

    /// Forgets the lines and puts every object back to the level that it was created with.
    void reset();

private:
    static void describe(Json& entry, const Line& line);

    struct Object {
        LumTrace* trace;
        int createdWith;
    };

    mutable std::mutex m_objectsMutex; ///< guards the following two
    std::vector<Object> m_objects;
    std::optional<int> m_levelForAll;

    std::mutex m_writeMutex; ///< held while a line is kept and printed, so that both have the same order
    bool m_printing = true;  ///< guarded by it

    mutable std::mutex m_linesMutex; ///< guards the lines; not held while printing, which may block
    RecordRing<Line> m_lines;
};

/// The line as it goes to stderr: its header, then the text, in which control characters other than line breaks are
/// escaped.
std::string printedForm(const TraceLog::Line& line, std::string_view thread);

} // namespace simulated
