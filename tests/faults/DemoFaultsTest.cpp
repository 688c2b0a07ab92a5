// The show with each of its files faulty in each way: it stops at the assertion that belongs to the
// fault, ends with the sound library's error, or plays on; never otherwise, and never hangs.

#include "demo/Tables.h"
#include "tests/faults/Faults.h"
#include "tests/support/Process.h"
#include "tests/support/Screen.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <csignal>
#include <limits>

namespace fs = std::filesystem;
using faults::cFault;

namespace
{
const char noTexture[] = "ID is out of range: ";

/// One row: a file of the show and what its loss does.
struct cRow
{
    std::string mFile;
    std::string mAssertion; ///< part of the report that stops the show; empty: it plays on
};

std::string TrackFile(int track)
{
    return std::string("sync_") + demo::TrackName(demo::eTrack(track)) + ".track";
}

// What a frame shows stops it, what no frame shows is never missed. Tracks that are lost are 0.
std::vector<cRow> OneOfEachKind()
{
    return {{"data/duck.png", noTexture},      {"data/photos/heart.png", ""},
            {"data/vignette1.png", noTexture}, {"data/shaders/plasma.fs", ""},
            {"data/oh1.lwo", "data/oh1.lwo"},  {TrackFile(demo::IMAGE_LEFT), ""}};
}

void AddPictures(std::vector<cRow> &rows)
{
    for (const char *shown : {"data/frenchduck.png", "data/photos/tovak01.png", "data/zemlogo.png",
                              "data/tex9.png", "data/lyrics/lyrics000"})
        rows.push_back({shown, noTexture});
    for (int i = 3; i < demo::kPhotoCount - 1; i++)
        rows.push_back({demo::PhotoNames()[size_t(i)], ""});
    for (int i = 1; i < demo::kLyricCount; i++)
        rows.push_back({demo::LyricName(i), ""});
}

std::vector<cRow> Table()
{
    std::vector<cRow> rows = OneOfEachKind();
    if (!faults::WantsAll())
        return rows;
    AddPictures(rows);
    for (int i = 0; i < demo::TRACK_COUNT; i++)
        if (i != demo::IMAGE_LEFT)
            rows.push_back({TrackFile(i), ""});
    rows.push_back({"data/shaders/default.vs", ""});
    rows.push_back({"data/shaders/noise.fs", ""});
    rows.push_back({"data/oh2.lwo", "data/oh2.lwo"});
    return rows;
}

class DemoFaults : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        sFolder = new test::cTemporaryFolder;
        faults::WriteShowWithEverythingOn(sFolder->Path());
    }
    static void TearDownTestSuite() { delete sFolder; }

    // A few frames of the show, whose clock follows a script.
    static test::cProcessResult PlayScripted()
    {
        test::cProcess program(test::WithoutPrivileges({VYR_SCRIPTED_DEMO}), sFolder->Path(),
                               {"VYR_TEST_ROWS=0,10,2000,3624"});
        return program.Wait();
    }

    static bool HasPlayed(const test::cProcessResult &result)
    {
        return !result.mTimedOut && result.mStatus == 0;
    }

    static bool HasStopped(const test::cProcessResult &result, const std::string &assertion)
    {
        return !result.mTimedOut && result.mSignal == SIGABRT &&
               result.mErrors.find("Assertion failed: ") != std::string::npos &&
               result.mErrors.find(assertion) != std::string::npos;
    }

    static void ExpectOutcome(const cRow &row, const cFault &fault)
    {
        const faults::cFaultyFile faulty(sFolder->Path() / row.mFile, fault);
        const test::cProcessResult result = PlayScripted();
        const bool stops = !row.mAssertion.empty() && HasStopped(result, row.mAssertion);
        // A picture that lost no more than its end is whole to its decoder.
        const bool mayPlay = row.mAssertion.empty() || fault.mKind == cFault::Cut;
        EXPECT_TRUE(stops || (mayPlay && HasPlayed(result)))
            << row.mFile << " " << fault.Name() << ": status " << result.mStatus << ", signal "
            << result.mSignal << (result.mTimedOut ? ", hung" : "") << "\n"
            << result.mErrors;
    }

    static inline test::cTemporaryFolder *sFolder = nullptr;
};

class EachFile : public DemoFaults, public testing::WithParamInterface<cRow>
{};

TEST_F(DemoFaults, NoneAndItPlays)
{
    const test::cProcessResult result = PlayScripted();
    EXPECT_TRUE(HasPlayed(result)) << result.mErrors;
}

TEST_P(EachFile, HasTheOutcomeThatBelongsToIt)
{
    for (const cFault &fault : faults::List())
        ExpectOutcome(GetParam(), fault);
}

