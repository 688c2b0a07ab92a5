#include "studio/Transport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

using studio::cLoop;
using studio::cSteppedPlayback;
using studio::cTransport;
using testing::ElementsAre;

namespace
{
// Frame n has n on its left and -n on its right.
studio::tSamples Counting(int64_t count, int rate = 44100)
{
    auto samples = std::make_shared<studio::cSamples>();
    samples->mRate = rate;
    for (int64_t i = 0; i < count; i++) {
        samples->mFrames.push_back(int16_t(i));
        samples->mFrames.push_back(int16_t(-i));
    }
    return samples;
}

std::vector<int> ReadLeft(studio::cMusicStream &stream, size_t count)
{
    std::vector<int16_t> frames(2 * count);
    const size_t read = stream.Read(frames.data(), count);
    std::vector<int> left;
    for (size_t i = 0; i < read; i++)
        left.push_back(frames[2 * i]);
    return left;
}

TEST(MusicStream, LoopRepeatsFrameByFrame)
{
    studio::cMusicStream stream(Counting(100), 3, cLoop{5, 8});
    EXPECT_THAT(ReadLeft(stream, 9), ElementsAre(3, 4, 5, 6, 7, 5, 6, 7, 5));
    EXPECT_THAT(ReadLeft(stream, 4), ElementsAre(6, 7, 5, 6)); // across two reads
    EXPECT_EQ(stream.FrameAt(0), 3.0);
    EXPECT_EQ(stream.FrameAt(4.5), 7.5);
    EXPECT_EQ(stream.FrameAt(5), 5.0);
    EXPECT_EQ(stream.FrameAt(8), 5.0);
    EXPECT_EQ(stream.FrameAt(10), 7.0);
}

// A thousand turns: every frame is the region's next one, whatever the blocks in which it is read.
TEST(MusicStream, ThousandTurnsLoseNoFrame)
{
    studio::cMusicStream stream(Counting(2000), 100, cLoop{100, 473});
    int expected = 100;
    for (int left = 1000 * 373; left > 0;) {
        const auto read = ReadLeft(stream, size_t(std::min(left, 256)));
        for (int frame : read) {
            ASSERT_EQ(frame, expected);
            expected = expected == 472 ? 100 : expected + 1;
        }
        left -= int(read.size());
    }
}

TEST(MusicStream, NewEndOfTheLoopActsAtTheNextTurn)
{
    studio::cMusicStream stream(Counting(100), 0, cLoop{0, 4});
    ReadLeft(stream, 2);
    stream.SetLoop(cLoop{1, 6});
    EXPECT_THAT(ReadLeft(stream, 8), ElementsAre(2, 3, 4, 5, 1, 2, 3, 4));
}

TEST(MusicStream, WhatBeginsBehindTheLoopPlaysToTheEnd)
{
    studio::cMusicStream stream(Counting(10), 7, cLoop{2, 5});
    EXPECT_THAT(ReadLeft(stream, 10), ElementsAre(7, 8, 9));
}

// A steady sound stays as loud as it is, and never louder, while grains follow each other.
TEST(GrainStream, OverlappingGrainsAddUpToTheMusic)
{
    auto samples = std::make_shared<studio::cSamples>();
    samples->mFrames.assign(2 * 44100, 20000);
    const size_t length = size_t(studio::cGrainStream::kSeconds * 44100), step = length / 2;
    std::vector<int> sum(4 * step);
    for (size_t grain = 0; grain < 3; grain++) {
        studio::cGrainStream stream(samples, 20000);
        std::vector<int16_t> frames(2 * length + 2);
        ASSERT_EQ(stream.Read(frames.data(), length + 1), length);
        EXPECT_EQ(frames[0], 0); // no click at either end
        EXPECT_NEAR(frames[2 * (length - 1)], 0, 1);
        for (size_t i = 0; i < length; i++)
            sum[grain * step + i] += frames[2 * i];
    }
    for (size_t i = step; i < 3 * step; i++)
        ASSERT_NEAR(sum[i], 20000, 3);
}

TEST(GrainStream, BeforeAndBehindTheMusicIsSilence)
{
    studio::cGrainStream stream(Counting(10), 0);
    std::vector<int16_t> frames(2 * 4000);
    EXPECT_GT(stream.Read(frames.data(), 4000), 3000u);
    EXPECT_EQ(frames[0], 0);
    EXPECT_EQ(frames[2 * 3000], 0);
}

/// A transport of 8 rows a second over 100 s of music, whose time the test moves.
class Transport : public testing::Test
{
protected:
    Transport()
    {
        auto playback = std::make_unique<cSteppedPlayback>();
        mPlayback = playback.get();
        mTransport = std::make_unique<cTransport>(std::move(playback), vyr::TempoOf(60.0), 400.0);
        mTransport->SetMusic(Counting(100 * 100, 100));
    }

