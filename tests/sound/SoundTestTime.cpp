#include "tests/sound/SoundTestTime.h"

#include "sound/SoundTime.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <list>
#include <mutex>
#include <thread>

#include <unistd.h>

namespace
{
using tMicroseconds = std::int64_t; // whole ones: a pause of 4 ms is over after four times 1 ms

struct cSleeper
{
    tMicroseconds mDue;
    bool mIsAwake = false;
};

std::mutex mutex; // over what follows
std::condition_variable_any changed;
tMicroseconds now = 1'000'000'000;
std::list<cSleeper *> sleepers; // in the order in which they fell asleep

int CountThreads()
{
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return int(std::distance(begin(threads), end(threads)));
}

/// The threads that the process has without any sound: a sanitizer has one of its own, from the
/// first thread of the program on.
class cThreadsWithoutSound : public testing::Environment
{
public:
    void SetUp() override
    {
        std::filesystem::path first;
        std::thread([&] { first = "/proc/self/task/" + std::to_string(gettid()); }).join();
        while (std::filesystem::exists(first)) // a moment longer than it can be joined
            std::this_thread::yield();
        sCount = CountThreads();
    }
    static inline int sCount = 0;
};

[[maybe_unused]] const auto *const environment =
    testing::AddGlobalTestEnvironment(new cThreadsWithoutSound);

int CountSleepers()
{
    const std::lock_guard lock(mutex);
    return int(sleepers.size());
}

// A thread of the sound runs or pauses. Those that run end or fall asleep in a moment.
void WaitUntilAllSleep()
{
    while (CountThreads() - cThreadsWithoutSound::sCount != CountSleepers())
        std::this_thread::yield();
}

// The one whose pause is over first, or null when all go on after `end`.
cSleeper *FindNext(tMicroseconds end)
{
    const auto next = std::min_element(sleepers.begin(), sleepers.end(),
                                       [](auto *a, auto *b) { return a->mDue < b->mDue; });
    return next != sleepers.end() && (*next)->mDue <= end ? *next : nullptr;
}

// False when no pause is over by `end`; then it is `end`.
bool WakeNext(tMicroseconds end)
{
    const std::lock_guard lock(mutex);
    cSleeper *next = FindNext(end);
    now = next ? std::max(now, next->mDue) : end;
    if (!next)
        return false;
    next->mIsAwake = true;
    sleepers.remove(next);
    changed.notify_all();
    return true;
}

tMicroseconds In(double seconds) { return now + std::llround(seconds * 1e6); }
} // namespace

namespace vyr
{
double SteadySeconds()
{
    const std::lock_guard lock(mutex);
    return double(now) / 1e6;
}

void PauseUnlessStopped(const std::stop_token &stop, std::chrono::milliseconds length)
{
    std::unique_lock lock(mutex);
    cSleeper sleeper{now + 1000 * length.count()};
    sleepers.push_back(&sleeper);
    changed.wait(lock, stop, [&] { return sleeper.mIsAwake; });
    sleepers.remove(&sleeper); // it was stopped in its sleep
}
} // namespace vyr

namespace test
{
double cTime::Now() { return vyr::SteadySeconds(); }

void cTime::Advance(double seconds)
{
    const tMicroseconds end = In(seconds);
    do
        WaitUntilAllSleep();
    while (WakeNext(end));
}

void cTime::AdvanceWithoutThreads(double seconds)
{
    WaitUntilAllSleep();
    const std::lock_guard lock(mutex);
    now = In(seconds);
}
} // namespace test
