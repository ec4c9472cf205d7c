#include "Core.h"

#include <utility>

namespace simulated {

Core& core()
{
    static Core& instance = *new Core; // never destroyed: static objects of a module may still call it
    return instance;
}

const LumTrace& platformTrace()
{
    static const LumTrace& trace = *new LumTrace{"PLATFORM"};
    return trace;
}

void Core::reset(unsigned channels)
{
    setInterfaces({});
    {
        const std::lock_guard lock{m_mutex};
        m_radioCallbacks.clear();
    }
    faultCallback.set(nullptr);
    bpmCallback.set(nullptr);
    driver.reset();
    state.reset(channels);
    calls.clear();
    stopping.set(false);
    threads.open();
}

CallbackSlot<IRadioCallback>& Core::radioCallback(std::int32_t channel)
{
    const std::lock_guard lock{m_mutex};
    return m_radioCallbacks[channel];
}

CallbackSlot<IRadioCallback>* Core::findRadioCallback(std::int32_t channel)
{
    const std::lock_guard lock{m_mutex};
    const auto found = m_radioCallbacks.find(channel);
    return found == m_radioCallbacks.end() ? nullptr : &found->second;
}

void Core::setRadioUp(std::int32_t channel, bool up)
{
    state.withDocument([&](Json& document) {
        if (Json* const found = findChannel(document, channel)) {
            (*found)["radio"]["up"] = up;
        }
    });
}

void Core::setInterfaces(InterfacesByName interfaces)
{
    const std::lock_guard lock{m_mutex};
    m_interfaces = std::move(interfaces);
}

std::shared_ptr<IInterface> Core::findInterface(const std::string& name)
{
    const std::lock_guard lock{m_mutex};
    const auto found = m_interfaces.find(name);
    return found == m_interfaces.end() ? nullptr : found->second;
}

} // namespace simulated
