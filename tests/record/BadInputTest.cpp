// What goes wrong around the recorder, through the real program: one line that names the thing, the
// right exit status, and no file that was not there before.

#include "tests/record/RecordRun.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fstream>
#include <functional>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace record_test;
using testing::HasSubstr;

namespace
{
class BadInput : public cRecordTest
{
protected:
    // Runs `words` and expects `status`, one line with `what` in it, and no new file.
    static void Expect(const tWords &words, int status, const std::string &what,
                       const tWords &environment = {})
    {
        SCOPED_TRACE(testing::PrintToString(words));
        const tWords before = Files();
        const test::cProcessResult result = Record(words, environment);
        EXPECT_EQ(result.mStatus, status);
        EXPECT_THAT(result.mErrors, HasSubstr(what));
        EXPECT_THAT(result.mErrors, testing::StartsWith("vyr-record: "));
        EXPECT_EQ(std::count(result.mErrors.begin(), result.mErrors.end(), '\n'), 1)
            << result.mErrors;
        EXPECT_EQ(Files(), before);
    }

    static void WriteScript(const std::string &path, const std::string &body)
    {
        test::WriteFile(Folder() / path, "#!/bin/sh\n" + body);
        fs::permissions(Folder() / path, fs::perms::owner_all);
    }

