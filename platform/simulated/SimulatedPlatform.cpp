#include "SimulatedPlatform.h"

#include "Core.h"
#include "ObserverSlot.h"
#include "TraceLog.h"

#include <utility>

namespace simulated {

Platform& Platform::instance()
{
    static Platform& platform = *new Platform; // never destroyed: static objects of a module may still call it
    return platform;
}

void Platform::configure(unsigned channels)
{
    if (channels < 1 || channels > 2) {
        throw std::invalid_argument{"a simulated unit has 1 or 2 channels, not " + std::to_string(channels)};
    }
    stop();
    core().reset(channels);
    TraceLog::instance().reset();
}

unsigned Platform::channels() const
{
    return core().state.channels();
}

void Platform::start()
{
    Core& all = core();
    InterfacesByName interfaces;
    for (unsigned number = 1; number <= channels(); ++number) {
        const auto channel = static_cast<std::int32_t>(number);
        addRadio(interfaces, all, channel);
        addChannelSettings(interfaces, all, channel);
        addPowerControl(interfaces, all, channel);
    }
    addUnit(interfaces, all);

    const Json switches = state()["interfaces"];
    std::erase_if(interfaces, [&](const auto& entry) { return !switches.at(entry.first).template get<bool>(); });
    all.setInterfaces(std::move(interfaces));
}

void Platform::stop()
{
    core().driver.stop();
    core().stopping.set(true);
    core().threads.close();
}

Json Platform::state() const
{
    return core().state.snapshot();
}

void Platform::patchState(const Json& patch)
{
    core().state.patch(patch);
}

Json Platform::calls(std::uint64_t since) const
{
    return core().calls.since(since);
}

Json Platform::traceLines(std::uint64_t since) const
{
    return TraceLog::instance().since(since);
}

std::size_t Platform::setTraceLevel(const std::string& tag, int level)
{
    return TraceLog::instance().setLevel(tag, level);
}

std::vector<std::string> Platform::traceTags() const
{
    return TraceLog::instance().tags();
}

void Platform::setTracePrinting(bool on)
{
    TraceLog::instance().setPrinting(on);
}

void Platform::setObserver(Observer observer)
{
    ObserverSlot::instance().set(std::move(observer));
}

PciDriver& Platform::driver()
{
    return core().driver;
}

ITiDisableModulation& Platform::disableModulation()
{
    return *core().disableModulation;
}

std::future<void> Platform::runOnPlatformThread(std::function<void()> function)
{
    return core().threads.run(std::move(function));
}

} // namespace simulated
