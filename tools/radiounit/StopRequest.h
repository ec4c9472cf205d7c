#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace radiounit {

/// Somebody wants the unit to stop: a signal or the control interface. Asked from any thread, honoured by the main one.
class StopRequest {
public:
    /// The first call runs the action set by `onRequest` and wakes `wait`; further ones do nothing.
    void request();

    bool requested() const;
    void wait();

    /// What must be told at once, even while the main thread is busy. Runs here where the request has come already.
    void onRequest(std::function<void()> action);

private:
    mutable std::mutex m_mutex; ///< guards both; `m_action` is called under it, so that clearing it waits for the call
    std::condition_variable m_condition;
    bool m_requested = false;
    std::function<void()> m_action;
};

/// Turns SIGINT and SIGTERM into a stop request for as long as it lives. Create it before any other thread: all threads
/// inherit that these signals are blocked, so that none is interrupted.
class StopSignals {
public:
    explicit StopSignals(StopRequest& stop);
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;
    ~StopSignals();

private:
    std::jthread m_thread;
};

} // namespace radiounit
