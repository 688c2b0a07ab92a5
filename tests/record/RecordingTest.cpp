// What the recorder makes, through the real program.

#include "demo/Frame.h"
#include "demo/Tunnel.h"
#include "tests/record/RecordRun.h"
#include "tests/support/OffscreenTest.h"
#include "tools/record/Picture.h"

#include <epoxy/gl.h>
#include <gmock/gmock.h>
#include <stb_image.h>

#include <cmath>
#include <cstring>
#include <fstream>

namespace fs = std::filesystem;
using namespace record_test;

namespace
{
class Recording : public cRecordTest
{
protected:
    // The hashes of frames, by their number.
    static tWords Manifest(const tWords &words)
    {
        const test::cProcessResult result = Record(words + tWords{"--manifest", "manifest.txt"});
        EXPECT_EQ(result.mStatus, 0) << result.mErrors;
        return ManifestLines(Folder() / "manifest.txt");
    }

    static tWords Parts(const tWords &words, int parts)
    {
        tWords all;
        for (int part = 1; part <= parts; part++)
            all = all + Manifest(words + tWords{"--part", std::to_string(part) + "/" +
                                                              std::to_string(parts)});
        return all;
    }

    static void Make(const tWords &words)
    {
        const test::cProcessResult result = Record(words);
        EXPECT_EQ(result.mStatus, 0) << result.mErrors;
        EXPECT_EQ(result.mErrors, ""); // quiet where there is no terminal
    }
};

TEST_F(Recording, TwiceIsTheSame)
{
    const tWords four = kSmall + tWords{"--from", "1260", "--to", "1330.4"};
    const tWords first = Manifest(four);
    EXPECT_EQ(first.size(), 120u);
    EXPECT_EQ(Manifest(four), first);
}

// The other tests ask for the software renderer; a user does not, and gets the graphics card where
// there is one.
TEST_F(Recording, FindsItsOwnWayToDraw)
{
    const test::cProcessResult result =
        test::Run({"env", "-u", "LIBGL_ALWAYS_SOFTWARE", VYR_RECORD, "--show", "show", "--size",
                   "64x36", "--still", "100", "-o", "found.png"},
                  Folder());
    EXPECT_EQ(result.mStatus, 0) << result.mErrors;
}

TEST_F(Recording, PartsAreTheWhole)
{
    // through the tunnel, whose depth comes from the frame before
    const tWords words = kSmall + tWords{"--from", "1270", "--to", "1340"};
    EXPECT_EQ(Parts(words, 3), Manifest(words));
}

// Rows 1504 to 1984 have no tunnel; the one after it starts from where the last one ended.
TEST_F(Recording, AnyBeginningIsAPieceOfTheWhole)
{
    const tWords whole = Manifest(kSmall + tWords{"--from", "1400", "--to", "2040"});
    const tWords end = Manifest(kSmall + tWords{"--from", "1984", "--to", "2040"});
    ASSERT_GT(whole.size(), end.size());
    EXPECT_EQ(tWords(whole.end() - long(end.size()), whole.end()), end);
}

// The tunnel's depth comes from the frame before; the borders are those of no equal pieces.
TEST_F(Recording, FramesAreAPieceOfTheWhole)
{
    const tWords words = kSmall + tWords{"--from", "1270", "--to", "1340"};
    const tWords whole = Manifest(words);
    const std::string head = test::ReadFile(Folder() / "manifest.txt").substr(0, 200);
    const int64_t first = std::stoll(whole.front()), last = std::stoll(whole.back());
    tWords all;
    for (const auto &[from, to] :
         {std::pair(first, first), {first + 1, last - 40}, {last - 39, last}})
        all = all +
              Manifest(words + tWords{"--frames", std::to_string(from) + "-" + std::to_string(to)});
    EXPECT_EQ(all, whole);
    EXPECT_EQ(test::ReadFile(Folder() / "manifest.txt").substr(0, head.find('\n')),
              head.substr(0, head.find('\n')));
}

// What pieces have to have in common.
TEST_F(Recording, SaysWhatItIsOf)
{
    const tWords words = kSmall + tWords{"--from", "176", "--to", "178"};
    Manifest(words);
    const std::string manifest = test::ReadFile(Folder() / "manifest.txt");
    const auto describe = [&](const std::string &show) {
        return test::Run(tWords{VYR_RECORD, "--show", show, "--describe"} + words, Folder())
            .mOutput;
    };
    const std::string said = describe("show");
    EXPECT_EQ(manifest.substr(0, manifest.find('\n') + 1), "# " + said);
    EXPECT_THAT(said,
                testing::HasSubstr("), 64x36, 30 frames a second, frames 300-303, drawn by "));
    fs::copy(Folder() / "show", Folder() / "copy", fs::copy_options::recursive);
    EXPECT_EQ(describe("copy"), said);
    test::WriteFile(Folder() / "copy/data/more.txt", "x");
    EXPECT_NE(describe("copy"), said);
    fs::rename(Folder() / "copy/data/more.txt", Folder() / "copy/note.txt"); // no part of the show
    EXPECT_EQ(describe("copy"), said);
    fs::remove_all(Folder() / "copy");
}

TEST_F(Recording, SaysWhatEachFrameCosts)
{
    const tWords words = kSmall + tWords{"--from", "1270", "--to", "1340", "--costs", "costs.txt"};
    const tWords frames = Manifest(words);
    const tWords costs = ManifestLines(Folder() / "costs.txt");
    ASSERT_EQ(costs.size(), frames.size());
    for (size_t i = 0; i < costs.size(); i++) {
        std::istringstream line(costs[i]), expected(frames[i]);
        std::string frame, row, expectedFrame, expectedRow;
        double clock = 0, processor = 0;
        EXPECT_TRUE(line >> frame >> row >> clock >> processor) << costs[i];
        expected >> expectedFrame >> expectedRow;
        EXPECT_EQ(frame + row, expectedFrame + expectedRow);
        EXPECT_GT(clock, 0);
        EXPECT_GT(processor, 0);
    }
}

TEST_F(Recording, FramesKeepTheirNumbersAndRows)
{
    const tWords lines = Manifest({"--size", "64x36", "--from", "176", "--to", "176.5"});
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_THAT(lines[0], testing::StartsWith("600 176.000000 "));
    EXPECT_THAT(lines[1], testing::StartsWith("601 176.293333 "));
}

TEST_F(Recording, AStillIsTheFrameOfItsRow)
{
    const tWords lines =
        Manifest({"--size", "128x72", "--from", "1300", "--to", "1300.5", "--fps", "60"});
    ASSERT_FALSE(lines.empty());
    std::string frame, row, hash;
    std::istringstream(lines[0]) >> frame >> row >> hash;
    Make({"--size", "128x72", "--still", row, "-o", "still.png"});
    EXPECT_EQ(HashPixels(ReadPng(Folder() / "still.png")), hash) << row;
}

TEST_F(Recording, AStillMayHaveAnySize)
{
    Make({"--size", "33x17", "--still", "100.5", "-o", "odd.png"});
    int width = 0, height = 0, components = 0;
    ASSERT_TRUE(stbi_info((Folder() / "odd.png").c_str(), &width, &height, &components));
    EXPECT_EQ(width, 33);
    EXPECT_EQ(height, 17);
}

struct cRateCase
{
    const char *mRate;
    const char *mFrames; // of the rows 352 to 369.6, a second
    double mSecondsPerFrame;
};

TEST_F(Recording, HasSizeRateLengthAndSoundThatItWasAskedFor)
{
    const cRateCase cases[] = {{"24", "24", 1.0 / 24},
                               {"25", "25", 1.0 / 25},
                               {"30000/1001", "30", 1001.0 / 30000},
                               {"60", "60", 1.0 / 60},
                               {"120", "120", 1.0 / 120}};
    for (const cRateCase &each : cases) {
        SCOPED_TRACE(each.mRate);
        Make({"--size", "96x54", "--fps", each.mRate, "--from", "352", "--to", "369.6", "-o",
              "video.mp4"});
        const std::string rate = std::string(each.mRate) + (strchr(each.mRate, '/') ? "" : "/1");
        EXPECT_EQ(Probe(Folder() / "video.mp4", "v:0",
                        "stream=codec_name,width,height,pix_fmt,r_frame_rate,nb_read_frames"),
                  (tWords{"h264", "96", "54", "yuv420p", rate, each.mFrames}));
        EXPECT_EQ(Probe(Folder() / "video.mp4", "a:0", "stream=codec_name,sample_rate,start_time"),
                  (tWords{"aac", "44100", "0.000000"}));
        const double picture =
            std::stod(Probe(Folder() / "video.mp4", "v:0", "stream=duration").at(0));
        const double sound =
            std::stod(Probe(Folder() / "video.mp4", "a:0", "stream=duration").at(0));
        EXPECT_NEAR(picture, std::stoi(each.mFrames) * each.mSecondsPerFrame, 0.001);
        EXPECT_NEAR(sound, picture, each.mSecondsPerFrame);
    }
}

// The index of the first sample that is louder than a tenth, from `begin` on.
size_t FindClick(const std::vector<int16_t> &samples, size_t begin)
{
    while (begin < samples.size() && std::abs(samples[begin]) < 3277)
        begin++;
    return begin;
}

// The music clicks at whole seconds. Row 33.44 is 1.9 seconds: the first click comes 0.1 s later.
TEST_F(Recording, SoundIsWhereTheMusicHasIt)
{
    Make(kSmall + tWords{"--from", "33.44", "--to", "80", "-o", "click.mp4"});
    const std::vector<int16_t> sound = DecodedSound(Folder() / "click.mp4");
    const double begin = double(std::lround(33.44 / 17.6 * 30)) / 30; // of the first frame
    const size_t first = FindClick(sound, 0);
    EXPECT_NEAR(double(first) / 44100, 2.0 - begin, 0.005);
    EXPECT_NEAR(double(FindClick(sound, first + 22050)) / 44100, 3.0 - begin, 0.005);
}

TEST_F(Recording, IsSilentAfterTheMusicsEnd)
{
    Make(kSmall + tWords{"--from", "220", "--to", "264", "-o", "late.mp4"}); // 12.5 to 15 s
    const std::vector<int16_t> sound = DecodedSound(Folder() / "late.mp4");
    EXPECT_NEAR(double(sound.size()) / 44100, 2.5, 1.0 / 30);
    EXPECT_EQ(FindClick(sound, 0), sound.size());
}

class Joining : public Recording
{
protected:
    static std::string PacketTimes(const std::string &name, const std::string &stream)
    {
        return test::Run({"ffprobe", "-v", "error", "-select_streams", stream, "-show_entries",
                          "packet=pts,dts,duration", "-of", "csv", name},
                         Folder())
            .mOutput;
    }

