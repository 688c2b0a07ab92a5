#include "benchmarks/NoOpenGL.h"
#include "benchmarks/Stage.h"
#include "demo/Frame.h"
#include "tests/support/FixtureShow.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace
{
int allocations = 0;
}

extern "C" {
void *__real_malloc(size_t size);
void *__real_realloc(void *block, size_t size);
void *__wrap_malloc(size_t size)
{
    allocations++;
    return __real_malloc(size);
}
void *__wrap_realloc(void *block, size_t size)
{
    allocations++;
    return __real_realloc(block, size);
}
}

// What this program itself allocates, in either way; the libraries' own is not asked about.
void *operator new(size_t size)
{
    if (void *block = std::malloc(size > 0 ? size : 1))
        return block;
    throw std::bad_alloc();
}
void operator delete(void *block) noexcept { std::free(block); }
void operator delete(void *block, size_t) noexcept { std::free(block); }

namespace
{
using namespace demo;

TEST(Allocation, DrawnFrameWithEveryLayerAllocatesNothing)
{
    const test::cTemporaryFolder folder;
    test::WriteFixtureShow(folder.Path());
    bench::DropOpenGL();
    bench::cStage stage(bench::NoWindowSystem(), 1280, 720);
    for (eTrack fade : {FADE_PLASMA, FADE_FG_NOISE, IMAGE_ZEMLOGO, FADE_BG_WHITE, FADE_FG_BLACK})
        stage.Fix(fade, 0.5f);
    for (eTrack index :
         {TUNNEL_TEXTURE, IMAGE_LEFT, IMAGE_RIGHT, IMAGE_CENTER, LYRICS_NUM, OBJECT_NUM})
        stage.Fix(index, 1.0f);

    const int before = allocations;
    ASSERT_GT(before, 0) << "nothing is counted";
    for (int row = 0; row < 100; row++)
        DrawFrame(stage.GetShow(), row, row / kRowsPerSecond);
    EXPECT_EQ(allocations, before);
    EXPECT_GT(bench::GetDroppedCalls(), 100 * 500); // every layer was on
}
} // namespace
