#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace simulated {

/// Lets everything that waits for time to pass go at once when the platform stops.
class StopSignal {
public:
    /// @return false when the platform has stopped, at once or in the meantime
    bool sleepFor(std::chrono::milliseconds duration)
    {
        std::unique_lock lock{m_mutex};
        return !m_changed.wait_for(lock, duration, [this] { return m_stopped; });
    }

    void set(bool stopped)
    {
        const std::lock_guard lock{m_mutex};
        m_stopped = stopped;
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_stopped = false;
};

} // namespace simulated