    static inline const tWords kRange = kSmall + tWords{"--from", "8.8", "--to", "105.6"};

    // Rows 8.8 to 105.6, 5.5 seconds, in one piece.
    static void SetUpTestSuite()
    {
        Recording::SetUpTestSuite();
        Make(kRange + tWords{"-o", "whole.mp4"});
    }

    // The same in `parts` pieces, joined.
    static void RecordAndJoin(int parts)
    {
        std::ofstream list(Folder() / "parts.txt");
        for (int part = 1; part <= parts; part++) {
            const std::string name = "part" + std::to_string(part) + ".mp4";
            Make(kRange +
                 tWords{"-o", name, "--part", std::to_string(part) + "/" + std::to_string(parts)});
            list << "file " << name << '\n';
        }
        list.close();
        const test::cProcessResult joined =
            test::Run({"ffmpeg", "-y", "-v", "warning", "-f", "concat", "-i", "parts.txt", "-c",
                       "copy", "-copyts", "joined.mp4"},
                      Folder());
        EXPECT_EQ(joined.mStatus, 0);
        EXPECT_EQ(joined.mErrors, "");
    }

    // Every sample of the whole, within what rounding times to milliseconds moves them.
    static void ExpectTheSoundOfTheWhole()
    {
        const std::vector<int16_t> whole = DecodedSound(Folder() / "whole.mp4");
        const std::vector<int16_t> joined = DecodedSound(Folder() / "joined.mp4");
        EXPECT_NEAR(double(joined.size()), double(whole.size()), 44.1 * 34);
        size_t at = 0, atJoined = 0;
        for (int click = 0; click < 5; click++) {
            at = FindClick(whole, at);
            atJoined = FindClick(joined, atJoined);
            EXPECT_NEAR(double(atJoined), double(at), 44.1) << click; // a millisecond
            const size_t count = 22050;
            ASSERT_LE(std::max(at, atJoined) + count, std::min(whole.size(), joined.size()));
            for (size_t i = 0; i < count; i++)
                ASSERT_EQ(joined[atJoined + i], whole[at + i]) << click << ' ' << i;
            at += count;
            atJoined += count;
        }
    }
};

TEST_F(Joining, GivesTheWholeFrameForFrameAndLeavesNoSeamInTheSound)
{
    const tWords whole = DecodedFrames(Folder() / "whole.mp4");
    EXPECT_EQ(whole.size(), 165u);
    for (int parts : {2, 7}) {
        SCOPED_TRACE(parts);
        RecordAndJoin(parts);
        EXPECT_EQ(DecodedFrames(Folder() / "joined.mp4"), whole);
        EXPECT_EQ(Probe(Folder() / "joined.mp4", "v:0", "stream=r_frame_rate,start_time,duration"),
                  Probe(Folder() / "whole.mp4", "v:0", "stream=r_frame_rate,start_time,duration"));
        ExpectTheSoundOfTheWhole();
    }
}

// The recorder's own way to join: sound and captions as in the whole, packet by packet. The borders
// are anywhere, and so is no group of pictures of the whole.
TEST_F(Joining, OfPicturesIsTheWhole)
{
    const tWords range = kSmall + tWords{"--from", "8.8", "--to", "105.6"};
    Make(range + tWords{"-o", "whole.mp4"});
    std::string list;
    for (const auto &[from, to] : {std::pair(15, 41), {42, 118}, {119, 179}}) {
        const std::string name = "piece" + std::to_string(from) + ".mp4";
        Make(range +
             tWords{"-o", name, "--frames", std::to_string(from) + "-" + std::to_string(to)});
        list += "file " + name + "\ninpoint 0us\nduration " +
                std::to_string((to + 1) * 1000000 / 30 - from * 1000000 / 30) + "us\n";
    }
    test::WriteFile(Folder() / "pieces.txt", list);
    Make(range + tWords{"-o", "joined.mp4", "--pictures", "pieces.txt"});
    EXPECT_EQ(DecodedFrames(Folder() / "joined.mp4").size(), 165u);
    EXPECT_EQ(DecodedSound(Folder() / "joined.mp4"), DecodedSound(Folder() / "whole.mp4"));
    for (const char *stream : {"v:0", "a:0"})
        EXPECT_EQ(PacketTimes("joined.mp4", stream), PacketTimes("whole.mp4", stream));
}

// Lyric 0 shows from bar 8 on, from the row at which its fade passes a tenth: row 260 is 0.227 s
// after row 256.
TEST_F(Recording, CarriesWordsAsCaptions)
{
    std::string words;
    for (int i = 0; i < 34; i++)
        words += std::to_string(i) + " line " + std::to_string(i) + "\n";
    test::WriteFile(Folder() / "words.txt", words);
    Make(kSmall +
         tWords{"--from", "256", "--to", "352", "-o", "words.mp4", "--lyrics", "words.txt"});
    EXPECT_EQ(Probe(Folder() / "words.mp4", "s:0", "stream=codec_name"), tWords{"mov_text"});
    const test::cProcessResult read =
        test::Run({"ffmpeg", "-v", "error", "-i", "words.mp4", "-f", "webvtt", "-"}, Folder());
    EXPECT_THAT(read.mOutput,
                testing::MatchesRegex("WEBVTT\n\n00:00.[12][0-9]+ --> "
                                      "00:03.6[0-9]+\nline 0\n\n"
                                      "00:03.[89][0-9]+ --> 00:05.4[0-9]+\nline 1\n"));
}

TEST_F(Recording, MakesAContactSheet)
{
    Make({"--size", "320x180", "--sheet", "--every", "16", "--columns", "3", "-o", "sheet.png"});
    int width = 0, height = 0, components = 0;
    ASSERT_TRUE(stbi_info((Folder() / "sheet.png").c_str(), &width, &height, &components));
    EXPECT_EQ(width, 2 * 20 + 3 * 320 + 2 * 12);
    EXPECT_EQ(height, 2 * 20 + 48 + 3 * (180 + 26) + 2 * 12);
}

TEST_F(Recording, ReportsFlashesWithTheTrackThatMadeThem)
{
    fs::copy(Folder() / "show", Folder() / "strobe", fs::copy_options::recursive);
    golden::WriteTracks("strobe", golden::Strobe(5.0, 1.0f));
    const tWords words = {VYR_RECORD, "--show", "strobe", "--flash-report", "flashes.txt", "--size",
                          "64x36",    "--to",   "90"};
    const test::cProcessResult result = test::Run(words, Folder());
    EXPECT_EQ(result.mStatus, 3);
    EXPECT_EQ(result.mErrors, "vyr-record: " + (Folder() / "flashes.txt").string() +
                                  ": more than three flashes in a second\n");
    const tWords lines = ManifestLines(Folder() / "flashes.txt");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], testing::MatchesRegex("general [0-9.]+ [0-9.]+ [0-9.]+ [0-9.]+ 5[.][05] "
                                                "[0-9]+ fade:bg_white"));
    golden::WriteTracks("strobe", golden::Strobe(2.0, 1.0f));
    EXPECT_EQ(test::Run(words, Folder()).mStatus, 0);
    EXPECT_TRUE(ManifestLines(Folder() / "flashes.txt").empty());
}

