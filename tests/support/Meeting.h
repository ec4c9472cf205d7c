#pragma once

#include <atomic>
#include <functional>
#include <latch>
#include <thread>
#include <vector>

/// Runs the functions at the same time, each on a thread of its own. Returns when all are done.
inline void meet(const std::vector<std::function<void()>>& functions)
{
    std::latch start(static_cast<std::ptrdiff_t>(functions.size()));
    std::vector<std::thread> threads;
    for (const auto& function : functions) {
        threads.emplace_back([&start, &function] {
            start.arrive_and_wait();
            function();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// The same function 300 times, with the number of the call.
inline std::function<void()> often(const std::function<void(int)>& function)
{
    return [function] {
        for (int i = 0; i < 300; ++i) {
            function(i);
        }
    };
}

/// Two functions that are called again and again, until either has been called 300 times: the faster one goes on while
/// the other still comes, since ThreadSanitizer forgets what lies far back.
inline void meetAgainAndAgain(const std::function<void(int)>& one, const std::function<void(int)>& other)
{
    std::atomic<int> busy = 2; // relaxed, so that it puts neither in order
    const auto until = [&busy](const std::function<void(int)>& function) {
        return [&busy, &function] {
            for (int i = 0; i < 300 || busy.load(std::memory_order_relaxed) > 0; ++i) {
                function(i);
                if (i == 299) {
                    busy.fetch_sub(1, std::memory_order_relaxed);
                }
            }
        };
    };
    meet({until(one), until(other)});
}
