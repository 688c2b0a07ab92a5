#include "sound/SoundClock.h"

#include "tests/sound/SoundTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

using vyr::SoundClock;

namespace
{
/// A device that takes sound in blocks, on a crystal of its own, by a thread that wakes up now and
/// then; watched by another such thread. Times in seconds.
struct cSimulation
{
    double block = 0.02;
    double rate = 1;           // of the device's crystal
    double devicePause = 0.01; // and some more, by chance:
    double deviceJitter = 0.0001;
    double watchPause = 0.004, watchJitter = 0.0005;
    std::function<double(double)> stalled = [](double) { return 0.0; }; // in all, until then

    std::mt19937 random{1};
    double deviceTime = 0, taken = 0;

    double Pause(double pause, double jitter)
    {
        return pause + std::exponential_distribution<double>(1 / jitter)(random);
    }

    // What the device says at `now`: whole blocks.
    double Read(double now)
    {
        while (deviceTime <= now) {
            const double due = (deviceTime - stalled(deviceTime)) * rate;
            while (taken + block <= due)
                taken += block;
            deviceTime += Pause(devicePause, deviceJitter);
        }
        return taken;
    }

    // Runs from `from` to `until`; `look` sees the clock a thousand times a second.
    void Run(SoundClock &clock, double from, double until,
             const std::function<void(double now)> &look)
    {
        double looked = from;
        for (double now = from; now < until; now += Pause(watchPause, watchJitter)) {
            for (; looked < now; looked += 0.001)
                look(looked);
            clock.Observe(now, Read(now));
        }
    }
};

// The show: three seconds of loading, then the music's length.
test::cStraightness Watch(cSimulation simulation)
{
    SoundClock clock(simulation.block);
    test::cStraightness straightness;
    simulation.Run(clock, 0, 209, [&](double now) {
        if (now >= 3)
            straightness.Add(now, clock.At(now));
    });
    straightness.Fit();
    return straightness;
}

void ExpectGood(const test::cStraightness &straightness, double rate)
{
    EXPECT_EQ(straightness.CountStepsBack(), 0);
    EXPECT_LT(straightness.GetRms(), 0.001);
    EXPECT_LT(straightness.GetWorst(), 0.003);
    EXPECT_NEAR(straightness.GetDrift() - 206 * (rate - 1), 0, 0.002);
}
} // namespace

TEST(SoundClock, StandsAtZeroBeforeTheFirstReading) { EXPECT_EQ(SoundClock(0.02).At(1234.5), 0.0); }

// What is on its way through the device at the start has not been heard: less than nothing.
TEST(SoundClock, StandsAtZeroUntilTheLatencyIsOver)
{
    SoundClock clock(0.02);
    clock.Observe(100, -0.05);
    EXPECT_EQ(clock.At(100.04), 0.0);
    EXPECT_NEAR(clock.At(100.06), 0.01, 1e-9);
}

TEST(SoundClock, IsTheReadingWhereItWasRead)
{
    SoundClock clock(0.02);
    clock.Observe(100, 7.5);
    EXPECT_EQ(clock.At(100), 7.5);
    EXPECT_NEAR(clock.At(100.01), 7.51, 1e-9);
}

// The first reading was kept waiting; the second was not, and shows it. So does the first one after
// a stall.
TEST(SoundClock, BelievesAnEarlierReadingAtOnceWhenItHasJustBegun)
{
    SoundClock clock(0.02);
    clock.Observe(10.015, 0.02);
    clock.Observe(10.02, 0.04);
    EXPECT_NEAR(clock.At(10.03), 0.05, 1e-9);
}

// The readings move by 20 ms at a time; what is shown in between is a straight line.
TEST(SoundClock, RunsEvenlyBetweenBlocks) { ExpectGood(Watch({}), 1); }

TEST(SoundClock, FollowsAFastCrystal)
{
    cSimulation simulation;
    simulation.rate = 1.0002;
    ExpectGood(Watch(simulation), simulation.rate);
}

TEST(SoundClock, FollowsASlowCrystal)
{
    cSimulation simulation;
    simulation.rate = 0.9998;
    ExpectGood(Watch(simulation), simulation.rate);
}

// The device's thread wakes twice a block and 20 µs late: its lateness grows for many seconds, then
// falls back by half a block. That is no drift.
TEST(SoundClock, IsNotMovedByASlowBeatOfTheDevice)
{
    cSimulation simulation;
    simulation.block = 1024 / 44100.0;
    simulation.devicePause = simulation.block / 2;
    simulation.deviceJitter = 0.00002;
    ExpectGood(Watch(simulation), 1);
}

