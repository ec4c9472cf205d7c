#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

namespace radiounit {

/// Threads that work off jobs. A job that only waits for something else says so with `Waiting`; then another thread may
/// take its place, so that jobs that wait never hold up those that do not.
class WorkerPool {
public:
    explicit WorkerPool(std::size_t workers) : m_workers{workers} {}
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;
    ~WorkerPool() { finish(); }

    void run(std::function<void()> job);

    /// Returns when all jobs are done; none may come in any more.
    void finish();

    /// Thrown where so many jobs wait already that one more would hold up those that do not.
    struct TooManyWaiting : std::runtime_error {
        using std::runtime_error::runtime_error;
    };

    /// Lives in a job while it waits.
    class Waiting {
    public:
        /// @throws TooManyWaiting
        explicit Waiting(WorkerPool& pool);
        Waiting(const Waiting&) = delete;
        Waiting& operator=(const Waiting&) = delete;
        ~Waiting();

    private:
        WorkerPool& m_pool;
    };

private:
    void startWhereNeeded();
    void work();

    /// Threads beyond this are not started, however many jobs wait. Our own choice.
    static constexpr std::size_t threadLimit = 256;

    const std::size_t m_workers;
    std::mutex m_mutex; ///< guards what follows; never held while a job runs
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_jobs;
    std::vector<std::thread> m_threads;
    std::size_t m_idle = 0;
    std::size_t m_waiting = 0;
    bool m_finishing = false;
};

} // namespace radiounit
