#include "studio/TimeView.h"

#include <algorithm>

namespace studio
{
namespace
{
const double largestPixelsPerRow = 400.0; // a row is the finest thing that there is
const double fitMargin = 0.03;            // of the page, on each side
const double revealMargin = 0.05;
} // namespace

cTimeView::cTimeView(double left, double width, double firstRow, double lastRow)
    : mLeft(left), mWidth(width), mFirst(firstRow), mLast(lastRow)
{
    FitAll();
}

void cTimeView::Zoom(double x, double factor)
{
    const double row = Row(x);
    mPixelsPerRow *= factor;
    KeepWithinLimits(); // of the zoom, before the row is put back
    mBegin = row - (x - mLeft) / mPixelsPerRow;
    KeepWithinLimits();
}

void cTimeView::Pan(double pixels)
{
    mBegin += pixels / mPixelsPerRow;
    KeepWithinLimits();
}

void cTimeView::Fit(double fromRow, double toRow)
{
    const double inner = mWidth * (1.0 - 2.0 * fitMargin);
    if (toRow > fromRow)
        mPixelsPerRow = inner / (toRow - fromRow);
    KeepWithinLimits();
    mBegin = (fromRow + toRow) / 2.0 - mWidth / 2.0 / mPixelsPerRow;
    KeepWithinLimits();
}

void cTimeView::Reveal(double row)
{
    const double margin = mWidth * revealMargin;
    const double x = X(row);
    if (x < mLeft + margin)
        Pan(x - mLeft - margin);
    else if (x > Right() - margin)
        Pan(x - Right() + margin);
}

void cTimeView::Resize(double left, double width)
{
    mLeft = left;
    mWidth = width;
    KeepWithinLimits();
}

void cTimeView::SetShow(double firstRow, double lastRow)
{
    mFirst = firstRow;
    mLast = lastRow;
    KeepWithinLimits();
}

// All of the show on half a page is the farthest; its ends come to the middle at most.
void cTimeView::KeepWithinLimits()
{
    const double smallest = std::min(mWidth / 2.0 / (mLast - mFirst), largestPixelsPerRow);
    mPixelsPerRow = std::clamp(mPixelsPerRow, smallest, largestPixelsPerRow);
    const double half = mWidth / 2.0 / mPixelsPerRow;
    mBegin = std::clamp(mBegin, mFirst - half, mLast - half);
}

double cValueView::Y(double value) const
{
    const double range = mHigh - mLow;
    const double part = range > 0.0 ? (value - mLow) / range : 0.5;
    return mTop + mHeight * (1.0 - part);
}

double cValueView::Value(double y) const
{
    return mLow + (1.0 - (y - mTop) / mHeight) * (mHigh - mLow);
}

void cValueView::Zoom(double y, double factor)
{
    const double value = Value(y);
    mLow = value + (mLow - value) / factor;
    mHigh = value + (mHigh - value) / factor;
}
} // namespace studio