    void Step(double seconds)
    {
        mPlayback->Step(seconds);
        mTransport->Update();
    }

    cSteppedPlayback *mPlayback = nullptr;
    std::unique_ptr<cTransport> mTransport;
};

TEST_F(Transport, RowIsTheMusicsAndStandsWhilePaused)
{
    mTransport->Seek(40.0);
    Step(1.0);
    EXPECT_EQ(mTransport->Row(), 40.0);
    mTransport->Play();
    Step(1.5);
    EXPECT_EQ(mTransport->Row(), 52.0);
    mTransport->Pause();
    Step(1.0);
    EXPECT_EQ(mTransport->Row(), 52.0);
}

TEST_F(Transport, PausesAtTheShowsEndAndPlaysAgainFromItsBeginning)
{
    mTransport->Seek(399.0);
    mTransport->Play();
    Step(1.0);
    EXPECT_EQ(mTransport->Row(), 400.0);
    EXPECT_FALSE(mTransport->IsPlaying());
    mTransport->Play();
    Step(0.25);
    EXPECT_EQ(mTransport->Row(), 2.0);
}

TEST_F(Transport, LoopsItsRegion)
{
    mTransport->SetRegion({80, 96});
    mTransport->SetLooping(true);
    mTransport->Seek(88.0);
    mTransport->Play();
    Step(1.25);
    EXPECT_EQ(mTransport->Row(), 82.0);
    mTransport->SetLooping(false);
    Step(2.0);
    EXPECT_EQ(mTransport->Row(), 98.0);
}

TEST_F(Transport, ScrubbingStopsTheMusicAndGoesOnAfterIt)
{
    mTransport->Play();
    mTransport->BeginScrub();
    EXPECT_FALSE(mTransport->IsPlaying());
    mTransport->ScrubTo(123.5);
    Step(1.0);
    EXPECT_EQ(mTransport->Row(), 123.5);
    mTransport->EndScrub();
    EXPECT_TRUE(mTransport->IsPlaying());
    Step(1.0);
    EXPECT_EQ(mTransport->Row(), 131.5);
}

TEST_F(Transport, StaysWithinTheShow)
{
    mTransport->Seek(-5.0);
    EXPECT_EQ(mTransport->Row(), 0.0);
    mTransport->Seek(1e9);
    EXPECT_EQ(mTransport->Row(), 400.0);
}

TEST_F(Transport, WithoutMusicItDoesNotPlay)
{
    mTransport->SetMusic(nullptr);
    mTransport->Play();
    EXPECT_FALSE(mTransport->IsPlaying());
}

// The music is read while the page is there already.
TEST_F(Transport, PlaysWhenTheMusicHasCome)
{
    mTransport->SetMusic(nullptr);
    mTransport->Toggle();
    mTransport->Toggle(); // not after all
    mTransport->SetMusic(Counting(100 * 100, 100));
    EXPECT_FALSE(mTransport->IsPlaying());
    mTransport->SetMusic(nullptr);
    mTransport->Toggle();
    mTransport->SetMusic(Counting(100 * 100, 100));
    EXPECT_TRUE(mTransport->IsPlaying());
    Step(1.0);
    EXPECT_EQ(mTransport->Row(), 8.0);
}

TEST_F(Transport, TitleNamesShowAndPlace)
{
    EXPECT_EQ(WindowTitle("Night", *mTransport), "Night 0:0:0 (paused) - vyr-studio");
    mTransport->Seek(45.0);
    mTransport->Play();
    EXPECT_EQ(WindowTitle("Night", *mTransport), "Night 1:1:5 - vyr-studio");
}
} // namespace
