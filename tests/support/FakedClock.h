#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

/// Wall-clock time that only the test moves. While an object lives, at most one, `std::chrono::system_clock` stands still
/// in this process, and waits with a wall-clock deadline (`std::condition_variable::wait_until`) go by it. Other clocks,
/// and waits by them, are as ever. Make it before the threads that are to go by it.
///
/// The test program defines `clock_gettime` and `pthread_cond_timedwait` for this, so nothing under test needs a seam for
/// its time. On 32-bit machines these are the names only while `time_t` has 32 bits, as it has here.
class FakedClock {
public:
    using Time = std::chrono::system_clock::time_point;

    explicit FakedClock(Time start = std::chrono::system_clock::now());
    FakedClock(const FakedClock&) = delete;
    FakedClock& operator=(const FakedClock&) = delete;

    /// Gives real time back; waits in progress go on by it.
    ~FakedClock();

    /// Moves the time and wakes every thread whose deadline has come. What such a thread waits with must live until it
    /// has woken.
    void advance(std::chrono::milliseconds by);

    /// Lets real time pass until just so many threads wait for a deadline that has not come yet.
    /// @return false when that has not been so within 10 s
    bool waitUntilWaiting(std::size_t count);

    /// How far off the deadlines are, the next one first.
    std::vector<std::chrono::nanoseconds> deadlines();
};