/// The drawing of the player: its window, its loading, its loop from the first frame on.
class PlayersDrawing : public test::cOffscreenTest
{
protected:
    static constexpr int kWidth = 320, kHeight = 180;

    PlayersDrawing() : cOffscreenTest(kWidth, kHeight)
    {
        golden::WriteContent(".");
        golden::WriteTracks(".", golden::Sections());
        mDevice = sync_create_device(demo::kTrackPrefix);
        mShow.mTracks = demo::LoadTracks(mDevice);
        mShow.mAssets = demo::LoadAssets();
        demo::Tunnel(mShow.mAssets.mTunnelTexture, 0.0f); // forget other tests' tunnels
        glEnable(GL_BLEND);
    }

    ~PlayersDrawing() override { sync_destroy_device(mDevice); }

    record::cPicture Draw(double row, double seconds)
    {
        demo::DrawFrame(mShow, row, seconds);
        record::cPicture picture(kWidth, kHeight);
        picture.mBytes = ReadPicture().mBytes;
        for (size_t i = 3; i < picture.mBytes.size(); i += 4)
            picture.mBytes[i] = 255;
        mRenderer.Present();
        return picture;
    }

    void DrawIntoTextures()
    {
        const int color = mTextures.CreateTexture("color", kWidth, kHeight, true, false);
        const int depth = mTextures.CreateTexture("depth", kWidth, kHeight, true, true);
        mRenderer.BeginUpdateFBO(mRenderer.CreateFBO(unsigned(color), unsigned(depth)));
    }

