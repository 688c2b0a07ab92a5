#include "tools/tracks/Plotter.h"

#include "tools/tracks/PlotLane.h"
#include "tools/tracks/PlotMusic.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace tracks
{
namespace
{
const char *const paper = "#faf6ec", *const ink = "#2a2a28", *const faint = "#8a8578";
const char *const laneColors[] = {"#1e4f5a", "#c8553d", "#4b2e57", "#9a6a12", "#2f7d68", "#7a3b2e"};

// A page, in pixels.
struct cLayout
{
    double mWidth, mLaneHeight, mLaneGap, mMusicHeight;
};
const cLayout showLayout = {2700, 44, 13, 150};
const cLayout trackLayout = {1900, 520, 20, 130};
const double marginLeft = 180, marginRight = 40, titleHeight = 46, sectionHeight = 24,
             rulerHeight = 26, wordsHeight = 175, bottom = 60;

std::string MinutesAndSeconds(double seconds)
{
    char text[48];
    const long whole = std::lround(seconds);
    std::snprintf(text, sizeof text, "%ld:%02ld", whole / 60, whole % 60);
    return text;
}

// The smallest step of `unit` times a power of two whose marks lie `pixels` apart or more.
double MarkStep(const cTimeAxis &axis, double unit, double pixels)
{
    const double pixelsPerRow = axis.mWidth / (axis.mLastRow - axis.mFirstRow);
    double step = unit;
    while (step * pixelsPerRow < pixels)
        step *= 2.0;
    return step;
}

double FirstMark(const cTimeAxis &axis, double step)
{
    return std::ceil(axis.mFirstRow / step) * step;
}

// From row 0, or the first key, to the show's end, or the last key.
cTimeAxis AxisOf(const cPlotInput &input, double width)
{
    cTimeAxis axis;
    axis.mLeft = marginLeft;
    axis.mWidth = width - marginLeft - marginRight;
    axis.mLastRow = input.mLastRow;
    for (const sync_track *track : input.mTracks) {
        if (track->num_keys == 0)
            continue;
        axis.mFirstRow = std::min(axis.mFirstRow, double(track->keys[0].row));
        axis.mLastRow = std::max(axis.mLastRow, double(track->keys[track->num_keys - 1].row));
    }
    return axis;
}

/// A page in the making: what is drawn next goes to `mTop`.
class cPage
{
public:
    cPage(const cPlotInput &input, const cLayout &layout, size_t laneCount)
        : mInput(input), mLayout(layout), mAxis(AxisOf(input, layout.mWidth)),
          mHeight(HeightFor(laneCount)), mSvg(layout.mWidth, mHeight, paper)
    {}

    void DrawHead(const std::string &title)
    {
        mSvg.Text({marginLeft, 30}, title, 20, ink, eAnchor::Start, true);
        mSvg.Text({mLayout.mWidth - marginRight, 30},
                  "keys: \u25a0 hold  \u25b2 linear  \u25c6 smoothstep  \u25bc quadratic", 12,
                  faint, eAnchor::End);
        mTop = titleHeight;
        DrawGrid();
        DrawSections();
        DrawBarNumbers();
        if (HasMusic()) {
            DrawMusic(mSvg, *mInput.mMusic, mInput.mTempo, mAxis, mTop, mLayout.mMusicHeight);
            mTop += mLayout.mMusicHeight + 14;
        }
        DrawWords();
    }

    void DrawLane(const sync_track &track, const char *color, bool areKeysLabelled)
    {
        const auto names = mInput.mValueNames.find(track.name);
        const std::map<float, std::string> none;
        const cLane lane(track, mAxis, mTop, mLayout.mLaneHeight, color,
                         names == mInput.mValueNames.end() ? none : names->second);
        mSvg.Rect({marginLeft, mTop - 4}, mAxis.mWidth, mLayout.mLaneHeight + 8, "#ffffff", 0.55);
        DrawLaneLabels(track, lane, color);
        lane.Draw(mSvg);
        if (areKeysLabelled)
            lane.DrawKeyLabels(mSvg);
        mTop += mLayout.mLaneHeight + mLayout.mLaneGap;
    }

    std::string Finish()
    {
        DrawSeconds();
        return mSvg.Finish();
    }

private:
    double HeightFor(size_t laneCount) const
    {
        return titleHeight + sectionHeight + rulerHeight +
               (HasMusic() ? mLayout.mMusicHeight + 14 : 0.0) + (HasWords() ? wordsHeight : 0.0) +
               double(laneCount) * (mLayout.mLaneHeight + mLayout.mLaneGap) + bottom;
    }

    bool HasMusic() const { return mInput.mMusic && mInput.mTempo.HasSeconds(); }
    bool HasWords() const { return !mInput.mLyrics.empty() && !mInput.mWords.empty(); }

    void DrawGrid()
    {
        const double low = titleHeight + sectionHeight, high = mHeight - bottom + 6;
        const double fine = MarkStep(mAxis, mInput.mTempo.RowsPerBar(), 14), coarse = 4.0 * fine;
        for (double row = FirstMark(mAxis, fine); row <= mAxis.mLastRow; row += fine) {
            const bool isCoarse = std::fmod(row, coarse) == 0.0;
            mSvg.Line({mAxis.X(row), low}, {mAxis.X(row), high}, isCoarse ? "#d5cdb9" : "#ebe5d6",
                      isCoarse ? 1.0 : 0.7);
        }
    }

    void DrawSections()
    {
        int number = 0;
        for (const timeline::cSectionSpan &section : mInput.mSections) {
            const double from = mAxis.X(section.mFrom), to = mAxis.X(section.mTo);
            const char *fill = number++ % 2 == 0 ? "#1e4f5a" : "#4b2e57";
            mSvg.Rect({from, mTop}, to - from, sectionHeight - 4, fill, 0.9);
            mSvg.Line({from, mTop}, {from, mHeight - bottom + 6}, "#c8553d", 1.0);
            const double size =
                std::min(13.0, (to - from - 6) / (0.62 * double(section.mName.size())));
            if (size > 5.0)
                mSvg.Text({(from + to) / 2, mTop + 15}, section.mName, size, "#f5e9d0",
                          eAnchor::Middle);
        }
        mTop += sectionHeight;
    }

    void DrawBarNumbers()
    {
        mSvg.Text({marginLeft - 22, mTop + 15}, "bar", 11, faint, eAnchor::End);
        const double rowsPerBar = mInput.mTempo.RowsPerBar();
        const double step = MarkStep(mAxis, rowsPerBar, 34);
        for (double row = FirstMark(mAxis, step); row <= mAxis.mLastRow; row += step)
            mSvg.Text({mAxis.X(row), mTop + 15}, std::to_string(std::lround(row / rowsPerBar)), 11,
                      ink, eAnchor::Middle);
        mTop += rulerHeight;
    }

    // Turned on end, since a line stands for two bars only.
    void DrawWords()
    {
        if (!HasWords())
            return;
        mSvg.Text({marginLeft - 8, mTop + 12}, "words", 13, ink, eAnchor::End, true);
        for (const tools::cLyricSpan &span : mInput.mLyrics) {
            const double from = mAxis.X(span.mFrom), to = mAxis.X(span.mTo);
            mSvg.Rect({from, mTop}, to - from, wordsHeight - 14, "#ffb347", 0.25);
            const auto words = mInput.mWords.find(span.mLyric);
            if (words != mInput.mWords.end())
                mSvg.Text({(from + to) / 2 - 3.5, mTop + 4}, words->second, 9, ink, eAnchor::Start,
                          false, 90);
        }
        mTop += wordsHeight;
    }

    void DrawLaneLabels(const sync_track &track, const cLane &lane, const char *color)
    {
        const double right = marginLeft - 8;
        const double size =
            std::min(13.0, (right - 45) / (0.66 * double(std::string(track.name).size())));
        mSvg.Text({right - 40, mTop + mLayout.mLaneHeight / 2 + 4}, track.name, std::max(size, 4.0),
                  color, eAnchor::End, true);
        if (track.num_keys == 0) {
            mSvg.Text({marginLeft + 6, mTop + mLayout.mLaneHeight / 2 + 4}, "no keys: 0 everywhere",
                      9, faint);
            return;
        }
        if (lane.IsPicking())
            return;
        DrawScale(lane, right);
    }

    // The lane's range in two steps, or in as many as have room.
    void DrawScale(const cLane &lane, double right)
    {
        const double low = double(lane.Low()), high = double(lane.High());
        const int steps = low == high ? 0 : std::max(1, int(mLayout.mLaneHeight / 65));
        for (int i = 0; i <= steps; i++) {
            const double value = steps == 0 ? low : low + (high - low) * i / steps;
            char text[32];
            std::snprintf(text, sizeof text, "%.3g", value);
            mSvg.Text({right, lane.Y(value) + 3}, text, 9, faint, eAnchor::End);
            if (i > 0 && i < steps)
                mSvg.Line({marginLeft, lane.Y(value)}, {marginLeft + mAxis.mWidth, lane.Y(value)},
                          "#e2dbc8", 0.7);
        }
    }

    void DrawSeconds()
    {
        if (!mInput.mTempo.HasSeconds())
            return;
        const double y = mHeight - bottom + 26;
        const double step = MarkStep(mAxis, mInput.mTempo.Rows(10.0), 44);
        mSvg.Text({marginLeft - 22, y}, "time", 11, faint, eAnchor::End);
        for (double row = FirstMark(mAxis, step); row <= mAxis.mLastRow; row += step) {
            mSvg.Line({mAxis.X(row), y - 20}, {mAxis.X(row), y - 13}, faint);
            mSvg.Text({mAxis.X(row), y}, MinutesAndSeconds(mInput.mTempo.Seconds(row)), 11, ink,
                      eAnchor::Middle);
        }
    }

    const cPlotInput &mInput;
    const cLayout &mLayout;
    const cTimeAxis mAxis;
    const double mHeight;
    cSvg mSvg;
    double mTop = 0.0;
};

// "fade:plasma" and "fade:fg_black" are of one family.
std::string Family(const std::string &name) { return name.substr(0, name.find(':')); }
} // namespace

std::string PlotShow(const cPlotInput &input)
{
    cPage page(input, showLayout, input.mTracks.size());
    page.DrawHead(input.mTitle);
    std::string family;
    size_t color = 0;
    for (const sync_track *track : input.mTracks) {
        if (!family.empty() && Family(track->name) != family)
            color++;
        family = Family(track->name);
        page.DrawLane(*track, laneColors[color % std::size(laneColors)], false);
    }
    return page.Finish();
}

std::string PlotOneTrack(const cPlotInput &input, const sync_track &track)
{
    cPage page(input, trackLayout, 1);
    page.DrawHead(input.mTitle);
    page.DrawLane(track, laneColors[0], true);
    return page.Finish();
}
} // namespace tracks
