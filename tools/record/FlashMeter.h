#pragma once

#include "tools/record/FrameGrid.h"
#include "tools/record/FrameWriter.h"

#include <array>
#include <string>
#include <vector>

namespace record
{
/// The colour of a place as light: linear red, green and blue, 0 to 1.
struct cLight
{
    float mRed = 0.0f, mGreen = 0.0f, mBlue = 0.0f;

    float Luminance() const { return 0.2126f * mRed + 0.7152f * mGreen + 0.0722f * mBlue; }
    /// Red makes up 0.8 of it, and it is no black.
    bool IsSaturatedRed() const;
};

/// Distance of two colours in the CIE 1976 chromaticity diagram.
float ChromaticityDistance(const cLight &a, const cLight &b);

/// When a place changed, as far back as matters.
class cTransitions
{
public:
    static constexpr int kKept = 20;

    cTransitions() { mFrames.fill(kNever); }
    void Add(int64_t frame);
    /// The frame of the `count`-th last change, 1 to kKept; far in the past when there were fewer.
    int64_t Last(int count) const;

private:
    static constexpr int64_t kNever = -(int64_t(1) << 40);

    std::array<int64_t, kKept> mFrames;
    int mNext = 0;
};

/// Follows one place through the frames and notes each change that is half a flash: a turn of its
/// relative luminance by 0.1 or more whose darker end is below 0.8.
class cLuminanceWatch
{
public:
    bool IsTransition(float luminance); ///< of the next frame

private:
    enum eDirection : uint8_t
    {
        UNKNOWN,
        UP,
        DOWN
    };

    bool TurnsUp(float luminance);
    bool TurnsDown(float luminance);

    eDirection mDirection = UNKNOWN;
    bool mIsFirst = true;
    float mLowest = 0.0f, mHighest = 0.0f; // since the last turn
};

/// The same for red: a change to or from a saturated red by more than 0.2 in the chromaticity
/// diagram.
class cRedWatch
{
public:
    bool IsTransition(const cLight &light);

private:
    bool mIsFirst = true;
    cLight mReference; // the colour at the last change
};

/// A stretch of frames in each of which the second before it holds too many flashes.
struct cFlashes
{
    bool mIsRed = false;
    int64_t mFirst = 0, mLast = 0; // frames
    int mTransitions = 0;          // most of them in one second; two are a flash
    double mField = 0.0;           // largest share of a 10-degree field
};

/// Finds where the picture flashes more often than WCAG 2.3.1 allows: more than three general or
/// red flashes within a second at each place of an area larger than a quarter of some 10-degree
/// field.
///
/// The picture counts as 1024 pixels wide and is looked at as that guideline assumes, so that
/// 341 by 256 of these pixels are a field. It is measured in cells of 4 such pixels, 0.12 degrees:
/// patterns finer than that are exempt. More than three flashes are seven changes or more, so that
/// three and a half count as too many.
class cFlashMeter : public cFrameSink
{
public:
    static constexpr int kAllowedTransitions = 6; ///< three flashes

    cFlashMeter(int width, int height, const cFrameRate &rate);
    void Take(const cDrawnFrame &frame) override;

    const std::vector<cFlashes> &GetFlashes() const { return mFlashes; }
    /// The most changes in one second over more than a quarter of a field, up to
    /// cTransitions::kKept.
    int GetMost(bool red) const { return mMost[red]; }

private:
    struct cCell
    {
        cLuminanceWatch mLuminance;
        cRedWatch mRed;
        std::array<cTransitions, 2> mTransitions; // general, red
    };

    cLight Average(const cPicture &picture, int column, int row) const;
    bool Watch(const cDrawnFrame &frame, bool (&hasChanged)[2]);
    double LargestField(bool red, int transitions, int64_t frame);
    void Judge(bool red, int64_t frame);

    cFrameRate mRate;
    int mColumns, mRows;           // of cells
    int mFieldColumns, mFieldRows; // cells of a 10-degree field
    double mCellsInField;          // of the whole field, even where the picture is smaller
    std::vector<cCell> mCells;
    std::vector<int> mSums; // summed-area table, (rows + 1) x (columns + 1)
    std::array<float, 256> mLinear;
    int mMost[2] = {0, 0};
    std::vector<cFlashes> mFlashes;
};
} // namespace record
