#include "studio/LaneCurve.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using studio::cLaneCurve;
using studio::cTimeView;

namespace
{
std::vector<sync_key> RandomKeys(std::mt19937 &random, int count, int spacing)
{
    std::vector<sync_key> keys;
    int row = -20;
    for (int i = 0; i < count; i++) {
        row += 1 + int(random() % unsigned(spacing));
        keys.push_back({row, float(random() % 1000) / 100.0f - 5.0f, int(random() % 4)});
    }
    return keys;
}

// The line's heights at `x`: two where it is upright there.
std::pair<double, double> LineAt(const std::vector<studio::cPoint> &line, double x)
{
    double low = 1e300, high = -1e300;
    for (size_t i = 1; i < line.size(); i++) {
        const studio::cPoint a = line[i - 1], b = line[i];
        if (x < a.x || x > b.x)
            continue;
        const double part = b.x > a.x ? (x - a.x) / (b.x - a.x) : 0.0;
        const double y = a.y + (b.y - a.y) * part;
        low = std::min({low, y, b.x > a.x ? y : b.y});
        high = std::max({high, y, b.x > a.x ? y : b.y});
    }
    return {low, high};
}
} // namespace

// All interpolations, all zooms: at each pixel the line is the player's value, to half a pixel.
TEST(LaneCurve, LineIsThePlayersCurve)
{
    std::mt19937 random(9);
    for (int round = 0; round < 60; round++) {
        const cLaneCurve curve(RandomKeys(random, 1 + int(random() % 60), 40));
        cTimeView view(100.0, 600.0, 0.0, 1000.0);
        view.Fit(double(random() % 900), double(random() % 900) + 3.0);
        const studio::cValueView values{10.0, 300.0, -5.0, 5.0};
        const auto line = curve.Line(view, values);
        ASSERT_TRUE(std::is_sorted(line.begin(), line.end(),
                                   [](const auto &a, const auto &b) { return a.x < b.x; }));
        for (double x = view.Left(); x <= view.Right(); x += 0.25) {
            const double wanted = values.Y(double(curve.Value(view.Row(x))));
            const auto [low, high] = LineAt(line, x);
            ASSERT_LE(low - 0.5, wanted) << x;
            ASSERT_GE(high + 0.5, wanted) << x;
        }
    }
}

TEST(LaneCurve, OnlyWhatIsOnThePageIsLookedAt)
{
    std::vector<sync_key> keys;
    for (int i = 0; i < 100'000; i++)
        keys.push_back({i, float(i % 7), SYNC_KEY_LINEAR});
    const cLaneCurve curve(keys);
    cTimeView view(0.0, 800.0, 0.0, 100'000.0);
    view.Fit(50'000.0, 50'040.0);
    const cLaneCurve::cRange visible = curve.Visible(view);
    EXPECT_EQ(visible.mBegin, 49'999u);
    EXPECT_EQ(visible.mEnd, 50'042u);
    EXPECT_LT(curve.Line(view, {}).size(), 100u);
    EXPECT_FALSE(curve.IsDense(view));
    view.FitAll();
    EXPECT_TRUE(curve.IsDense(view));
}

// One key of a hundred thousand sticks out: it must not fall between two pixels.
TEST(LaneCurve, ColumnsMissNoKey)
{
    std::vector<sync_key> keys;
    for (int i = 0; i < 100'000; i++)
        keys.push_back({i, 0.0f, SYNC_KEY_HOLD});
    keys[12'345].value = 9.0f;
    keys[54'321].value = -9.0f;
    const cTimeView view(0.0, 300.0, 0.0, 100'000.0);
    const auto columns = cLaneCurve(keys).Columns(view);
    ASSERT_EQ(columns.size(), 300u);
    const auto isHigh = [](const studio::cColumn &column) { return column.mHigh == 9.0f; };
    const auto isLow = [](const studio::cColumn &column) { return column.mLow == -9.0f; };
    EXPECT_EQ(std::count_if(columns.begin(), columns.end(), isHigh), 1);
    EXPECT_EQ(std::count_if(columns.begin(), columns.end(), isLow), 1);
    EXPECT_TRUE(isHigh(columns[size_t(view.X(12'345.0))]));
}

TEST(LaneCurve, ColumnsHoldEveryValueOfTheirPixel)
{
    std::mt19937 random(4);
    for (int round = 0; round < 40; round++) {
        const cLaneCurve curve(RandomKeys(random, 400, 6));
        const cTimeView view(0.0, 200.0, 0.0, 1400.0);
        const auto columns = curve.Columns(view);
        ASSERT_EQ(columns.size(), 200u);
        for (double x = 0.0; x < 200.0; x += 0.1) {
            const float value = curve.Value(view.Row(x));
            ASSERT_GE(value, columns[size_t(x)].mLow - 1e-4f) << x;
            ASSERT_LE(value, columns[size_t(x)].mHigh + 1e-4f) << x;
        }
    }
}

TEST(LaneCurve, ALaneWithoutKeysIsEmpty)
{
    const cLaneCurve curve({});
    const cTimeView view(0.0, 200.0, 0.0, 1400.0);
    EXPECT_TRUE(curve.Columns(view).empty());
    EXPECT_TRUE(curve.Line(view, {}).empty());
    EXPECT_EQ(curve.Value(7.0), 0.0f);
    EXPECT_FALSE(curve.IsDense(view));
}
