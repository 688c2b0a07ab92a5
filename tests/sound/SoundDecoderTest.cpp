#include "sound/SoundDecoder.h"

#include "tests/sound/SoundTestSupport.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sys/stat.h>

using vyr::SoundDecoder;

namespace
{
FMOD_RESULT Open(const std::string &path)
{
    std::unique_ptr<SoundDecoder> decoder;
    return SoundDecoder::Open(path.c_str(), decoder);
}

FMOD_RESULT OpenBytes(const std::string &bytes)
{
    test::WriteFile("sound.mp3", bytes);
    return Open("sound.mp3");
}

// All frames, in blocks of `blockFrames`.
std::vector<int16_t> ReadAll(SoundDecoder &decoder, size_t blockFrames = 1000)
{
    std::vector<int16_t> all, block(2 * blockFrames);
    while (const size_t frames = decoder.Read(block.data(), blockFrames))
        all.insert(all.end(), block.begin(), block.begin() + ptrdiff_t(2 * frames));
    return all;
}

std::vector<int16_t> Decode(const std::string &path)
{
    std::unique_ptr<SoundDecoder> decoder;
    EXPECT_EQ(SoundDecoder::Open(path.c_str(), decoder), FMOD_OK) << path;
    return decoder ? ReadAll(*decoder) : std::vector<int16_t>();
}

std::string Noise(size_t size)
{
    std::mt19937 random(5);
    std::string bytes(size, '\0');
    for (char &byte : bytes)
        byte = char(random());
    return bytes;
}

std::string SweepBytes() { return test::ReadFile(test::SweepPath()); }
} // namespace

// The encoder puts some 1100 frames before the music and some after it, and says so in the file.
TEST(SoundDecoder, GivesExactlyTheFramesThatWereEncoded)
{
    EXPECT_EQ(Decode(test::SweepPath()).size(), 2 * test::sweepFrames);
    EXPECT_EQ(Decode(test::MonoSweepPath()).size(), 2 * test::monoSweepFrames);
}

// One frame early or late, and the sweep does not fit any more: the sum of what the encoder lost is
// some thousandths, a shift by one frame of a sweep up to 5 kHz some tenths.
TEST(SoundDecoder, FirstFrameIsTheMusicsFirst)
{
    const std::vector<int16_t> samples = Decode(test::SweepPath());
    for (const int channel : {0, 1}) {
        EXPECT_LT(test::DifferenceFromSweep(samples, channel, 44100, 0), 0.02);
        for (const int shift : {-2, -1, 1, 2})
            EXPECT_GT(test::DifferenceFromSweep(samples, channel, 44100, shift), 0.1) << shift;
    }
}

TEST(SoundDecoder, DoublesMonoAtTheFilesOwnRate)
{
    std::unique_ptr<SoundDecoder> decoder;
    ASSERT_EQ(SoundDecoder::Open(test::MonoSweepPath().c_str(), decoder), FMOD_OK);
    EXPECT_EQ(decoder->GetRate(), 22050);
    const std::vector<int16_t> samples = ReadAll(*decoder);
    for (size_t i = 0; i < samples.size(); i += 2)
        ASSERT_EQ(samples[i], samples[i + 1]);
    EXPECT_LT(test::DifferenceFromSweep(samples, 0, 22050, 0), 0.02);
    EXPECT_GT(test::DifferenceFromSweep(samples, 0, 22050, 1), 0.1);
}

TEST(SoundDecoder, BlockSizeDoesNotMatter)
{
    std::unique_ptr<SoundDecoder> decoder;
    ASSERT_EQ(SoundDecoder::Open(test::SweepPath().c_str(), decoder), FMOD_OK);
    EXPECT_EQ(ReadAll(*decoder, 77), Decode(test::SweepPath()));
}

TEST(SoundDecoder, RewindsToTheFirstFrame)
{
    std::unique_ptr<SoundDecoder> decoder;
    ASSERT_EQ(SoundDecoder::Open(test::SweepPath().c_str(), decoder), FMOD_OK);
    const std::vector<int16_t> once = ReadAll(*decoder);
    ASSERT_TRUE(decoder->Rewind());
    EXPECT_EQ(ReadAll(*decoder), once);
    // from the middle too
    std::vector<int16_t> some(2000);
    ASSERT_TRUE(decoder->Rewind());
    ASSERT_EQ(decoder->Read(some.data(), 1000), 1000u);
    ASSERT_TRUE(decoder->Rewind());
    EXPECT_EQ(ReadAll(*decoder), once);
}

// To the sample, wherever a frame of the file begins; beyond the end there is nothing more.
TEST(SoundDecoder, SeeksToAnyFrame)
{
    std::unique_ptr<SoundDecoder> decoder;
    ASSERT_EQ(SoundDecoder::Open(test::SweepPath().c_str(), decoder), FMOD_OK);
    const std::vector<int16_t> once = ReadAll(*decoder);
    for (const int64_t frame : {30000, 1, 1151, 1152, 49999, 0, 12345}) {
        ASSERT_EQ(decoder->Seek(frame), frame);
        const std::vector<int16_t> rest = ReadAll(*decoder);
        ASSERT_EQ(rest.size(), once.size() - 2 * size_t(frame)) << frame;
        EXPECT_TRUE(std::equal(rest.begin(), rest.end(), once.begin() + 2 * frame)) << frame;
    }
    for (const int64_t frame : {50000, 50001, 1 << 30}) {
        EXPECT_EQ(decoder->Seek(frame), 50000) << frame;
        EXPECT_EQ(ReadAll(*decoder).size(), 0u) << frame;
    }
}

