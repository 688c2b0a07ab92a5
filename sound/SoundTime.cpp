#include "sound/SoundTime.h"

#include <condition_variable>
#include <mutex>

namespace vyr
{
double SteadySeconds()
{
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

void PauseUnlessStopped(const std::stop_token &stop, std::chrono::milliseconds length)
{
    std::mutex mutex;
    std::condition_variable_any asked;
    std::unique_lock lock(mutex);
    asked.wait_for(lock, stop, length, [] { return false; });
}
} // namespace vyr