    test::cTemporaryFolder mFolder;
    sync_device *mDevice = nullptr;
    demo::cLoadedShow mShow;
};

// Frame after frame from the first one on, as the player draws, without any of the recorder's
// parts.
TEST_F(PlayersDrawing, IsWhatIsRecorded)
{
    const test::cProcessResult recorded = test::Run(
        {VYR_RECORD, "--size", "320x180", "--fps", "2", "--to", "1600", "--manifest", "a.txt"});
    ASSERT_EQ(recorded.mStatus, 0) << recorded.mErrors;
    const tWords lines = ManifestLines("a.txt");
    ASSERT_EQ(lines.size(), 182u);
    DrawIntoTextures();
    for (size_t i = 0; i < lines.size(); i++) {
        const double seconds = double(i) / 2.0;
        EXPECT_THAT(lines[i], testing::EndsWith(HashPixels(Draw(17.6 * double(i) / 2.0, seconds))))
            << i;
    }
}

// OpenGL's rows run up in a texture and may run down in a window, so that a driver may round a
// texel's place the other way: one level, seldom.
TEST_F(PlayersDrawing, InItsWindowIsWhatIsRecorded)
{
    int pixels = 0, different = 0;
    for (int frame = 0; frame < 400; frame++) {
        const double seconds = frame / 2.0, row = 17.6 * frame / 2.0;
        const record::cPicture drawn = Draw(row, seconds);
        if (frame % 50 != 10)
            continue;
        const test::cProcessResult recorded =
            test::Run({VYR_RECORD, "--size", "320x180", "--fps", "2", "--still",
                       std::to_string(row), "-o", "still.png"});
        ASSERT_EQ(recorded.mStatus, 0) << recorded.mErrors;
        const record::cPicture still = ReadPng("still.png");
        ASSERT_EQ(still.mBytes.size(), drawn.mBytes.size());
        for (size_t i = 0; i < drawn.mBytes.size(); i++) {
            const int difference = std::abs(drawn.mBytes[i] - still.mBytes[i]);
            ASSERT_LE(difference, 1) << frame;
            different += difference;
            pixels++;
        }
    }
    EXPECT_LT(different, pixels / 10000);
}
} // namespace
