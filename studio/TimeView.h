#pragma once

namespace studio
{
/// Which part of the time is on the page, and where: rows to pixels and back. Pixels count from the
/// page's left edge. What is shown stays within limits, so that no zoom and no pan can lose the
/// show.
class cTimeView
{
public:
    /// `left` and `width` (above 0) of the lanes in pixels. The show lasts from `firstRow` to
    /// `lastRow`, which is later; half a page of nothing may be seen on each side of it.
    cTimeView(double left, double width, double firstRow, double lastRow);

    double X(double row) const { return mLeft + (row - mBegin) * mPixelsPerRow; }
    double Row(double x) const { return mBegin + (x - mLeft) / mPixelsPerRow; }
    double PixelsPerRow() const { return mPixelsPerRow; }
    double Left() const { return mLeft; }
    double Right() const { return mLeft + mWidth; }
    double BeginRow() const { return mBegin; }     ///< at the left edge
    double EndRow() const { return Row(Right()); } ///< at the right edge

    /// Rows become `factor` times as wide; the row at `x` stays there, where the limits let it.
    void Zoom(double x, double factor);
    /// Shows what lies `pixels` further right.
    void Pan(double pixels);
    /// Shows these rows and a little around them; a single row with as much zoom as there is now.
    void Fit(double fromRow, double toRow);
    void FitAll() { Fit(mFirst, mLast); }
    /// Pans as little as it takes to have `row` within the middle nine tenths of the page.
    void Reveal(double row);
    /// Another size of the page; the row at its left edge stays.
    void Resize(double left, double width);
    /// Another length of the show.
    void SetShow(double firstRow, double lastRow);

private:
    void KeepWithinLimits();

    double mLeft, mWidth, mFirst, mLast;
    double mBegin = 0.0, mPixelsPerRow = 1.0;
};

/// What a lane's values are on the page: pixels from the page's upper edge, larger values above.
struct cValueView
{
    double mTop = 0.0, mHeight = 1.0; ///< pixels
    double mLow = 0.0, mHigh = 1.0;   ///< values at its lower and upper edge; equal: the middle

    double Y(double value) const;
    double Value(double y) const;
    /// Values become `factor` times as tall; the value at `y` stays there.
    void Zoom(double y, double factor);
};
} // namespace studio
