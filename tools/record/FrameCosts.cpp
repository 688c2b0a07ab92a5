#include "tools/record/FrameCosts.h"

#include <epoxy/gl.h>

#include <cstdio>
#include <ctime>

namespace record
{
namespace
{
double ReadMilliseconds(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return 1e3 * double(time.tv_sec) + 1e-6 * double(time.tv_nsec);
}
} // namespace

cFrameCosts::cFrameCosts(const std::string &path, const std::string &remark) : mFile(path)
{
    mFile.WriteLine("# " + remark);
    mFile.WriteLine("# frame, row, milliseconds by the clock, milliseconds of processor time");
}

cFrameCosts::cTimes cFrameCosts::Now()
{
    glFinish();
    return {ReadMilliseconds(CLOCK_MONOTONIC), ReadMilliseconds(CLOCK_PROCESS_CPUTIME_ID)};
}

void cFrameCosts::Begin() { mBegin = Now(); }

void cFrameCosts::End(int64_t frame, double row)
{
    const cTimes end = Now();
    char line[128];
    std::snprintf(line, sizeof line, "%lld %.6f %.3f %.3f", static_cast<long long>(frame), row,
                  end.mClock - mBegin.mClock, end.mProcessor - mBegin.mProcessor);
    mFile.WriteLine(line);
}

void cFrameCosts::Finish() { mFile.Commit(); }
} // namespace record