    static std::string PathWith(const std::string &folder)
    {
        std::string path = (Folder() / folder).string();
        return path.insert(0, "PATH=").append(":").append(std::getenv("PATH"));
    }
};

TEST_F(BadInput, UsageErrorsNameTheOption)
{
    const tWords video = {"-o", "a.mp4"};
    Expect({}, 2, "nothing to do");
    Expect({"--frobnicate"}, 2, "--frobnicate");
    Expect({"-o"}, 2, "--output");
    Expect({"-o", "a.png"}, 2, ".mp4");
    Expect({"--still", "10", "-o", "a.mp4"}, 2, ".png");
    Expect({"--still", "10"}, 2, "-o");
    Expect({"extra", "-o", "a.mp4"}, 2, "extra");
    for (const char *size : {"0x0", "0x720", "1280", "1280x", "x720", "-2x4", "1e3x4", "4x4x4", ""})
        Expect(video + tWords{"--size", size}, 2, "--size");
    Expect(video + tWords{"--size", "65x36"}, 2, "even");
    Expect(video + tWords{"--size", "200000x200000"}, 2, "the driver draws up to");
    for (const char *rate : {"0", "-1", "29.97", "60/0", "fast", "1/0"})
        Expect(video + tWords{"--fps", rate}, 2, "--fps");
    for (const char *row : {"-1", "3624.1", "4000", "nan", "inf", "ten", "1e99"}) {
        Expect(video + tWords{"--from", row}, 2, "--from");
        Expect(video + tWords{"--to", row}, 2, "--to");
        Expect({"--still", row, "-o", "a.png"}, 2, "--still");
    }
    Expect({"--still", "3624", "-o", "a.png"}, 2, "--still");
    Expect(video + tWords{"--from", "20", "--to", "10"}, 2, "--from");
    Expect(video + tWords{"--from", "20", "--to", "20.001"}, 2, "no frame");
    for (const char *part : {"0/4", "5/4", "1", "1/0", "a/b", "-1/4", "1/4/2", "1.5/4"})
        Expect(video + tWords{"--part", part}, 2, "--part");
    Expect(video + tWords{"--to", "1", "--part", "1/100"}, 2, "--part");
    for (const char *frames : {"3", "5-4", "-1-4", "a-b", "1-2-3", "1.5-4", "0-99999999999999999"})
        Expect(video + tWords{"--frames", frames}, 2, "--frames");
    Expect(video + tWords{"--from", "176", "--frames", "599-700"}, 2, "are 600-");
    Expect(video + tWords{"--to", "176", "--frames", "0-600"}, 2, "are 0-599");
    Expect(video + tWords{"--frames", "1-2", "--part", "1/2"}, 2, "--frames");
    Expect({"--describe", "--manifest", "m.txt"}, 2, "--manifest");
    Expect({"--describe", "-o", "a.png"}, 2, ".mp4");
    Expect({"--pictures", "list.txt"}, 2, "--output");
    Expect(video + tWords{"--pictures", "list.txt", "--manifest", "m.txt"}, 2, "--manifest");
    Expect({"--manifest", "m.txt", "--costs", "m.txt"}, 2, "two results");
    Expect({"--sheet", "-o", "a.png", "--every", "0"}, 2, "--every");
    Expect({"--sheet", "-o", "a.png", "--columns", "0"}, 2, "--columns");
    Expect(video + tWords{"--every", "2"}, 2, "--every");
    Expect({"--sheet", "--still", "3", "-o", "a.png"}, 2, "--still");
    Expect({"--sheet", "--manifest", "m.txt", "-o", "a.png"}, 2, "--manifest");
    Expect({"--manifest", "m.txt", "--lyrics", "l.txt"}, 2, "--lyrics");
    Expect({"--manifest", "m.txt", "--flash-report", "./m.txt"}, 2, "two results");
}

TEST_F(BadInput, OutputThatCannotBeWrittenIsNamed)
{
    Expect(kSmall + tWords{"--to", "5", "-o", "no/folder/a.mp4"}, 1, "no/folder/a.mp4");
    Expect(kSmall + tWords{"--to", "5", "--manifest", "no/folder/m.txt"}, 1, "no/folder/m.txt");
    Expect(kSmall + tWords{"--to", "5", "--flash-report", "no/f.txt"}, 1, "no/f.txt");
    Expect(kSmall + tWords{"--to", "5", "--costs", "no/c.txt"}, 1, "no/c.txt");
    Expect(kSmall + tWords{"--to", "5", "--costs", "/dev/full"}, 1, "No space left");
    Expect(kSmall + tWords{"--to", "5", "-o", "a.mp4", "--pictures", "none.txt"}, 1, "none.txt");
    Expect(kSmall + tWords{"--to", "5", "--manifest", "/dev/full"}, 1, "No space left");
    Expect({"--still", "5", "-o", "no/folder/a.png"}, 1, "no/folder/a.png");
    Expect({"--sheet", "-o", "no/folder/a.png"}, 1, "no/folder/a.png");
    fs::create_directory(Folder() / "folder.mp4");
    Expect(kSmall + tWords{"--to", "5", "-o", "folder.mp4"}, 1, "folder.mp4");
}

TEST_F(BadInput, ShowThatIsNoneIsNamed)
{
    const auto fail = [](const tWords &command, const std::string &what) {
        const test::cProcessResult result = test::Run(command, Folder());
        EXPECT_EQ(result.mStatus, 1);
        EXPECT_THAT(result.mErrors, HasSubstr(what));
        EXPECT_EQ(std::count(result.mErrors.begin(), result.mErrors.end(), '\n'), 1);
    };
    fail({VYR_RECORD, "--show", "nowhere", "-o", "a.mp4"}, "nowhere");
    const std::string own = fs::path(VYR_RECORD).parent_path().string();
    const std::string here = fs::canonical(Folder()).string();
    fail({VYR_RECORD, "-o", "a.mp4"}, "no show in " + own + " or " + here + ": ");
    fail({VYR_RECORD, "-o", "a.mp4"}, "name the show's with --show DIR");
}

class BrokenShow : public BadInput
{
protected:
    // A show in which `path` holds `bytes`, or is missing where they are "-".
    static void ExpectNamed(const std::string &path, const std::string &bytes,
                            const std::string &what)
    {
        SCOPED_TRACE(path);
        fs::remove_all(Folder() / "broken");
        fs::copy(Folder() / "show", Folder() / "broken", fs::copy_options::recursive);
        fs::remove(Folder() / "broken" / path);
        if (bytes != "-")
            test::WriteFile(Folder() / "broken" / path, bytes);
        const test::cProcessResult result = test::Run(
            {VYR_RECORD, "--show", "broken", "--size", "64x36", "--fps", "1", "-o", "broken.mp4"},
            Folder());
        EXPECT_EQ(result.mStatus, 1);
        EXPECT_THAT(result.mErrors, HasSubstr(path));
        EXPECT_THAT(result.mErrors, HasSubstr(what));
        EXPECT_FALSE(Exists("broken.mp4"));
    }
};

TEST_F(BrokenShow, NamesTheFileAndTheReason)
{
    const std::string key("\1\0\0\0\0\0\0\0\0\0\0\0\0\0\x80\x3f", 16); // row 0, value 1
    ExpectNamed("data/waiting.mp3", "-", "No such file");
    ExpectNamed("data/waiting.mp3", "no music at all", "Invalid");
    ExpectNamed("data/oh1.lwo", "-", "not there");
    ExpectNamed("data/oh2.lwo", "FORM", "LWO2");
    ExpectNamed("data/shaders/plasma.fs", "-", "not there");
    ExpectNamed("data/shaders/noise.fs", "void main() { oops }", "compile");
    ExpectNamed("data/photos/tovak01.png", "-", "picked by sync_image:");
    ExpectNamed("data/lyrics/lyrics003", "no picture", "picked by sync_lyrics:num.track");
    ExpectNamed("data/zemlogo.png", "-", "not there");
    ExpectNamed("data/tex9.png", "no picture", "no picture that can be read");
    ExpectNamed("data/vignette1.png", "-", "not there");
    ExpectNamed("sync_fade:plasma.track", "abc", "cut off");
    ExpectNamed("sync_fade:plasma.track", std::string("\2\0\0\0\0\0\0\0", 8) + key.substr(8),
                "fewer");
    ExpectNamed("sync_fade:plasma.track", std::string(8, '\xff'), "negative");
    ExpectNamed("sync_fade:plasma.track", key + '\7', "interpolation");
    // 0 at row 0, 100 at row 35.2 and later: each track that picks from a table
    const std::string far = std::string("\2\0\0\0\0\0\0\0", 8) + std::string(9, '\0') +
                            std::string("\x23\0\0\0\0\0\xc8\x42\0", 9);
    for (const char *track :
         {"image:left", "image:right", "image:center", "lyrics:num", "object:num"})
        ExpectNamed(std::string("sync_") + track + ".track", far,
                    ".track: 100 at row 35.200000, where ");
}

TEST_F(BrokenShow, TrackThatIsMissingIsNamedAndZero)
{
    const fs::path show = Folder() / "incomplete";
    fs::copy(Folder() / "show", show, fs::copy_options::recursive);
    fs::remove(show / "sync_fade:plasma.track");
    const test::cProcessResult result = test::Run({VYR_RECORD, "--show", "incomplete", "--size",
                                                   "64x36", "--still", "100", "-o", "still.png"},
                                                  Folder());
    EXPECT_EQ(result.mStatus, 0);
    EXPECT_EQ(result.mErrors, "vyr-record: not there, so 0 throughout: sync_fade:plasma.track\n");
    EXPECT_TRUE(Exists("still.png"));
}

TEST_F(BadInput, WordsThatCannotBeReadAreNamed)
{
    const tWords words = kSmall + tWords{"--from", "256", "--to", "352", "-o", "a.mp4", "--lyrics"};
    Expect(words + tWords{"nowhere.txt"}, 1, "nowhere.txt");
    test::WriteFile(Folder() / "some.txt", "0 only these\n");
    Expect(words + tWords{"some.txt"}, 1, "lyric 1");
    test::WriteFile(Folder() / "some.txt", "zero\n");
    Expect(words + tWords{"some.txt"}, 1, "some.txt");
}

TEST_F(BadInput, NoEncoderIsSaidInOneLine)
{
    Expect(kSmall + tWords{"--to", "5", "-o", "a.mp4"}, 1, "ffmpeg", {"PATH=/nowhere"});
}

// An encoder that takes the sound, then a little of the picture, and ends.
TEST_F(BadInput, EncoderThatEndsHalfWayLeavesTheOldFile)
{
    fs::create_directory(Folder() / "fake");
    WriteScript("fake/ffmpeg", "case \"$*\" in *rawvideo*) head -c 50000 >/dev/null\n"
                               "echo first >&2; echo 'went away' >&2; exit 9;; esac\n"
                               "PATH=${PATH#*:} exec ffmpeg \"$@\"\n");
    test::WriteFile(Folder() / "old.mp4", "old");
    Expect(kSmall + tWords{"-o", "old.mp4"}, 1, "went away", {PathWith("fake")});
    EXPECT_EQ(test::ReadFile(Folder() / "old.mp4"), "old");
    WriteScript("fake/ffmpeg", "case \"$*\" in *rawvideo*) head -c 50000 >/dev/null\n"
                               "kill -9 $$;; esac\n"
                               "PATH=${PATH#*:} exec ffmpeg \"$@\"\n");
    Expect(kSmall + tWords{"-o", "old.mp4"}, 1, "signal 9", {PathWith("fake")});
    EXPECT_EQ(test::ReadFile(Folder() / "old.mp4"), "old");
}

// Music that can't be encoded ends the recording long before its 6178 frames of 3456 bytes are
// drawn.
TEST_F(BadInput, EncoderOfTheMusicThatFailsIsNotDrawnFor)
{
    fs::create_directory(Folder() / "fake");
    WriteScript("fake/ffmpeg",
                "case \"$*\" in *rawvideo*) ;; *) echo 'no music' >&2; exit 1;; esac\n"
                "PATH=${PATH#*:}\n"
                "[ $(head -c 21351168 | wc -c) -lt 21351168 ] || touch all\n");
    Expect(kSmall + tWords{"-o", "a.mp4"}, 1, "no music", {PathWith("fake")});
    EXPECT_FALSE(Exists("show/all"));
}

class NoRoom : public BadInput
{
protected:
    // No file may grow beyond `blocks` of 512 bytes, which a write hears as it hears of a full
    // disk.
    static void ExpectRefusal(const tWords &words, size_t blocks)
    {
        SCOPED_TRACE(blocks);
        const std::string limited =
            "trap '' XFSZ; ulimit -f " + std::to_string(blocks) + "; exec \"$@\"";
        test::WriteFile(Folder() / "full.mp4", "old");
        const tWords before = Files();
        const test::cProcessResult result =
            test::Run(tWords{"sh", "-c", limited, "sh"} + Command(words) + tWords{"-o", "full.mp4"},
                      Folder());
        EXPECT_EQ(result.mStatus, 1);
        EXPECT_THAT(result.mErrors, testing::StartsWith("vyr-record: "));
        EXPECT_THAT(result.mErrors, HasSubstr("File too large"));
        EXPECT_EQ(std::count(result.mErrors.begin(), result.mErrors.end(), '\n'), 1)
            << result.mErrors;
        EXPECT_EQ(Files(), before);
        EXPECT_EQ(test::ReadFile(Folder() / "full.mp4"), "old");
    }
};

TEST_F(NoRoom, ForThePicturesIsSaidAndLeavesNothing)
{
    ExpectRefusal({"--size", "320x180", "--fps", "30", "--to", "100"}, 20);
}

// The pictures and the sound fit, each alone; both in one file do not, by a few bytes.
TEST_F(NoRoom, ForTheLastBytesIsSaidAndLeavesNothing)
{
    const tWords words = kSmall + tWords{"--to", "60"};
    ASSERT_EQ(Record(words + tWords{"-o", "full.mp4"}).mStatus, 0);
    ExpectRefusal(words, (fs::file_size(Folder() / "full.mp4") - 1) / 512);
}

class Interrupting : public BadInput
{
protected:
    // Starts to record for long, and interrupts when it `has begun`.
    static test::cProcessResult RecordAndInterrupt(const tWords &words, int signal,
                                                   const std::function<bool()> &hasBegun)
    {
        test::cProcess process(Command(words), Folder());
        test::WaitUntil([&] { return hasBegun() || !process.IsRunning(); });
        process.Signal(signal);
        return process.Wait();
    }

