#include "StopRequest.h"

#include <csignal>
#include <pthread.h>

namespace radiounit {

void StopRequest::request()
{
    const std::lock_guard lock{m_mutex};
    if (m_requested) {
        return;
    }
    m_requested = true;
    if (m_action) {
        m_action();
    }
    m_condition.notify_all();
}

bool StopRequest::requested() const
{
    const std::lock_guard lock{m_mutex};
    return m_requested;
}

void StopRequest::wait()
{
    std::unique_lock lock{m_mutex};
    m_condition.wait(lock, [this] { return m_requested; });
}

void StopRequest::onRequest(std::function<void()> action)
{
    const std::lock_guard lock{m_mutex};
    m_action = std::move(action);
    if (m_requested && m_action) {
        m_action();
    }
}

StopSignals::StopSignals(StopRequest& stop)
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    m_thread = std::jthread{[signals, &stop](const std::stop_token& ending) {
        pthread_setname_np(pthread_self(), "stop-signals");
        while (!ending.stop_requested()) {
            int number = 0;
            if (sigwait(&signals, &number) == 0 && !ending.stop_requested()) {
                stop.request();
            }
        }
    }};
}

StopSignals::~StopSignals()
{
    m_thread.request_stop();
    pthread_kill(m_thread.native_handle(), SIGINT); // wakes its sigwait
}

} // namespace radiounit
