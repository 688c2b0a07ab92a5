#pragma once

#include <chrono>
#include <stop_token>

/// The machine's time. Everything in this folder that asks for it, or waits, does it here: a
/// program that defines both functions itself (a test) has them instead, and moves the time.
namespace vyr
{
/// The machine's steady clock, in seconds.
double SteadySeconds();

/// Sleeps for `length`, or until this thread is asked to stop, so that joining it takes no time.
void PauseUnlessStopped(const std::stop_token &stop, std::chrono::milliseconds length);
} // namespace vyr
