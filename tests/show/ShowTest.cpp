#include "show/Show.h"

#include "show/Tempo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{
vyr::cShowDescription Good()
{
    vyr::cShowDescription show;
    show.mTitle = "Good";
    show.mMusic = "data/music.mp3";
    show.mRowsPerSecond = 16;
    show.mLastRow = 256;
    show.mTracks = {"a", "b"};
    show.mFiles = {"data/fog.fs"};
    show.mChoices = {{"a", {"data/moon.png"}}};
    return show;
}

template <typename Change>
std::vector<std::string> FaultsWith(Change change)
{
    vyr::cShowDescription show = Good();
    change(show);
    return FindFaults(show);
}

TEST(ShowDescription, AGoodOneHasNoFaults) { EXPECT_THAT(FindFaults(Good()), IsEmpty()); }

TEST(ShowDescription, EachFaultIsNamed)
{
    using tShow = vyr::cShowDescription;
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(FaultsWith([](tShow &s) { s.mTitle = ""; }), ElementsAre("no title"));
    EXPECT_THAT(FaultsWith([](tShow &s) { s.mMusic = ""; }), ElementsAre("no music"));
    for (double tempo : {0.0, -16.0, notANumber, 1e300})
        EXPECT_THAT(FaultsWith([=](tShow &s) { s.mRowsPerSecond = tempo; }),
                    ElementsAre(HasSubstr("no tempo")));
    for (double last : {0.0, -1.0, notANumber, 1e300})
        EXPECT_THAT(FaultsWith([=](tShow &s) { s.mLastRow = last; }),
                    ElementsAre(HasSubstr("no length")));
    EXPECT_THAT(FaultsWith([](tShow &s) { s.mRowsPerBeat = 0; }),
                ElementsAre(HasSubstr("mRowsPerBeat")));
    EXPECT_THAT(FaultsWith([](tShow &s) {
                    s.mTracks = {"a", "b", "a"};
                }),
                ElementsAre("track 'a' is named twice"));
    EXPECT_THAT(FaultsWith([](tShow &s) {
                    s.mTracks = {"a", "b/c"};
                }),
                ElementsAre(HasSubstr("'b/c': not a name")));
    EXPECT_THAT(FaultsWith([](tShow &s) { s.mChoices[0].mTrack = "c"; }),
                ElementsAre("choice 'c': no track of the show has this name"));
    EXPECT_THAT(FaultsWith([](tShow &s) { s.mChoices[0].mFiles = {}; }),
                ElementsAre("choice 'a': no files to choose from"));
    for (const char *file : {"", "/etc/passwd", "../x", "data/../../x"})
        EXPECT_THAT(FaultsWith([=](tShow &s) { s.mFiles = {file}; }),
                    ElementsAre(HasSubstr("not a path under the show's folder")));
    EXPECT_THAT(FaultsWith([](tShow &s) {
                    s.mTracks = {};
                    s.mChoices = {};
                }),
                ElementsAre("no tracks"));
}

TEST(ShowDescription, HasItsTempo)
{
    vyr::cShowDescription show = Good();
    show.mRowsPerBeat = 6;
    show.mBeatsPerBar = 3;
    EXPECT_EQ(vyr::TempoOf(show).RowsPerBar(), 18);
    EXPECT_EQ(vyr::TempoOf(show).Seconds(show.mLastRow), 16.0);
}

/// A show that samples too early.
class cHasty : public vyr::cShow
{
public:
    vyr::cShowDescription Describe() const override { return Good(); }
    void Load() override {}
    void Draw(double row, double) override { Sample(0, row); }
};

TEST(ShowDeathTest, SamplingBeforeTheTracksAreLoadedIsAMistake)
{
    cHasty show;
    EXPECT_FALSE(show.ReachesLater(0));
    EXPECT_DEATH(show.Draw(0, 0), "No such track, or the tracks are not loaded yet");
}
} // namespace