// A device that tells its latency to the microsecond.
TEST(SoundClock, FollowsADeviceWithoutBlocks)
{
    cSimulation simulation;
    simulation.block = 0.00001;
    simulation.devicePause = 0.0001;
    simulation.rate = 1.00005;
    ExpectGood(Watch(simulation), simulation.rate);
}

// Threads wait for each other on a busy machine: everything is seen late, by 60 ms and more. It is
// seen late; it is not late.
TEST(SoundClock, IsNotMovedByALateWatcher)
{
    SoundClock clock(0.02);
    cSimulation simulation;
    double last = 0, before = 0, worst = 0;
    const auto look = [&](double now) {
        EXPECT_GE(clock.At(now), last);
        last = clock.At(now);
        worst = std::max(worst, std::abs(last - now - before));
    };
    simulation.Run(clock, 0, 10, [](double) {});
    before = clock.At(10) - 10;
    simulation.watchPause = 0.01;
    simulation.watchJitter = 0.012; // one in a hundred pauses is longer than 60 ms
    simulation.Run(clock, 10, 20, look);
    EXPECT_LT(worst, 0.03);
    worst = 0;
    simulation.watchPause = 0.004;
    simulation.watchJitter = 0.0005;
    simulation.Run(clock, 20.02, 30, look); // one block after
    EXPECT_LT(worst, 0.002);
}

TEST(SoundClock, StopsWhenTheDeviceStalls)
{
    SoundClock clock(0.02);
    cSimulation simulation;
    simulation.stalled = [](double now) { return std::clamp(now - 5, 0.0, 2.0); };
    double last = 0;
    const auto look = [&](double now) {
        EXPECT_GE(clock.At(now), last);
        last = clock.At(now);
    };
    simulation.Run(clock, 0, 5.1, look);
    const double stopped = clock.At(5.1);
    EXPECT_LT(stopped, 5.0 + 0.02 + 0.05); // one block and the patience
    simulation.Run(clock, 5.1, 7, look);
    EXPECT_EQ(clock.At(7), stopped);
    // It waits for the sound to catch up, and goes on with it.
    simulation.Run(clock, 7, 7.15, look);
    EXPECT_NEAR(clock.At(7.15), 5.15, 0.02);
    simulation.Run(clock, 7.15, 12, look);
    EXPECT_NEAR(clock.At(12), 10, 0.01);
}

TEST(SoundClock, FollowsALostBlockInLessThanHalfASecond)
{
    SoundClock clock(0.025);
    cSimulation simulation;
    simulation.block = 0.025;
    simulation.stalled = [](double now) { return now < 5 ? 0.0 : 0.025; };
    simulation.Run(clock, 0, 5, [](double) {});
    const double before = clock.At(5) - 5;
    simulation.Run(clock, 5, 5.5, [](double) {});
    EXPECT_NEAR(clock.At(5.5) - 5.5, before - 0.025, 0.005);
}

TEST(SoundClock, FollowsALeapOfTheDeviceAtOnce)
{
    SoundClock clock(0.02);
    cSimulation simulation;
    simulation.stalled = [](double now) { return now < 5 ? 0.0 : -1.0; };
    simulation.Run(clock, 0, 5, [](double) {});
    simulation.Run(clock, 5, 5.05, [](double) {});
    EXPECT_NEAR(clock.At(5.05), 6.05, 0.02);
}

// One reading that is too early would be the earliest for seconds; one that is far off, a leap.
TEST(SoundClock, IsNotMovedBySingleWrongReadings)
{
    for (const double error : {0.03, 0.08, 5.0, -0.08, -5.0}) {
        SoundClock clock(0.02);
        cSimulation simulation;
        simulation.Run(clock, 0, 10, [](double) {});
        const double before = clock.At(10) - 10;
        const auto look = [&](double now) { EXPECT_NEAR(clock.At(now) - now, before, 0.002); };
        for (double now = 10; now < 40; now += 5) {
            clock.Observe(now, now + error);
            simulation.Run(clock, now + 0.001, now + 5, look);
        }
    }
}

// Whatever a device says, and whenever.
TEST(SoundClock, NeverGoesBack)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> step(-0.2, 0.3), pause(0, 0.05);
    SoundClock clock(0.02);
    double now = 0, heard = 0, last = 0;
    for (int i = 0; i < 100000; i++) {
        for (const double end = now + pause(random); now < end; now += 0.003) {
            ASSERT_GE(clock.At(now), last);
            last = clock.At(now);
        }
        heard += step(random);
        clock.Observe(now, heard);
    }
}
