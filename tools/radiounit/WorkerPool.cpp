#include "WorkerPool.h"

#include <fmt/format.h>
#include <pthread.h>
#include <system_error>

namespace radiounit {

void WorkerPool::run(std::function<void()> job)
{
    const std::lock_guard lock{m_mutex};
    m_jobs.push_back(std::move(job));
    startWhereNeeded();
    m_wake.notify_one();
}

void WorkerPool::startWhereNeeded()
{
    if (m_idle >= m_jobs.size() || m_threads.size() >= m_workers + m_waiting || m_finishing) {
        return;
    }
    try {
        m_threads.emplace_back([this] {
            pthread_setname_np(pthread_self(), "control");
            work();
        });
    } catch (const std::system_error&) {
        // The machine has no thread left: the job waits for one of those that there are.
    }
}

void WorkerPool::work()
{
    std::unique_lock lock{m_mutex};
    for (;;) {
        ++m_idle;
        m_wake.wait(lock, [this] { return m_finishing || !m_jobs.empty(); });
        --m_idle;
        if (m_jobs.empty()) {
            return;
        }
        const auto job = std::move(m_jobs.front());
        m_jobs.pop_front();
        lock.unlock();
        job();
        lock.lock();
    }
}

void WorkerPool::finish()
{
    std::vector<std::thread> threads;
    {
        const std::lock_guard lock{m_mutex};
        m_finishing = true;
        threads.swap(m_threads);
        m_wake.notify_all();
    }
    for (auto& thread : threads) {
        thread.join();
    }
}

WorkerPool::Waiting::Waiting(WorkerPool& pool) : m_pool{pool}
{
    const std::lock_guard lock{m_pool.m_mutex};
    if (m_pool.m_workers + m_pool.m_waiting >= threadLimit) {
        throw TooManyWaiting{
            fmt::format("{} requests are waiting already; try again when some of them are through", m_pool.m_waiting)};
    }
    ++m_pool.m_waiting;
    m_pool.startWhereNeeded();
}

WorkerPool::Waiting::~Waiting()
{
    const std::lock_guard lock{m_pool.m_mutex};
    --m_pool.m_waiting;
}

} // namespace radiounit
