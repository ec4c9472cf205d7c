#include "ObserverSlot.h"

#include <utility>

namespace simulated {

ObserverSlot& ObserverSlot::instance()
{
    static ObserverSlot& slot = *new ObserverSlot; // never destroyed: static trace objects may still write
    return slot;
}

void ObserverSlot::set(Platform::Observer observer)
{
    auto next = observer ? std::make_shared<const Platform::Observer>(std::move(observer)) : nullptr;
    const std::lock_guard lock{m_mutex};
    m_observer.swap(next);
}

std::shared_ptr<const Platform::Observer> ObserverSlot::current() const
{
    const std::lock_guard lock{m_mutex};
    return m_observer;
}

} // namespace simulated
