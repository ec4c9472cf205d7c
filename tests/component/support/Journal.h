#pragma once

#include "SimulatedPlatform.h"

#include <cstddef>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <tuple>
#include <vector>

/// One thing that the module has done.
struct JournalEntry {
    enum class Kind { frame, call, trace, link };

    Kind kind;
    /// frame: hexadecimal digits. call: "IRadio_1.setRfLoop(true)". trace: "1 onRAUState: text", which is level, method
    /// and text, a message in the text cut to its name. link: "gate open".
    std::string line;
    int level = 0;        ///< of a trace line
    std::string tag = {}; ///< of a trace line, behind "KRO.VORNIPC."
};

/// What the module does on the platform of this process, in one order: the frames that leave, its calls and its trace
/// lines. A trace line that the table of lines does not have, or not with this tag and level, fails the test. May be used
/// from any thread.
class Journal {
public:
    Journal() = default;
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;
    ~Journal() { end(); }

    /// Listens to the platform from now on.
    void begin();
    void end();

    /// Also notes what a function tells, each time that it is something else, before each frame and call.
    void watch(std::function<std::vector<std::string>()> state);

    /// @return all entries since the last takeAll; a state that has changed behind them is the last
    std::vector<JournalEntry> takeAll();

    /// @return the lines of one kind since the last time that this kind was taken
    std::vector<std::string> take(JournalEntry::Kind kind, const std::function<bool(const JournalEntry&)>& isWanted);

private:
    void add(JournalEntry entry);
    void addTrace(const simulated::Json& line);
    void noteState();

    std::mutex m_mutex; ///< guards all below; the watched function is called without it
    std::vector<JournalEntry> m_entries;
    std::function<std::vector<std::string>()> m_state;
    std::vector<std::string> m_lastState;
    std::set<std::tuple<std::string, int, std::string, std::string>> m_linesSeen; ///< tag, level, method, text
};
