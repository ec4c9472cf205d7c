#pragma once

#include <condition_variable>
#include <functional>
#include <future>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace simulated {

/// The platform's own threads, and the door to the module's callbacks. All operations may be called from any thread.
class PlatformThreads {
public:
    /// @throws std::runtime_error when closed, std::system_error where the machine has no thread left
    std::future<void> run(std::function<void()> function);

    /// Lets somebody through to a callback while the door is open; what runs is waited for by close().
    /// @return false, and nothing is called, when closed
    bool enter(const std::function<bool()>& event);

    /// Returns when no event and no thread runs any more; none begins afterwards.
    void close();
    void open();

    ~PlatformThreads();
    PlatformThreads() = default;
    PlatformThreads(const PlatformThreads&) = delete;
    PlatformThreads& operator=(const PlatformThreads&) = delete;

private:
    unsigned takeNumber();
    void finished(unsigned number);
    void joinFinished();

    std::mutex m_mutex; ///< guards the following; never held while an event or a thread's function runs
    std::condition_variable m_changed;
    bool m_open = true;
    unsigned m_running = 0;       ///< events and threads under way
    std::set<unsigned> m_numbers; ///< of the threads under way
    std::vector<std::thread> m_threads;
    std::vector<std::thread::id> m_finished;
};

} // namespace simulated
