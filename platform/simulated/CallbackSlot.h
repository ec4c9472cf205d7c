#pragma once

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace simulated {

/// A callback that the module has registered. Calls run outside the lock and may overlap; whoever exchanges the callback
/// waits for those in flight, its own excepted, so that it may be destroyed afterwards.
template <class Callback>
class CallbackSlot {
public:
    void set(Callback* callback)
    {
        std::unique_lock lock{m_mutex};
        m_callback = callback;
        m_ended.wait(lock, [&] { return onlyThisThreadCalls(); });
    }

    /// @return false, and nothing is called, when nobody has registered
    template <class Function>
    bool call(Function&& function)
    {
        std::unique_lock lock{m_mutex};
        Callback* const callback = m_callback;
        if (callback == nullptr) {
            return false;
        }
        m_callers.push_back(std::this_thread::get_id());
        lock.unlock();
        const Departure departure{*this};
        std::forward<Function>(function)(*callback);
        return true;
    }

private:
    struct Departure {
        CallbackSlot& slot;

        explicit Departure(CallbackSlot& ofSlot) : slot{ofSlot} {}
        Departure(const Departure&) = delete;
        Departure& operator=(const Departure&) = delete;

        ~Departure()
        {
            const std::lock_guard lock{slot.m_mutex};
            slot.m_callers.erase(std::find(slot.m_callers.begin(), slot.m_callers.end(), std::this_thread::get_id()));
            slot.m_ended.notify_all();
        }
    };

    bool onlyThisThreadCalls() const
    {
        return std::all_of(m_callers.begin(), m_callers.end(),
                           [self = std::this_thread::get_id()](std::thread::id caller) { return caller == self; });
    }

    std::mutex m_mutex; ///< guards the following; never held while the callback runs
    std::condition_variable m_ended;
    Callback* m_callback = nullptr;
    std::vector<std::thread::id> m_callers;
};

} // namespace simulated
