#include "tools/record/FlashMeter.h"

#include <algorithm>
#include <cmath>

namespace record
{
namespace
{
// The numbers of WCAG 2.3.1.
const float luminanceStep = 0.1f;
const float brightestDarkEnd = 0.8f;
const float redShare = 0.8f;
const float chromaticityStep = 0.2f;
const double pictureWidth = 1024.0; // in pixels of the guideline's screen
const double fieldWidth = 341.0, fieldHeight = 256.0;
const double shareOfField = 0.25;

// What an earlier definition of saturated red asks for, 20 / 320: without it a black with a trace
// of red in it would be red.
const float leastRed = 0.0625f;
const float leastLight = 0.003f; // below, a colour has no hue
const double cellWidth = 4.0;    // in pixels of the guideline's screen

float ToLinear(int value)
{
    const double v = value / 255.0;
    return float(v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4));
}

struct cChromaticity
{
    float u = 0.1978f, v = 0.4683f; // white

    explicit cChromaticity(const cLight &light)
    {
        if (light.mRed + light.mGreen + light.mBlue < leastLight)
            return;
        const float x = 0.4124f * light.mRed + 0.3576f * light.mGreen + 0.1805f * light.mBlue;
        const float y = light.Luminance();
        const float z = 0.0193f * light.mRed + 0.1192f * light.mGreen + 0.9505f * light.mBlue;
        const float sum = x + 15.0f * y + 3.0f * z;
        u = 4.0f * x / sum;
        v = 9.0f * y / sum;
    }
};
} // namespace

bool cLight::IsSaturatedRed() const
{
    return mRed >= redShare * (mRed + mGreen + mBlue) && mRed - mGreen - mBlue >= leastRed;
}

float ChromaticityDistance(const cLight &a, const cLight &b)
{
    const cChromaticity first(a), second(b);
    return std::hypot(first.u - second.u, first.v - second.v);
}

void cTransitions::Add(int64_t frame)
{
    mFrames[size_t(mNext)] = frame;
    mNext = (mNext + 1) % kKept;
}

int64_t cTransitions::Last(int count) const
{
    return mFrames[size_t((mNext - count + kKept) % kKept)];
}

bool cLuminanceWatch::TurnsUp(float luminance)
{
    return mDirection != UP && mLowest < brightestDarkEnd && luminance - mLowest >= luminanceStep;
}

bool cLuminanceWatch::TurnsDown(float luminance)
{
    return mDirection != DOWN && luminance < brightestDarkEnd &&
           mHighest - luminance >= luminanceStep;
}

bool cLuminanceWatch::IsTransition(float luminance)
{
    const bool turnsUp = !mIsFirst && TurnsUp(luminance);
    const bool turnsDown = !mIsFirst && TurnsDown(luminance);
    if (mIsFirst || turnsUp || turnsDown)
        mLowest = mHighest = luminance;
    if (turnsUp || turnsDown)
        mDirection = turnsUp ? UP : DOWN;
    mLowest = std::min(mLowest, luminance);
    mHighest = std::max(mHighest, luminance);
    mIsFirst = false;
    return turnsUp || turnsDown;
}

bool cRedWatch::IsTransition(const cLight &light)
{
    const bool isTransition = !mIsFirst &&
                              (light.IsSaturatedRed() || mReference.IsSaturatedRed()) &&
                              ChromaticityDistance(light, mReference) > chromaticityStep;
    if (mIsFirst || isTransition)
        mReference = light;
    mIsFirst = false;
    return isTransition;
}

cFlashMeter::cFlashMeter(int width, int height, const cFrameRate &rate)
    : mRate(rate), mColumns(std::min(width, int(pictureWidth / cellWidth))),
      mRows(std::clamp(int(std::lround(double(mColumns) * height / width)), 1, height))
{
    const double cell = pictureWidth / mColumns;
    mFieldColumns = std::clamp(int(std::lround(fieldWidth / cell)), 1, mColumns);
    mFieldRows = std::clamp(int(std::lround(fieldHeight / cell)), 1, mRows);
    mCellsInField = fieldWidth * fieldHeight / (cell * cell);
    mCells.resize(size_t(mColumns) * size_t(mRows));
    mSums.resize((size_t(mColumns) + 1) * (size_t(mRows) + 1));
    for (int i = 0; i < 256; i++)
        mLinear[size_t(i)] = ToLinear(i);
}

