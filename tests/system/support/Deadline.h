#pragma once

#include <chrono>

/// A point in time until which something is waited for.
class Deadline {
public:
    explicit Deadline(std::chrono::milliseconds patience) : m_end{std::chrono::steady_clock::now() + patience} {}

    /// What is left, for poll(2); 0 when it has passed.
    int milliseconds() const
    {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(m_end - std::chrono::steady_clock::now()).count();
        return left > 0 ? static_cast<int>(left) : 0;
    }

    bool passed() const { return milliseconds() == 0; }

private:
    std::chrono::steady_clock::time_point m_end;
};

/// Long enough for anything that works, also under a sanitizer on a busy machine.
inline constexpr std::chrono::milliseconds patience{20000};
