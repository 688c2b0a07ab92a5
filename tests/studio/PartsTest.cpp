// What stands in no window: drags, lanes, problems, programs at work, scripts.

#include "studio/Command.h"
#include "studio/Gesture.h"
#include "studio/Problem.h"
#include "studio/Script.h"
#include "tests/support/Wait.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
std::unique_ptr<timeline::cDocument> Open(const std::string &text)
{
    timeline::tTextFaults faults;
    return timeline::cDocument::Open(text, faults);
}

const std::string text = "photo.a = 0\nphoto.b = 1\nphoto.c = 2\n"
                         "track fade linear\n  0 0.3\n  8 0.25\n"
                         "track left\n  0 photo.a\n  8 photo.b\n";

TEST(Gesture, MovesTimeAndValueInOneStep)
{
    const auto document = Open(text);
    const timeline::tKeyIds keys = {document->FindKey("fade", 0)->mId,
                                    document->FindKey("fade", 8)->mId};
    timeline::cTextFault refusal;
    ASSERT_TRUE(document->Apply(studio::MoveEdits(*document, keys, 4, 0.1), refusal));
    EXPECT_THAT(document->Text(), HasSubstr("  4 0.4\n  12 0.35\n")); // not 0.40000001
    document->Undo();
    EXPECT_EQ(document->Text(), text);
    EXPECT_TRUE(studio::MoveEdits(*document, keys, 0, 0.0).IsEmpty());
}

TEST(Gesture, CountedValuesStayWholeAndWithinTheirTable)
{
    studio::cLane lane;
    lane.mFiles = {"a", "b", "c"};
    EXPECT_EQ(studio::DraggedValue(lane, 1.0, 30.0, 0.02, false), 2.0);
    EXPECT_EQ(studio::DraggedValue(lane, 1.0, 300.0, 0.02, true), 2.0);
    EXPECT_EQ(studio::DraggedValue(lane, 1.0, -300.0, 0.02, false), -1.0);
}

// As coarse as pixels: a lane of 0 to 1 on 50 pixels gives hundredths, with Ctrl thousandths.
TEST(Gesture, ValuesAreAsFineAsAHandCanPlaceThem)
{
    studio::cLane lane;
    lane.mCurve = studio::cLaneCurve({{0, 0.5f, SYNC_KEY_LINEAR}});
    EXPECT_EQ(studio::DraggedValue(lane, 0.3, 7.0, 0.02, false), 0.44);
    EXPECT_EQ(studio::DraggedValue(lane, 0.3, 7.0, 0.0213, true), 0.449);
    EXPECT_FALSE(std::signbit(studio::RoundedTo(-0.001, 0.02)));
}

/// The lanes of a show with three tracks, and a timeline of four.
class Lanes : public testing::Test
{
protected:
    Lanes() : mDocument(Open(text + "track extra\n  0 1\n"))
    {
        mShow.mTracks = {"left", "missing", "fade"};
        mShow.mChoices = {{"left", {"a.png", "b.png", "c.png"}}};
        mLanes.Take(mShow, *mDocument);
    }

    std::vector<std::string> Shown(const std::string &search)
    {
        std::vector<std::string> names;
        for (const studio::cLane *lane : mLanes.Shown(search))
            names.push_back(lane->mTrack);
        return names;
    }

    std::unique_ptr<timeline::cDocument> mDocument;
    vyr::cShowDescription mShow;
    studio::cLanes mLanes;
};

TEST_F(Lanes, ShowsOrderFirstThenWhatOnlyTheTimelineHas)
{
    EXPECT_THAT(Shown(""), ElementsAre("left", "missing", "fade", "extra"));
    EXPECT_NE(mLanes.Find("missing")->mProblem, "");
    EXPECT_NE(mLanes.Find("extra")->mProblem, "");
    EXPECT_EQ(mLanes.Find("fade")->mProblem, "");
    EXPECT_TRUE(mLanes.Find("left")->IsPicking());
    EXPECT_EQ(mLanes.Find("fade")->mLow, 0.25f);
}

TEST_F(Lanes, SearchHideAndSolo)
{
    EXPECT_THAT(Shown("S I"), ElementsAre("missing"));
    mLanes.Find("extra")->mIsHidden = true;
    EXPECT_THAT(Shown(""), ElementsAre("left", "missing", "fade"));
    mLanes.Find("fade")->mIsSolo = true;
    EXPECT_THAT(Shown(""), ElementsAre("fade"));
    mLanes.Take(mShow, *mDocument); // a change of the text changes none of it
    EXPECT_THAT(Shown(""), ElementsAre("fade"));
}

TEST_F(Lanes, RangeGrowsWithTheValuesAndDoesNotShrink)
{
    timeline::cTextFault refusal;
    const auto set = [&](float value) {
        timeline::cEdits edits;
        edits.mChanges.push_back({mDocument->FindKey("fade", 8)->mId, {}, value, {}, ""});
        ASSERT_TRUE(mDocument->Apply(edits, refusal));
        mLanes.Take(mShow, *mDocument);
    };
    set(4.0f);
    EXPECT_EQ(mLanes.Find("fade")->mHigh, 4.0f);
    set(1.0f);
    EXPECT_EQ(mLanes.Find("fade")->mHigh, 4.0f);
    EXPECT_EQ(mLanes.Find("fade")->mLow, 0.25f);
}

