#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace radiounit {

/// The driver's receive context: one thread that works off deliveries, one at a time and in order. Everything but
/// `join` may be called from any thread.
class DriverThread {
public:
    DriverThread() = default;
    DriverThread(const DriverThread&) = delete;
    DriverThread& operator=(const DriverThread&) = delete;
    ~DriverThread();

    /// Begins with what has been put in so far.
    void start();

    void put(std::function<void()> delivery);

    /// No delivery begins after this. One that is under way may still take its time: the receiver lets it go.
    void stop();

    void join();

private:
    void run();

    std::mutex m_mutex; ///< guards the two members below; never held during a delivery
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_deliveries;
    bool m_stopped = false;
    std::thread m_thread;
};

} // namespace radiounit
