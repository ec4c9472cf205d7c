#include "ModuleSlot.h"

namespace radiounit {

void ModuleSlot::put(IVornipcAdapter& module, int initResult)
{
    const std::lock_guard lock{m_mutex};
    m_module = &module;
    m_initResult = initResult;
    m_changed.notify_all();
}

void ModuleSlot::close()
{
    const std::lock_guard lock{m_mutex};
    m_closed = true;
    m_changed.notify_all();
}

bool ModuleSlot::settled()
{
    const std::lock_guard lock{m_mutex};
    return m_module != nullptr || m_closed;
}

ModuleSlot::Initialised ModuleSlot::await()
{
    std::unique_lock lock{m_mutex};
    m_changed.wait(lock, [this] { return m_module != nullptr || m_closed; });
    if (m_closed) {
        throw NeverCame{};
    }
    return {*m_module, m_initResult};
}

} // namespace radiounit