TEST(SoundDecoder, MissingFileIsNotFound)
{
    const test::cTemporaryFolder folder;
    EXPECT_EQ(Open("missing.mp3"), FMOD_ERR_FILE_NOTFOUND);
    EXPECT_EQ(Open("missing/missing.mp3"), FMOD_ERR_FILE_NOTFOUND);
    EXPECT_EQ(Open(""), FMOD_ERR_FILE_NOTFOUND);
    test::WriteFile("file", "x");
    EXPECT_EQ(Open("file/missing.mp3"), FMOD_ERR_FILE_NOTFOUND);
}

// Opening a pipe that nobody writes to would wait for ever.
TEST(SoundDecoder, WhatIsNoFileIsBad)
{
    const test::cTemporaryFolder folder;
    ASSERT_EQ(mkfifo("pipe.mp3", 0600), 0);
    EXPECT_EQ(Open("pipe.mp3"), FMOD_ERR_FILE_BAD);
    EXPECT_EQ(Open("."), FMOD_ERR_FILE_BAD);
    EXPECT_EQ(Open("/dev/zero"), FMOD_ERR_FILE_BAD);
}

TEST(SoundDecoder, WhatIsNoMp3IsOfUnknownFormat)
{
    const test::cTemporaryFolder folder;
    EXPECT_EQ(OpenBytes(""), FMOD_ERR_FORMAT);
    EXPECT_EQ(OpenBytes("music"), FMOD_ERR_FORMAT);
    EXPECT_EQ(OpenBytes(std::string(3000000, '\0')), FMOD_ERR_FORMAT);
    EXPECT_EQ(OpenBytes(std::string(3000000, '\xff')), FMOD_ERR_FORMAT);
    EXPECT_EQ(OpenBytes(Noise(3000000)), FMOD_ERR_FORMAT);
    EXPECT_EQ(OpenBytes("RIFF" + Noise(10000)), FMOD_ERR_FORMAT);
    EXPECT_EQ(OpenBytes(SweepBytes().substr(0, 4)), FMOD_ERR_FORMAT);
    EXPECT_EQ(OpenBytes(SweepBytes().substr(0, 417)), FMOD_ERR_FORMAT); // its header frame alone
}

TEST(SoundDecoder, AFileThatBreaksOffGivesWhatItHas)
{
    const test::cTemporaryFolder folder;
    test::WriteFile("cut.mp3", SweepBytes().substr(0, 10000));
    std::vector<int16_t> samples = Decode("cut.mp3");
    EXPECT_GT(samples.size(), 2 * 20000u);
    EXPECT_LT(samples.size(), 2 * 30000u);
    samples.resize(2 * 20000);
    EXPECT_LT(test::DifferenceFromSweep(samples, 0, 44100, 0), 0.02);
}

// What lies before the damage is as it was, and what lies after it is found again.
TEST(SoundDecoder, DamageInTheMiddleIsSkipped)
{
    const test::cTemporaryFolder folder;
    for (const std::string &damage : {std::string(4000, '\0'), Noise(4000), Noise(900)}) {
        const std::string bytes = test::LongSweep(3);
        test::WriteFile("bad.mp3",
                        bytes.substr(0, 8000) + damage + bytes.substr(8000 + damage.size()));
        std::vector<int16_t> samples = Decode("bad.mp3");
        EXPECT_GT(samples.size(), 2 * 100000u);
        EXPECT_LE(samples.size(), 2 * 160000u);
        samples.resize(2 * 15000);
        EXPECT_LT(test::DifferenceFromSweep(samples, 1, 44100, 0), 0.02);
    }
}

// More than a megabyte of it is no damage, it is the end: nothing after it is looked for.
TEST(SoundDecoder, LongDamageEndsTheStream)
{
    const test::cTemporaryFolder folder;
    const std::string nothing(1500000, '\0');
    test::WriteFile("bad.mp3", SweepBytes().substr(0, 10000) + nothing + SweepBytes());
    EXPECT_LT(Decode("bad.mp3").size(), 2 * 30000u);
}

// Frames of another rate would be noise at the wrong speed.
TEST(SoundDecoder, FramesOfAnotherRateAreLeftOut)
{
    const test::cTemporaryFolder folder;
    test::WriteFile("mixed.mp3",
                    SweepBytes() + test::ReadFile(test::MonoSweepPath()) + SweepBytes());
    const size_t frames = Decode("mixed.mp3").size() / 2;
    EXPECT_GT(frames, 2 * test::sweepFrames - 3000);
    EXPECT_LT(frames, 2 * test::sweepFrames + 8000); // in the middle the padding is music
}

// Bytes changed here and there, everywhere: any result, but an end, and nothing outside its memory.
TEST(SoundDecoder, ComesToAnEndWithAnyDamage)
{
    const test::cTemporaryFolder folder;
    std::mt19937 random(11);
    const std::string good = SweepBytes();
    for (int round = 0; round < 300; round++) {
        std::string bytes = good.substr(0, good.size() - random() % 2 * (random() % good.size()));
        const size_t changes = 1 + random() % 50;
        for (size_t i = 0; i < changes; i++)
            bytes[random() % std::min<size_t>(bytes.size(), round % 2 ? 500 : bytes.size())] =
                char(random());
        test::WriteFile("bad.mp3", bytes);
        std::unique_ptr<SoundDecoder> decoder;
        if (SoundDecoder::Open("bad.mp3", decoder) == FMOD_OK) {
            EXPECT_LT(ReadAll(*decoder).size(), 2 * 1000000u);
            decoder->Rewind();
        }
    }
}

TEST(SoundDecoder, ClosesItsFile)
{
    const test::cTemporaryFolder folder;
    const int before = test::CountOpenFiles();
    Open(test::SweepPath());
    OpenBytes(Noise(5000));
    EXPECT_EQ(test::CountOpenFiles(), before);
}