std::string NameOf(const testing::TestParamInfo<cRow> &info)
{
    std::string name;
    for (char c : info.param.mFile)
        name.push_back(std::isalnum(static_cast<unsigned char>(c)) ? c : '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(DemoFaults, EachFile, testing::ValuesIn(Table()), NameOf);

// What a track file can say, past being cut: a count and a type that are none.
TEST_F(DemoFaults, TrackOfANegativeCountStopsAtItsFirstSample)
{
    const fs::path path = sFolder->Path() / TrackFile(demo::FADE_BG_WHITE);
    const faults::cFaultyFile faulty(path, {cFault::Missing});
    test::WriteFile(path, "\xFF\xFF\xFF\xFF" + std::string(13, '\0'));
    EXPECT_TRUE(HasStopped(PlayScripted(), "(lo == hi), function sync_find_key"));
}

TEST_F(DemoFaults, TrackOfAnUnknownTypeStopsWhenItIsSampled)
{
    const fs::path path = sFolder->Path() / TrackFile(demo::FADE_BG_WHITE);
    const faults::cFaultyFile faulty(path, {cFault::Missing});
    std::string bytes = faults::TrackOf(0.0f) + faults::TrackOf(0.0f).substr(8);
    bytes[0] = 2;              // keys
    bytes[8 + 8] = 9;          // type of the first
    bytes[8 + 9 + 1] = '\x7F'; // row of the second: behind the end of the show
    test::WriteFile(path, bytes);
    EXPECT_TRUE(HasStopped(PlayScripted(), "(0), function sync_get_val"));
}

TEST_F(DemoFaults, TrackThatPicksPastItsTableStopsWhenItIsDrawn)
{
    for (const auto &[track, value, assertion] :
         {std::tuple(demo::IMAGE_LEFT, float(demo::kPhotoCount), noTexture),
          std::tuple(demo::LYRICS_NUM, 2e9f, noTexture),
          std::tuple(demo::OBJECT_NUM, 2.0f, "(object), function RenderObject")}) {
        const fs::path path = sFolder->Path() / TrackFile(track);
        const faults::cFaultyFile faulty(path, {cFault::Missing});
        test::WriteFile(path, faults::TrackOf(value));
        EXPECT_TRUE(HasStopped(PlayScripted(), assertion)) << demo::TrackName(track);
    }
}

// Numbers that no curve of a show has: it stops at an index past its table, and else draws on.
TEST_F(DemoFaults, TrackOfAnyNumberPlaysOrStopsAtAnAssertion)
{
    using tLimits = std::numeric_limits<float>;
    const float numbers[] = {tLimits::quiet_NaN(),
                             tLimits::infinity(),
                             -tLimits::infinity(),
                             tLimits::max(),
                             tLimits::lowest(),
                             tLimits::denorm_min(),
                             1e9f,
                             2147483648.0f,
                             -2147483648.0f,
                             -0.5f};
    for (int track = faults::WantsAll() ? 0 : demo::TUNNEL_POS; track < demo::TRACK_COUNT;
         track++) {
        const fs::path path = sFolder->Path() / TrackFile(track);
        const faults::cFaultyFile faulty(path, {cFault::Missing});
        for (float number : numbers) {
            test::WriteFile(path, faults::TrackOf(number));
            const test::cProcessResult result = PlayScripted();
            EXPECT_TRUE(HasPlayed(result) || HasStopped(result, noTexture) ||
                        HasStopped(result, "function RenderObject"))
                << path << " " << number << ": status " << result.mStatus << ", signal "
                << result.mSignal << "\n"
                << result.mErrors;
        }
    }
}

// The music is opened by the real sound library, which has a code for each fault.
test::cProcessResult PlayWithEscape(const fs::path &folder)
{
    test::cScreen screen;
    test::cProcess program(test::WithoutPrivileges({VYR_DEMO}), folder);
    if (screen.WaitForWindow("Demo", program) && screen.AnswersPing())
        screen.PressEscape();
    return program.Wait();
}

const char *SoundErrorOf(cFault::eKind kind)
{
    switch (kind) {
    case cFault::Missing:
        return "FMOD error! (23) ";
    case cFault::Folder:
    case cFault::Unreadable:
        return "FMOD error! (19) ";
    default:
        return "FMOD error! (25) ";
    }
}

TEST_F(DemoFaults, MusicEndsTheShowWithTheSoundLibrarysError)
{
    for (const cFault &fault : faults::List()) {
        const faults::cFaultyFile faulty(sFolder->Path() / "data/waiting.mp3", fault);
        const test::cProcessResult result = PlayWithEscape(sFolder->Path());
        const bool hasPlayed = fault.mKind == cFault::Cut && HasPlayed(result);
        const bool hasEnded =
            result.mStatus == 255 && result.mOutput.find(SoundErrorOf(fault.mKind)) == 0;
        EXPECT_TRUE(hasPlayed || hasEnded)
            << fault.Name() << ": status " << result.mStatus << ", signal " << result.mSignal
            << (result.mTimedOut ? ", hung" : "") << "\n"
            << result.mOutput << result.mErrors;
    }
}

// One line, and nothing after it that speaks of something else.
TEST_F(DemoFaults, WithoutADisplayItSaysSoAndEnds)
{
    test::cProcess program({VYR_SCRIPTED_DEMO}, sFolder->Path(),
                           {"DISPLAY=:nowhere", "WAYLAND_DISPLAY="});
    const test::cProcessResult result = program.Wait();
    EXPECT_EQ(result.mStatus, 255);
    EXPECT_EQ(result.mErrors, "window: X11: Failed to open display :nowhere\n");
    EXPECT_EQ(result.mOutput, "");
}

// A driver that lacks what is drawn with: the first call that it has not ends the show, by name.
TEST_F(DemoFaults, WithoutOpenGL2OrFramebuffersItNamesTheCallAndStops)
{
    for (const char *lack :
         {"MESA_GL_VERSION_OVERRIDE=1.4",
          "MESA_EXTENSION_OVERRIDE=-GL_EXT_framebuffer_object -GL_ARB_framebuffer_object"}) {
        test::cProcess program({VYR_SCRIPTED_DEMO}, sFolder->Path(), {lack});
        const test::cProcessResult result = program.Wait();
        EXPECT_EQ(result.mSignal, SIGABRT) << lack;
        EXPECT_NE(result.mErrors.find("No provider of gl"), std::string::npos) << lack << "\n"
                                                                               << result.mErrors;
    }
}
} // namespace
