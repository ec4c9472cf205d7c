#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <utility>

namespace vrel::kro::framework::gcl {

/// Mailbox of capacity one between threads. Any number of threads may put and get at a time; mails are not ordered among
/// several putters. After `close` nobody waits any more.
template <class T>
class Mailbox {
public:
    using Timeout = std::chrono::duration<std::int64_t, std::milli>;

    /// Moves `mail` into the slot as soon as it is free.
    /// @return false, with `mail` as it was, when the slot has not become free within the time-out or the box is closed
    bool putMail(T& mail, Timeout timeout)
    {
        std::unique_lock lock(m_mutex);
        if (!waitFor(m_slotFree, lock, timeout, false)) {
            return false;
        }
        m_slot = std::move(mail);
        m_full = true;
        m_mailAvailable.notify_one(); // under the lock: the waiter may end the box's life as soon as it runs
        return true;
    }

    /// Moves the slot's mail into `mail`, whose former content is released, as soon as there is one.
    /// @return false, with `mail` as it was, when none has come within the time-out or the box is closed
    bool getMail(T& mail, Timeout timeout)
    {
        std::unique_lock lock(m_mutex);
        if (!waitFor(m_mailAvailable, lock, timeout, true)) {
            return false;
        }
        mail = std::move(m_slot);
        m_slot = T{};
        m_full = false;
        m_slotFree.notify_one();
        return true;
    }

    /// Ends all waiting, now and later. What lies in the slot stays there.
    void close()
    {
        const std::scoped_lock lock(m_mutex);
        m_closed = true;
        m_mailAvailable.notify_all();
        m_slotFree.notify_all();
    }

    bool closed() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_closed;
    }

private:
    /// Deadlines are wall-clock times.
    bool waitFor(std::condition_variable& condition, std::unique_lock<std::mutex>& lock, Timeout timeout, bool full)
    {
        const auto ready = [this, full] { return m_closed || m_full == full; };
        if (!ready()) {
            condition.wait_until(lock, std::chrono::system_clock::now() + timeout, ready);
        }
        return !m_closed && m_full == full;
    }

    mutable std::mutex m_mutex; ///< guards all below; never held while a mail is processed
    std::condition_variable m_mailAvailable;
    std::condition_variable m_slotFree;
    bool m_full = false;
    bool m_closed = false;
    T m_slot{};
};

} // namespace vrel::kro::framework::gcl
