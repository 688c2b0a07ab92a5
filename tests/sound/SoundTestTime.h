#pragma once

namespace test
{
/// The time of these tests. It stands still until a test moves it; the sound's own threads pause on
/// it, and each runs, alone, when its pause is over. So whatever machine the tests run on, the same
/// things happen at the same times.
///
/// The functions of sound/SoundTime.h are defined here a second time, over this clock. All calls
/// are the test's own thread's.
class cTime
{
public:
    static double Now(); ///< seconds, as `SteadySeconds` has them

    /// Time goes on, and every thread does in it what it has to.
    static void Advance(double seconds);

    /// Time goes on, and no thread gets to run: the machine is busy, or the program is stopped.
    static void AdvanceWithoutThreads(double seconds);
};
} // namespace test
