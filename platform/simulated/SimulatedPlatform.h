#pragma once

#include "Json.h"
#include "PciDriver.h"
#include "PlatformApi.h"

#include "ITiDisableModulation.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <future>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// The radio platform, alive on a development machine. A module sees it through the platform's own headers; this is the
/// side of the one who runs it: the host program, and tests that load a module into their own process.
namespace simulated {

/// A patch of the platform state that was refused. The text names the path, what was wrong with it and what is right.
class PLATFORM_API StateError : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

/// Names the calling thread in call records without renaming it for the system: "main" for the framework's thread.
PLATFORM_API void nameThisThread(std::string name);

/// The one platform of the process. All operations may be called from any thread, configure() and start() excepted:
/// those belong before the module is created.
///
/// One life: configure(), patchState(), start(), create the module and run its initialisation, drive it, stop(), destroy
/// the module, driver().waitUntilIdle(), unload it. Then configure() may begin the next life.
class PLATFORM_API Platform {
public:
    static Platform& instance();

    /// Makes a fresh platform: default state, empty records, trace levels as their objects were created with, nothing
    /// registered. Stops the one before.
    /// @param channels 1 or 2
    void configure(unsigned channels);
    unsigned channels() const;

    /// Registers the interfaces that the state does not switch off; from here on the state's `interfaces` is not read.
    void start();

    /// Ends whatever the platform does by itself: no delivery of the driver begins any more, delays and restarts end at
    /// once, and no event or other platform thread runs when it returns. The module may still call the platform.
    void stop();

    // The state. -----------------------------------------------------------------------------------------------------

    Json state() const;

    /// Applies a JSON merge patch. Calls no callback.
    /// @throws StateError when any of it is unknown, of a wrong type or out of range; then nothing has been applied
    void patchState(const Json& patch);

    // What the module did. -------------------------------------------------------------------------------------------

    /// @return {"next":M,"calls":[…]} from the record number `since` on, with "dropped":K where K of them are gone
    Json calls(std::uint64_t since) const;

    /// @return the same for trace lines: {"next":M,"lines":[…]}. Texts may hold bytes that are not UTF-8: see toText()
    Json traceLines(std::uint64_t since) const;

    /// @param tag every trace object with this tag; "*" for all, those created later included
    /// @return how many objects have the level now; 0 for a tag that nobody has
    std::size_t setTraceLevel(const std::string& tag, int level);

    /// @return the tags of the trace objects that there are, each once, in alphabetical order
    std::vector<std::string> traceTags() const;

    /// Trace lines go to stderr unless this switches them off; the records are kept in either case.
    void setTracePrinting(bool on);

    enum class RecordKind { call, trace };

    /// Hears of each call and each trace line on the thread that it comes from: of a call before it takes effect, of a
    /// line when it is kept. It may ask the platform for anything and must not write trace.
    /// @param record as calls() and traceLines() have it, without its number, and of a call without its result
    using Observer = std::function<void(RecordKind kind, const Json& record)>;

    /// Replaces the observer; an empty one ends it. A record that is under way on another thread may still reach the old
    /// one.
    void setObserver(Observer observer);

    // What reaches the module. ---------------------------------------------------------------------------------------

    PciDriver& driver();

    /// What the module's factory wants from its creator.
    ITiDisableModulation& disableModulation();

    // Events: calls of the module's callbacks, on the calling thread. False (or nothing) means that nobody has registered
    // for it or that the platform is stopped; then nothing has changed either. `ct` is passed on unchecked.

    /// Sets the channel's `radio.up`, then calls.
    bool radioUp(std::int32_t ct);
    bool radioDown(std::int32_t ct);
    bool radioCapabilitiesAvailable(std::int32_t ct);
    bool radioOutputPowerNotification(std::int32_t ct, int power);
    bool fault(std::uint8_t signal, std::int32_t ct, bool active);
    /// @return 0 sent, 1 refused
    std::optional<int> bpmCommand(const std::vector<unsigned char>& command);

    /// Runs a function on a platform thread of its own, named "platform-N" with the lowest free N. What it throws comes
    /// out of the future. stop() waits for it.
    /// @throws std::runtime_error when the platform is stopped
    std::future<void> runOnPlatformThread(std::function<void()> function);

    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

private:
    Platform() = default;
    ~Platform() = default;
};

} // namespace simulated