TEST(Problem, ShadersFaultsHaveLines)
{
    const auto mesa = studio::FromShaderLog(
        "a.fs", "0:12(5): error: `x' undeclared\n0:13(1): warning: unused\n0:20(9): error: no\n");
    ASSERT_EQ(mesa.size(), 2u);
    EXPECT_EQ(mesa[0].ToLine(), "a.fs:12:5: error: `x' undeclared");
    EXPECT_EQ(mesa[1].mLine, 20);
    const auto other = studio::FromShaderLog("a.fs", "0(7) : error C1008: undefined\n");
    EXPECT_EQ(other[0].ToLine(), "a.fs:7: error C1008: undefined");
    EXPECT_EQ(studio::FromShaderLog("a.fs", "").size(), 1u);
}

TEST(Problem, CompilersFaultsHaveLines)
{
    const auto problems = studio::FromBuildLog(
        "[1/3] Building\n/x/a.cpp:3:9: error: expected ';'\n/x/a.cpp:4:1: warning: hm\n"
        "/x/b.h:7: error: again\nninja: build stopped\n");
    ASSERT_EQ(problems.size(), 2u);
    EXPECT_EQ(problems[0].ToLine(), "/x/a.cpp:3:9: expected ';'");
    EXPECT_EQ(problems[1].mLine, 7);
    EXPECT_THAT(studio::FromBuildLog("ninja: error: loading\n")[0].mWhat, HasSubstr("loading"));
}

TEST(Problem, EditorIsTheAuthors)
{
    unsetenv("VISUAL");
    setenv("EDITOR", "nano -l", 1);
    EXPECT_THAT(studio::EditorCommand("a.txt", 7, 3),
                ElementsAre("x-terminal-emulator", "-e", "nano", "-l", "+7", "a.txt"));
    setenv("VISUAL", "/usr/bin/gvim", 1);
    EXPECT_THAT(studio::EditorCommand("a.txt", 0, 0), ElementsAre("/usr/bin/gvim", "+1", "a.txt"));
    setenv("VISUAL", "code --wait", 1);
    EXPECT_THAT(studio::EditorCommand("a.txt", 7, 3),
                ElementsAre("code", "--wait", "-g", "a.txt:7:3"));
    unsetenv("VISUAL");
    unsetenv("EDITOR");
    EXPECT_THAT(studio::EditorCommand("a.txt", 7, 3), ElementsAre("xdg-open", "a.txt"));
}

studio::cCommand &WaitFor(studio::cCommand &command)
{
    test::WaitUntil([&command] {
        command.Update();
        return command.HasEnded();
    });
    return command;
}

TEST(Command, KeepsWhatIsWrittenAndHowItEnds)
{
    studio::cCommand command({"sh", "-c", "echo one; printf 'two\\rthree' >&2; exit 3"});
    WaitFor(command);
    EXPECT_EQ(command.Status(), 3);
    EXPECT_EQ(command.Output(), "one\ntwo\rthree");
    EXPECT_EQ(command.LastLine(), "three");
}

TEST(Command, ThatIsNotThereHasEnded)
{
    studio::cCommand command({"/no/such/program"});
    WaitFor(command);
    EXPECT_EQ(command.Status(), 127);
    EXPECT_THAT(command.Output(), HasSubstr("/no/such/program"));
}

// Gone, or waiting for somebody to ask how it ended.
bool HasEnded(const std::string &process)
{
    std::ifstream file("/proc/" + process + "/stat");
    std::string line;
    return !std::getline(file, line) || line.find(") Z ") != std::string::npos;
}

TEST(Command, EndsWithEverythingThatItStarted)
{
    std::string grandchild;
    {
        studio::cCommand command({"sh", "-c", "sleep 1000 & echo $!; wait"});
        ASSERT_TRUE(test::WaitUntil([&command] {
            command.Update();
            return command.Output().ends_with("\n");
        }));
        grandchild = command.LastLine();
        EXPECT_FALSE(HasEnded(grandchild));
    }
    EXPECT_TRUE(test::WaitUntil([&grandchild] { return HasEnded(grandchild); }));
}

TEST(Script, SaysLineAndReasonOfWhatItCannotRead)
{
    std::vector<studio::cStep> steps;
    std::string error;
    EXPECT_FALSE(studio::ReadScript("wait 3\n\n# x\nkey Meta+Q\n", steps, error));
    EXPECT_EQ(error, "line 4: no modifier \"Meta\": Ctrl, Shift or Alt");
    for (const char *bad : {"wait", "wait -1", "key", "key Nothing", "move 1", "lane", "seek",
                            "click nose", "wheel x", "hold", "dance", "print", "run"})
        EXPECT_FALSE(studio::ReadScript(bad, steps, error)) << bad;
}

TEST(Script, HeldModifiersBelongToWhatFollows)
{
    std::vector<studio::cStep> steps;
    std::string error;
    ASSERT_TRUE(studio::ReadScript("hold Shift\nclick\nlet Shift\nkey Ctrl+Z\n", steps, error));
    ASSERT_EQ(steps.size(), 4u);
    EXPECT_TRUE(steps[0].mEvent.mModifiers.mShift);
    EXPECT_TRUE(steps[0].mEvent.mIsDown);
    EXPECT_FALSE(steps[1].mEvent.mIsDown);
    EXPECT_EQ(steps[2].mEvent.mModifiers, (studio::cModifiers{true, false, false}));
    EXPECT_EQ(steps[2].mEvent.mKey, 'Z');
}
} // namespace
