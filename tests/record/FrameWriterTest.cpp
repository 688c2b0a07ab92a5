#include "tools/record/FrameWriter.h"
#include "tools/record/Failure.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <thread>

using record::cDrawnFrame;
using record::cFrameSink;
using record::cFrameWriter;

namespace
{
/// Notes what it gets, and fails at a frame of its choosing.
class cNotingSink : public cFrameSink
{
public:
    explicit cNotingSink(int64_t failsAt = -1) : mFailsAt(failsAt) {}

    void Take(const cDrawnFrame &frame) override
    {
        if (frame.mFrame == mFailsAt)
            throw record::cFailure("full");
        mFrames.push_back(frame.mFrame);
        mFirstBytes.push_back(frame.mPicture.mBytes[0]);
    }

    std::vector<int64_t> mFrames;
    std::vector<uint8_t> mFirstBytes;

private:
    int64_t mFailsAt;
};

// Gives frames 0 to `count` - 1, each with its number as a pixel; false when the writer gave up.
bool Give(cFrameWriter &writer, int count)
{
    for (int i = 0; i < count; i++) {
        cDrawnFrame *slot = writer.Claim();
        if (!slot)
            return false;
        slot->mFrame = i;
        slot->mPicture.mBytes[0] = uint8_t(i);
        writer.Submit();
    }
    return true;
}

TEST(FrameWriter, GivesEverySinkEveryFrameInOrder)
{
    cNotingSink first, second;
    cFrameWriter writer({&first, &second}, 2, 2);
    EXPECT_TRUE(Give(writer, 100));
    writer.Finish();
    ASSERT_EQ(first.mFrames.size(), 100u);
    for (size_t i = 0; i < 100; i++) {
        EXPECT_EQ(first.mFrames[i], int64_t(i));
        EXPECT_EQ(first.mFirstBytes[i], uint8_t(i));
    }
    EXPECT_EQ(second.mFrames, first.mFrames);
}

TEST(FrameWriter, StopsTheDrawingWhenASinkFailsAndSaysWhy)
{
    cNotingSink sink(5);
    cFrameWriter writer({&sink}, 2, 2);
    EXPECT_FALSE(Give(writer, 100));
    EXPECT_EQ(writer.Claim(), nullptr);
    EXPECT_THROW(writer.Finish(), record::cFailure);
    EXPECT_EQ(sink.mFrames.size(), 5u);
}

/// Takes its first frame for as long as it is told to.
class cWaitingSink : public cNotingSink
{
public:
    void Take(const cDrawnFrame &frame) override
    {
        mHasBegun.set_value();
        mMayGoOn.get_future().wait();
        cNotingSink::Take(frame);
    }

    std::promise<void> mHasBegun, mMayGoOn;
};

// Three frames, of which one is with the sink: it is taken to its end, and the two behind it are
// dropped.
TEST(FrameWriter, CanBeGivenUpWithFramesUnderWay)
{
    cWaitingSink sink;
    auto writer = std::make_unique<cFrameWriter>(std::vector<cFrameSink *>{&sink}, 2, 2);
    EXPECT_TRUE(Give(*writer, 3));
    sink.mHasBegun.get_future().wait();
    cFrameWriter &ending = *writer;
    std::thread giver([&] { writer.reset(); });
    while (ending.Claim()) // until it is given up; it waits for its sink then
        std::this_thread::yield();
    sink.mMayGoOn.set_value();
    giver.join();
    EXPECT_EQ(sink.mFrames, std::vector<int64_t>{0});
}
} // namespace
