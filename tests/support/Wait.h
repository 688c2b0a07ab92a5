#pragma once

#include <chrono>
#include <thread>

namespace test
{
/// What takes longer hangs, on the slowest and busiest machine too. No test asks for less: how long
/// something takes is no matter of theirs.
inline constexpr double hangSeconds = 600.0;

/// Looks again and again until `holds()` is true; false when it still is not after `seconds`.
template <typename Condition>
bool WaitUntil(const Condition &holds, double seconds = hangSeconds)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    while (!holds()) {
        if (Clock::now() >= end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}
} // namespace test
