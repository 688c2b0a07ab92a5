#include "studio/TimeView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using studio::cTimeView;

namespace
{
const double left = 100.0, width = 1000.0, last = 3624.0;

cTimeView View() { return cTimeView(left, width, 0.0, last); }
} // namespace

TEST(TimeView, ShowsAllOfItAtFirst)
{
    const cTimeView view = View();
    EXPECT_GE(view.X(0.0), left);
    EXPECT_LE(view.X(last), left + width);
    EXPECT_NEAR(view.X(last / 2), left + width / 2, 1e-9);
    EXPECT_NEAR(view.Row(view.X(77.0)), 77.0, 1e-9);
}

// Half a pixel is what an eye sees; the row may not wander over many steps either.
TEST(TimeView, ZoomKeepsTheTimeUnderThePointer)
{
    std::mt19937 random(1);
    cTimeView view = View();
    view.Fit(1000.0, 1400.0);
    for (double x : {left, left + 1.0, left + 300.0, left + width}) {
        const double row = view.Row(x);
        for (int i = 0; i < 200; i++) {
            const double factor = std::exp((double(random() % 1000) - 500.0) / 2000.0);
            if (view.PixelsPerRow() * factor < 1.0 || view.PixelsPerRow() * factor > 300.0)
                continue; // at the limits the page's edge decides
            view.Zoom(x, factor);
            ASSERT_NEAR(view.X(row), x, 0.5);
        }
    }
}

TEST(TimeView, ZoomAndPanEndAtLimits)
{
    cTimeView view = View();
    for (int i = 0; i < 1000; i++)
        view.Zoom(left, 1.5);
    EXPECT_EQ(view.PixelsPerRow(), 400.0);
    for (int i = 0; i < 1000; i++)
        view.Zoom(left + width, 0.5);
    EXPECT_NEAR(view.PixelsPerRow() * last, width / 2, 1e-6); // all of it on half a page
    view.Pan(1e12);
    EXPECT_NEAR(view.X(last), left + width / 2, 1e-6);
    view.Pan(-1e12);
    EXPECT_NEAR(view.X(0.0), left + width / 2, 1e-6);
}

TEST(TimeView, PanMovesByPixels)
{
    cTimeView view = View();
    view.Fit(1000.0, 1400.0);
    const double x = view.X(1200.0);
    view.Pan(30.0);
    EXPECT_NEAR(view.X(1200.0), x - 30.0, 1e-9);
}

TEST(TimeView, FitsRowsWithALittleAroundThem)
{
    cTimeView view = View();
    view.Fit(768.0, 800.0);
    EXPECT_NEAR(view.X(768.0), left + 30.0, 1e-6);
    EXPECT_NEAR(view.X(800.0), left + width - 30.0, 1e-6);
    const double zoom = view.PixelsPerRow();
    view.Fit(1600.0, 1600.0); // one row: there is no zoom that would fit it
    EXPECT_EQ(view.PixelsPerRow(), zoom);
    EXPECT_NEAR(view.X(1600.0), left + width / 2, 1e-6);
}

TEST(TimeView, RevealsARowByTheLeastPan)
{
    cTimeView view = View();
    view.Fit(1000.0, 1400.0);
    const double begin = view.BeginRow();
    view.Reveal(1200.0);
    EXPECT_EQ(view.BeginRow(), begin);
    view.Reveal(1500.0);
    EXPECT_NEAR(view.X(1500.0), left + width * 0.95, 1e-6);
    view.Reveal(900.0);
    EXPECT_NEAR(view.X(900.0), left + width * 0.05, 1e-6);
}

TEST(TimeView, AnotherSizeKeepsTheRowAtTheEdge)
{
    cTimeView view = View();
    view.Fit(1000.0, 1400.0);
    const double begin = view.BeginRow();
    view.Resize(50.0, 700.0);
    EXPECT_EQ(view.X(begin), 50.0);
    view.SetShow(0.0, 500.0); // the show has become shorter: it is still on the page
    EXPECT_LT(view.BeginRow(), 500.0);
}

TEST(ValueView, ZoomKeepsTheValueUnderThePointer)
{
    studio::cValueView values{20.0, 100.0, -1.0, 3.0};
    EXPECT_EQ(values.Y(3.0), 20.0);
    EXPECT_EQ(values.Y(-1.0), 120.0);
    EXPECT_EQ(values.Value(70.0), 1.0);
    const double value = values.Value(45.0);
    values.Zoom(45.0, 4.0);
    EXPECT_NEAR(values.Value(45.0), value, 1e-9);
    EXPECT_EQ(values.mHigh - values.mLow, 1.0);
    values.mLow = values.mHigh = 5.0;
    EXPECT_EQ(values.Y(5.0), 70.0);
}
