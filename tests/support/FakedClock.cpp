#include "FakedClock.h"

#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <cstdint>
#include <ctime>
#include <mutex>

namespace {

using namespace std::chrono_literals;
using std::chrono::nanoseconds;

struct Wait {
    pthread_cond_t* condition;
    pthread_mutex_t* mutex;
    nanoseconds deadline; // since the epoch
};

std::atomic<bool> faked = false;
std::atomic<std::int64_t> fakedNanoseconds = 0; // since the epoch

std::mutex waitsMutex; // guards the list; a waiting thread's own mutex is never taken under it
std::condition_variable waitsChanged;
std::vector<const Wait*> waits; // each on the stack of who waits

nanoseconds fakedNow()
{
    return nanoseconds(fakedNanoseconds);
}

/// Wakes all threads with a deadline up to `time`. Each one's mutex is taken, so that none is missed that has entered
/// itself and does not wait yet.
void wakeUntil(nanoseconds time)
{
    std::vector<Wait> due;
    {
        const std::scoped_lock lock(waitsMutex);
        std::erase_if(waits, [&due, time](const Wait* wait) {
            if (wait->deadline <= time) {
                due.push_back(*wait);
            }
            return wait->deadline <= time;
        });
        waitsChanged.notify_all();
    }
    for (const Wait& wait : due) {
        pthread_mutex_lock(wait.mutex);
        pthread_cond_broadcast(wait.condition);
        pthread_mutex_unlock(wait.mutex);
    }
}

} // namespace

FakedClock::FakedClock(Time start)
{
    fakedNanoseconds = nanoseconds(start.time_since_epoch()).count();
    faked = true;
}

FakedClock::~FakedClock()
{
    faked = false;
    wakeUntil(nanoseconds::max());
}

void FakedClock::advance(std::chrono::milliseconds by)
{
    fakedNanoseconds += nanoseconds(by).count();
    wakeUntil(fakedNow());
}

bool FakedClock::waitUntilWaiting(std::size_t count)
{
    std::unique_lock lock(waitsMutex);
    return waitsChanged.wait_for(lock, 10s, [count] { return waits.size() == count; });
}

std::vector<nanoseconds> FakedClock::deadlines()
{
    const std::scoped_lock lock(waitsMutex);
    std::vector<nanoseconds> list;
    for (const Wait* wait : waits) {
        list.push_back(wait->deadline - fakedNow());
    }
    std::sort(list.begin(), list.end());
    return list;
}

// In the program's own symbols, these two go before the system's and the sanitizers'.

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's names are reserved
extern "C" int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    if (clock != CLOCK_REALTIME || !faked) {
        return static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    }
    const auto seconds = std::chrono::floor<std::chrono::seconds>(fakedNow());
    time->tv_sec = static_cast<std::time_t>(seconds.count());
    time->tv_nsec = static_cast<decltype(time->tv_nsec)>((fakedNow() - seconds).count());
    return 0;
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's names are reserved
extern "C" int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex, const timespec* deadline)
{
    if (!faked) {
        return pthread_cond_clockwait(condition, mutex, CLOCK_REALTIME, deadline); // the same under another name
    }
    const nanoseconds until = std::chrono::seconds(deadline->tv_sec) + nanoseconds(deadline->tv_nsec);
    const Wait self{condition, mutex, until};
    {
        const std::scoped_lock lock(waitsMutex);
        if (until <= fakedNow()) {
            return ETIMEDOUT;
        }
        waits.push_back(&self);
        waitsChanged.notify_all();
    }
    const int result = pthread_cond_wait(condition, mutex);
    {
        const std::scoped_lock lock(waitsMutex);
        std::erase(waits, &self);
        waitsChanged.notify_all();
    }
    return result == 0 && faked && until <= fakedNow() ? ETIMEDOUT : result;
}