cLight cFlashMeter::Average(const cPicture &picture, int column, int row) const
{
    const int left = column * picture.mWidth / mColumns;
    const int right = (column + 1) * picture.mWidth / mColumns;
    const int top = row * picture.mHeight / mRows, bottom = (row + 1) * picture.mHeight / mRows;
    cLight sum;
    for (int y = top; y < bottom; y++) {
        const uint8_t *end = picture.Row(y) + 4 * right;
        for (const uint8_t *p = picture.Row(y) + 4 * left; p < end; p += 4) {
            sum.mRed += mLinear[p[0]];
            sum.mGreen += mLinear[p[1]];
            sum.mBlue += mLinear[p[2]];
        }
    }
    const float count = float((right - left) * (bottom - top));
    return {sum.mRed / count, sum.mGreen / count, sum.mBlue / count};
}

bool cFlashMeter::Watch(const cDrawnFrame &frame, bool (&hasChanged)[2])
{
    for (int row = 0; row < mRows; row++)
        for (int column = 0; column < mColumns; column++) {
            cCell &cell = mCells[size_t(row) * size_t(mColumns) + size_t(column)];
            const cLight light = Average(frame.mPicture, column, row);
            const bool changes[2] = {cell.mLuminance.IsTransition(light.Luminance()),
                                     cell.mRed.IsTransition(light)};
            for (size_t kind = 0; kind < 2; kind++)
                if (changes[kind]) {
                    cell.mTransitions[kind].Add(frame.mFrame);
                    hasChanged[kind] = true;
                }
        }
    return hasChanged[0] || hasChanged[1];
}

// The largest share of a field whose cells each changed `transitions` times in the second that
// ends with `frame`.
double cFlashMeter::LargestField(bool red, int transitions, int64_t frame)
{
    const size_t stride = size_t(mColumns) + 1;
    for (size_t row = 0; row < size_t(mRows); row++)
        for (size_t column = 0; column < size_t(mColumns); column++) {
            const cCell &cell = mCells[row * size_t(mColumns) + column];
            const int64_t age = frame - cell.mTransitions[red].Last(transitions);
            const int counts = age * mRate.mDenominator < mRate.mNumerator;
            int *sum = &mSums[(row + 1) * stride + column + 1];
            *sum = counts + sum[-1] + *(sum - stride) - *(sum - stride - 1);
        }
    int largest = 0;
    for (int row = mFieldRows; row <= mRows; row++)
        for (int column = mFieldColumns; column <= mColumns; column++) {
            const int *end = &mSums[size_t(row) * stride + size_t(column)];
            const int *above = end - stride * size_t(mFieldRows);
            largest =
                std::max(largest, *end - end[-mFieldColumns] - *above + above[-mFieldColumns]);
        }
    return double(largest) / mCellsInField;
}

void cFlashMeter::Judge(bool red, int64_t frame)
{
    while (mMost[red] < cTransitions::kKept &&
           LargestField(red, mMost[red] + 1, frame) > shareOfField)
        mMost[red]++;
    if (mMost[red] <= kAllowedTransitions)
        return;
    const double field = LargestField(red, kAllowedTransitions + 1, frame);
    if (field <= shareOfField)
        return;
    const auto last = std::find_if(mFlashes.rbegin(), mFlashes.rend(),
                                   [red](const cFlashes &each) { return each.mIsRed == red; });
    // Flashes less than a second apart are one stretch.
    if (last == mFlashes.rend() || (frame - last->mLast) * mRate.mDenominator >= mRate.mNumerator) {
        mFlashes.push_back({red, frame, frame, kAllowedTransitions + 1, field});
        return;
    }
    last->mLast = frame;
    last->mField = std::max(last->mField, field);
    while (last->mTransitions < cTransitions::kKept &&
           LargestField(red, last->mTransitions + 1, frame) > shareOfField)
        last->mTransitions++;
}

void cFlashMeter::Take(const cDrawnFrame &frame)
{
    bool hasChanged[2] = {false, false};
    if (!Watch(frame, hasChanged))
        return;
    for (const bool red : {false, true})
        if (hasChanged[red])
            Judge(red, frame.mFrame);
}
} // namespace record