    // Into a file whose name begins so.
    static bool HasWritten(const std::string &start)
    {
        for (const std::string &name : Files()) {
            std::error_code gone;
            if (name.starts_with(start) && fs::file_size(Folder() / name, gone) > 0 && !gone)
                return true;
        }
        return false;
    }

    static long CountHidden()
    {
        const tWords files = Files();
        return std::count_if(files.begin(), files.end(),
                             [](const std::string &name) { return name[0] == '.'; });
    }
};

TEST_F(Interrupting, LeavesAPlayableFileAndSaysSo)
{
    const test::cProcessResult result = RecordAndInterrupt(
        {"--size", "320x180", "-o", "cut.mp4", "--manifest", "cut.txt"}, SIGINT,
        [] { return HasWritten(".cut.mp4.pictures.") && HasWritten(".cut.txt."); });
    EXPECT_EQ(result.mStatus, 130);
    EXPECT_THAT(result.mErrors,
                testing::MatchesRegex("vyr-record: interrupted: .*/cut.mp4 holds the first [0-9]+ "
                                      "of 12355 frames\n"));
    EXPECT_EQ(CountHidden(), 0);
    const size_t frames = DecodedFrames(Folder() / "cut.mp4").size();
    EXPECT_GT(frames, 0u);
    EXPECT_EQ(ManifestLines(Folder() / "cut.txt").size(), frames);
    EXPECT_THAT(result.mErrors, HasSubstr(std::to_string(frames) + " of 12355"));
    const double picture = std::stod(Probe(Folder() / "cut.mp4", "v:0", "stream=duration").at(0));
    const double sound = std::stod(Probe(Folder() / "cut.mp4", "a:0", "stream=duration").at(0));
    EXPECT_NEAR(sound, picture, 1024.0 / 44100);
}

TEST_F(Interrupting, LeavesNoHalfPicture)
{
    const test::cProcessResult result =
        RecordAndInterrupt({"--sheet", "--every", "0.25", "-o", "sheet.png"}, SIGTERM,
                           [] { return CountHidden() > 0; });
    EXPECT_EQ(result.mStatus, 130);
    EXPECT_FALSE(Exists("sheet.png"));
    EXPECT_EQ(CountHidden(), 0);
}

TEST_F(BadInput, HelpAndVersionAreNoErrors)
{
    const test::cProcessResult help = Record({"--help"});
    EXPECT_EQ(help.mStatus, 0);
    EXPECT_THAT(help.mOutput, HasSubstr("--flash-report"));
    const test::cProcessResult version = Record({"--version"});
    EXPECT_EQ(version.mStatus, 0);
    EXPECT_THAT(version.mOutput, testing::StartsWith("vyr-record "));
}
} // namespace
