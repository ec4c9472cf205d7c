#pragma once

#include <atomic>
#include <cstdint>

namespace kro::device::vornipc {

/// Sequence numbers of spontaneous messages. The counter has 32 bits and begins again behind the last of them; its top
/// bit is always set in the number. May be used from any thread.
class SpontaneousNumbers {
public:
    /// @param first what the counter begins with
    explicit SpontaneousNumbers(std::uint32_t first = 0) : m_counter(first) {}

    /// Each count is given out once.
    std::uint32_t take() { return m_counter.fetch_add(1, std::memory_order_relaxed) | spontaneousBit; }

    /// Makes the next number 0x80000000.
    void reset() { m_counter.store(0, std::memory_order_relaxed); }

private:
    /// Tells the node that a number is the radio's own. Fixed by the node protocol.
    static constexpr std::uint32_t spontaneousBit = 0x80000000;

    std::atomic<std::uint32_t> m_counter;
};

} // namespace kro::device::vornipc
