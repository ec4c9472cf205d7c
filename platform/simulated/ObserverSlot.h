#pragma once

#include "Json.h"
#include "SimulatedPlatform.h"

#include <functional>
#include <memory>
#include <mutex>

namespace simulated {

/// Who hears of each record in the moment in which it comes about. All operations may be called from any thread.
class ObserverSlot {
public:
    static ObserverSlot& instance();

    void set(Platform::Observer observer);

    /// @param makeRecord called only when somebody listens
    template <class MakeRecord>
    void tell(Platform::RecordKind kind, MakeRecord makeRecord) const
    {
        if (const auto observer = current()) {
            (*observer)(kind, makeRecord());
        }
    }

private:
    std::shared_ptr<const Platform::Observer> current() const;

    mutable std::mutex m_mutex; ///< guards the pointer; not held while the observer runs
    std::shared_ptr<const Platform::Observer> m_observer;
};

} // namespace simulated
