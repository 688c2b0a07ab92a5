#pragma once

#include <ctime>

namespace bench
{
inline double ProcessorSecondsNow()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

/// Processor seconds that `work` takes, of all threads together: the same whether or not other
/// programs take turns with this one.
template <typename Work>
double ProcessorSeconds(Work work)
{
    const double start = ProcessorSecondsNow();
    work();
    return ProcessorSecondsNow() - start;
}
} // namespace bench
