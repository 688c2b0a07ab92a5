#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>

namespace vyr
{
/// Sleeps for `length`, or until somebody asks this thread to stop: whoever joins it has not to
/// wait.
inline void PauseUnlessStopped(const std::stop_token &stop, std::chrono::milliseconds length)
{
    std::mutex mutex;
    std::condition_variable_any asked;
    std::unique_lock lock(mutex);
    asked.wait_for(lock, stop, length, [] { return false; });
}
} // namespace vyr
