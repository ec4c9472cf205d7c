#include "gcl/Mailbox.h"

#include <benchmark/benchmark.h>

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

// A buffer to the reader thread and back, next to the bare primitive that puts a thread to sleep and wakes it.

namespace {

using Mail = std::vector<char>;
using Box = vrel::kro::framework::gcl::Mailbox<Mail>;

constexpr Box::Timeout longEnough{30000};

void handOffThroughTheMailbox(benchmark::State& state)
{
    Box there;
    Box back;
    std::thread reader([&] {
        Mail mail;
        while (there.getMail(mail, longEnough) && !mail.empty()) {
            back.putMail(mail, longEnough);
        }
    });
    for (auto _ : state) {
        Mail mail(36);
        there.putMail(mail, longEnough);
        back.getMail(mail, longEnough);
    }
    Mail last;
    there.putMail(last, longEnough);
    reader.join();
}

/// The least that two sleeping threads need: one value, one mutex, one condition each way.
class Baton {
public:
    void give(bool goOn)
    {
        const std::scoped_lock lock(m_mutex);
        m_given = true;
        m_goOn = goOn;
        m_condition.notify_one();
    }
    bool take()
    {
        std::unique_lock lock(m_mutex);
        m_condition.wait(lock, [this] { return m_given; });
        m_given = false;
        return m_goOn;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_condition;
    bool m_given = false;
    bool m_goOn = false;
};

void handOffWithABareCondition(benchmark::State& state)
{
    Baton there;
    Baton back;
    std::thread reader([&] {
        while (there.take()) {
            back.give(true);
        }
    });
    for (auto _ : state) {
        there.give(true);
        back.take();
    }
    there.give(false);
    reader.join();
}

} // namespace

BENCHMARK(handOffWithABareCondition)->UseRealTime();
BENCHMARK(handOffThroughTheMailbox)->UseRealTime();
