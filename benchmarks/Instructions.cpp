// What a drawn frame costs outside the driver: the show's frames over an OpenGL that does nothing.
//
//   bench-instructions SHOW        under callgrind, with --instr-atstart=no
//
// Finds the fullest frames, those with the most OpenGL calls of the whole show at 60 frames a
// second, and writes a callgrind dump for each of them; the trigger of a dump is its row. Prints
// "calls N" of the fullest one and "allocations N" of all frames together.

#include "benchmarks/NoOpenGL.h"
#include "benchmarks/Stage.h"
#include "demo/Frame.h"

#include <valgrind/callgrind.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <unistd.h>

namespace
{
const int framesPerSecond = 60;
const size_t fullestCount = 40;
std::int64_t allocations = 0;
} // namespace

extern "C" {
void *__libc_malloc(size_t size);
void *malloc(size_t size)
{
    allocations++;
    return __libc_malloc(size);
}
}

namespace
{
struct cFrame
{
    double mRow;
    std::int64_t mCalls;
};

void Draw(const bench::cStage &stage, double row)
{
    demo::DrawFrame(stage.GetShow(), row, row / demo::kRowsPerSecond);
}

std::vector<cFrame> DrawWholeShow(const bench::cStage &stage)
{
    const int count = int(demo::kLastRow / demo::kRowsPerSecond * framesPerSecond);
    std::vector<cFrame> frames(size_t(count), cFrame{});
    const std::int64_t before = allocations;
    for (int i = 0; i < count; i++) {
        const double row = demo::kRowsPerSecond * i / framesPerSecond;
        const std::int64_t calls = bench::GetDroppedCalls();
        Draw(stage, row);
        frames[size_t(i)] = {row, bench::GetDroppedCalls() - calls};
    }
    std::printf("allocations %lld\n", static_cast<long long>(allocations - before));
    return frames;
}

void DumpFrame(const bench::cStage &stage, double row)
{
    const std::string trigger = std::to_string(row);
    CALLGRIND_ZERO_STATS;
    CALLGRIND_TOGGLE_COLLECT;
    Draw(stage, row);
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(trigger.c_str());
}
} // namespace

int main(int count, char **arguments)
{
    if (count < 2 || chdir(arguments[1]) != 0) {
        std::fprintf(stderr, "bench-instructions: needs the folder of a show\n");
        return 2;
    }
    bench::DropOpenGL();
    const bench::cStage stage(bench::NoWindowSystem(), 1280, 720);
    std::vector<cFrame> frames = DrawWholeShow(stage);
    std::sort(frames.begin(), frames.end(),
              [](const cFrame &a, const cFrame &b) { return a.mCalls > b.mCalls; });
    frames.resize(fullestCount);
    std::printf("calls %lld\n", static_cast<long long>(frames.front().mCalls));
    std::fflush(stdout);
    CALLGRIND_START_INSTRUMENTATION;
    Draw(stage, frames.front().mRow); // what is bound at the first call
    for (const cFrame &frame : frames)
        DumpFrame(stage, frame.mRow);
}
