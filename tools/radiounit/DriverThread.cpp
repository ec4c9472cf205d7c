#include "DriverThread.h"

#include <pthread.h>

namespace radiounit {

DriverThread::~DriverThread()
{
    stop();
    join();
}

void DriverThread::start()
{
    m_thread = std::thread{[this] {
        pthread_setname_np(pthread_self(), "ripc-receive");
        run();
    }};
}

void DriverThread::put(std::function<void()> delivery)
{
    const std::lock_guard lock{m_mutex};
    m_deliveries.push_back(std::move(delivery));
    m_wake.notify_one();
}

void DriverThread::stop()
{
    const std::lock_guard lock{m_mutex};
    m_stopped = true;
    m_wake.notify_one();
}

void DriverThread::join()
{
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void DriverThread::run()
{
    std::unique_lock lock{m_mutex};
    for (;;) {
        m_wake.wait(lock, [this] { return m_stopped || !m_deliveries.empty(); });
        if (m_stopped) {
            return;
        }
        const auto delivery = std::move(m_deliveries.front());
        m_deliveries.pop_front();
        lock.unlock();
        delivery();
        lock.lock();
    }
}

} // namespace radiounit
