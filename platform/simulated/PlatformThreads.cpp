#include "PlatformThreads.h"

#include "SimulatedPlatform.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

#include <pthread.h>

namespace simulated {

namespace {

constexpr const char* stoppedText = "the platform is stopped; start it anew to run something on its threads";

} // namespace

PlatformThreads::~PlatformThreads()
{
    close();
}

std::future<void> PlatformThreads::run(std::function<void()> function)
{
    joinFinished();
    auto task = std::make_shared<std::packaged_task<void()>>(std::move(function));
    std::future<void> result = task->get_future();

    const std::lock_guard lock{m_mutex};
    if (!m_open) {
        throw std::runtime_error{stoppedText};
    }
    const unsigned number = takeNumber();
    try {
        m_threads.emplace_back([this, number, task] {
            const std::string name = "platform-" + std::to_string(number);
            pthread_setname_np(pthread_self(), name.c_str());
            nameThisThread(name);
            (*task)();
            finished(number);
        });
    } catch (const std::system_error&) {
        m_numbers.erase(number);
        throw;
    }
    ++m_running;
    return result;
}

bool PlatformThreads::enter(const std::function<bool()>& event)
{
    {
        const std::lock_guard lock{m_mutex};
        if (!m_open) {
            return false;
        }
        ++m_running;
    }
    struct Departure {
        PlatformThreads& threads;
        ~Departure()
        {
            const std::lock_guard lock{threads.m_mutex};
            --threads.m_running;
            threads.m_changed.notify_all();
        }
    };
    const Departure departure{*this};
    return event();
}

void PlatformThreads::close()
{
    std::vector<std::thread> threads;
    {
        std::unique_lock lock{m_mutex};
        m_open = false;
        m_changed.wait(lock, [this] { return m_running == 0; });
        threads.swap(m_threads);
        m_finished.clear();
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

void PlatformThreads::open()
{
    const std::lock_guard lock{m_mutex};
    m_open = true;
}

unsigned PlatformThreads::takeNumber()
{
    unsigned number = 1;
    while (m_numbers.count(number) != 0) {
        ++number;
    }
    m_numbers.insert(number);
    return number;
}

void PlatformThreads::finished(unsigned number)
{
    const std::lock_guard lock{m_mutex};
    m_numbers.erase(number);
    m_finished.push_back(std::this_thread::get_id());
    --m_running;
    m_changed.notify_all();
}

void PlatformThreads::joinFinished()
{
    std::vector<std::thread> ended;
    {
        const std::lock_guard lock{m_mutex};
        for (const std::thread::id id : m_finished) {
            const auto thread =
                std::find_if(m_threads.begin(), m_threads.end(), [&](const auto& t) { return t.get_id() == id; });
            if (thread != m_threads.end()) {
                ended.push_back(std::move(*thread));
                m_threads.erase(thread);
            }
        }
        m_finished.clear();
    }
    for (std::thread& thread : ended) {
        thread.join();
    }
}

} // namespace simulated
