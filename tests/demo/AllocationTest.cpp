#include "benchmarks/NoOpenGL.h"
#include "benchmarks/Stage.h"
#include "demo/Frame.h"
#include "tests/support/FixtureShow.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <optional>
#include <set>
#include <vector>

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

struct cLayer
{
    eTrack mTrack;
    float mOff, mOn;
};

// What switches a layer on, what is drawn always, and what moves one or the other. A track that
// stands nowhere here switches a layer of its own on at 1.
const std::vector<cLayer> knownLayers = {
    {FADE_PLASMA, 0, 0.5f},  {FADE_FG_NOISE, 0, 0.5f}, {IMAGE_ZEMLOGO, 0, 0.5f},
    {TUNNEL_TEXTURE, -1, 1}, {IMAGE_LEFT, -1, 1},      {IMAGE_RIGHT, -1, 1},
    {IMAGE_CENTER, -1, 1},   {LYRICS_NUM, -1, 1},      {OBJECT_NUM, -1, 1}};
const eTrack fades[] = {FADE_BG_WHITE, FADE_FG_BLACK};
const eTrack places[] = {FLARE_X,  FLARE_Y,  FLARE_SIZE, LYRICS_FADE, LYRICS_X,          LYRICS_Y,
                         OBJECT_X, OBJECT_Y, OBJECT_Z,   TUNNEL_POS,  IMAGE_CENTER_ALPHA};

std::multiset<eTrack> ListedTracks()
{
    std::multiset<eTrack> listed(std::begin(places), std::end(places));
    listed.insert(std::begin(fades), std::end(fades));
    for (const cLayer &layer : knownLayers)
        listed.insert(layer.mTrack);
    return listed;
}

std::vector<cLayer> AllLayers()
{
    std::vector<cLayer> layers = knownLayers;
    for (int i = 0; i < TRACK_COUNT; i++)
        if (!ListedTracks().contains(eTrack(i)))
            layers.push_back({eTrack(i), 0, 1});
    return layers;
}

class Allocation : public testing::Test
{
protected:
    Allocation()
    {
        test::WriteFixtureShow(mFolder.Path());
        bench::DropOpenGL();
        mStage.emplace(bench::NoWindowSystem(), 1280, 720);
        for (const cLayer &layer : AllLayers())
            mStage->Fix(layer.mTrack, layer.mOn);
        for (eTrack fade : fades)
            mStage->Fix(fade, 0.5f);
    }

    long CallsOfAFrame()
    {
        const long before = long(bench::GetDroppedCalls());
        DrawFrame(mStage->GetShow(), 5.0, 5.0);
        return long(bench::GetDroppedCalls()) - before;
    }

    test::cTemporaryFolder mFolder;
    std::optional<bench::cStage> mStage;
};

TEST_F(Allocation, ListsHaveNoTrackTwice)
{
    for (eTrack track : ListedTracks())
        EXPECT_EQ(ListedTracks().count(track), 1u) << TrackName(track);
}

TEST_F(Allocation, EveryLayerIsDrawn)
{
    for (const cLayer &layer : AllLayers()) {
        const long with = CallsOfAFrame();
        mStage->Fix(layer.mTrack, layer.mOff);
        EXPECT_LT(CallsOfAFrame(), with) << TrackName(layer.mTrack) << ": or is it a place?";
        mStage->Fix(layer.mTrack, layer.mOn);
    }
}

TEST_F(Allocation, DrawnFrameWithEveryLayerAllocatesNothing)
{
    const int before = allocations;
    ASSERT_GT(before, 0) << "nothing is counted";
    for (int row = 0; row < 100; row++)
        DrawFrame(mStage->GetShow(), row, row / kRowsPerSecond);
    EXPECT_EQ(allocations, before);
}
} // namespace
