#include "studio/Snap.h"

#include <gtest/gtest.h>

using studio::cTimeView;
using studio::eSnap;

namespace
{
// 8 rows a beat, 4 beats a bar; one pixel a row, so that rows and pixels are the same number.
class Snap : public testing::Test
{
protected:
    Snap() : mView(0.0, 1000.0, 0.0, 1000.0), mSnapper(vyr::TempoOf(132.0)) { ZoomTo(1.0); }

    void ZoomTo(double pixelsPerRow)
    {
        mView.Zoom(0.0, pixelsPerRow / mView.PixelsPerRow());
        mView.Pan(mView.X(0.0));
    }

    void Expect(double row, int to, eSnap kind, bool isInverted = false) const
    {
        const studio::cSnapped snapped = mSnapper.Snap(mView, mView.X(row), isInverted);
        EXPECT_EQ(snapped.mRow, to) << row;
        EXPECT_EQ(snapped.mTo, kind) << row;
    }

    cTimeView mView;
    studio::cSnapper mSnapper;
};
} // namespace

TEST_F(Snap, BarsAreSnappedToWithinEightPixels)
{
    Expect(71.9, 64, eSnap::Bar);
    Expect(56.1, 64, eSnap::Bar);
    Expect(72.2, 72, eSnap::None); // and a beat is too small to be told from the next
    Expect(80.4, 80, eSnap::None);
}

TEST_F(Snap, TheGridBecomesFinerWithTheZoom)
{
    ZoomTo(2.0); // a beat is 16 pixels
    Expect(42.0, 40, eSnap::Beat);
    Expect(33.0, 32, eSnap::Bar);
    ZoomTo(16.0);
    Expect(42.4, 42, eSnap::Row);
    Expect(40.4, 40, eSnap::Beat); // a beat and a row on one spot
}

TEST_F(Snap, TheNearestWins)
{
    mSnapper.SetKeys({300, 70, 68});
    Expect(66.9, 68, eSnap::Key);
    Expect(65.9, 64, eSnap::Bar);
    Expect(69.3, 70, eSnap::Key);
    Expect(305.0, 300, eSnap::Key);
    Expect(309.0, 309, eSnap::None);
}

TEST_F(Snap, OfTwoOnOneSpotTheStrongerWins)
{
    mSnapper.SetKeys({64, 128, 192});
    mSnapper.SetSections({128, 192});
    mSnapper.SetPlayhead(192);
    Expect(65.0, 64, eSnap::Key);
    Expect(127.0, 128, eSnap::Section);
    Expect(191.0, 192, eSnap::Playhead);
}

TEST_F(Snap, OneKeyInvertsIt)
{
    Expect(66.4, 66, eSnap::None, true);
    mSnapper.SetOn(false);
    Expect(66.4, 66, eSnap::None);
    Expect(66.4, 64, eSnap::Bar, true);
}

TEST_F(Snap, BeatsAreThoseOfTheTempo)
{
    mSnapper = studio::cSnapper(vyr::TempoOf(90.0, 5, 3));
    ZoomTo(4.0);
    mSnapper.SetOn(true);
    Expect(10.6, 10, eSnap::Beat);
    Expect(14.6, 15, eSnap::Bar);
    Expect(-14.0, -15, eSnap::Bar);
}
