#pragma once

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

/// The same function so often that it meets what another thread does as often.
inline std::function<void()> often(const std::function<void(int)>& function)
{
    return [function] {
        for (int i = 0; i < 300; ++i) {
            function(i);
        }
    };
}
