#include "tools/tracks/PlotLane.h"

#include "show/Time.h"

#include <algorithm>
#include <cmath>

namespace tracks
{
namespace
{
const double denseKeysPerPixel = 0.5; // beyond this keys can't be told apart: an envelope is drawn
const double keySize = 2.6;
const double labelSize = 8.5, smallestLabel = 5.5; // pixels
const double characterWidth = 0.62;                // of DejaVu Sans, in font sizes

// What follows the last dot: "photo.tovak04" is tovak04 in the lane of photos.
std::string LastPart(const std::string &name) { return name.substr(name.rfind('.') + 1); }

std::vector<cPoint> KeyShape(int type, cPoint at)
{
    const double s = keySize;
    switch (type) {
    case SYNC_KEY_HOLD:
        return {
            {at.x - s, at.y - s}, {at.x + s, at.y - s}, {at.x + s, at.y + s}, {at.x - s, at.y + s}};
    case SYNC_KEY_LINEAR:
        return {{at.x - s, at.y + s}, {at.x, at.y - 1.4 * s}, {at.x + s, at.y + s}};
    case SYNC_KEY_SMOOTHSTEP:
        return {{at.x, at.y - 1.4 * s},
                {at.x + 1.4 * s, at.y},
                {at.x, at.y + 1.4 * s},
                {at.x - 1.4 * s, at.y}};
    default:
        return {{at.x - s, at.y - s}, {at.x, at.y + 1.4 * s}, {at.x + s, at.y - s}};
    }
}
} // namespace

cLane::cLane(const sync_track &track, const cTimeAxis &axis, double top, double height,
             const char *color, const std::map<float, std::string> &names)
    : mTrack(track), mAxis(axis), mTop(top), mHeight(height), mColor(color), mNames(names),
      mIsPicking(track.num_keys > 0)
{
    if (track.num_keys > 0)
        mLow = mHigh = track.keys[0].value;
    for (int i = 0; i < track.num_keys; i++) {
        const sync_key &key = track.keys[i];
        mLow = std::min(mLow, key.value);
        mHigh = std::max(mHigh, key.value);
        mIsPicking = mIsPicking && key.type == SYNC_KEY_HOLD &&
                     key.value == std::floor(key.value) && key.value >= -1.0f;
    }
    mIsPicking = mIsPicking && mLow == -1.0f;
}

double cLane::Y(double value) const
{
    const double range = double(mHigh) - double(mLow);
    const double part = range > 0.0 ? (value - double(mLow)) / range : 0.5;
    return mTop + mHeight * (1.0 - part);
}

void cLane::Draw(cSvg &svg) const
{
    if (mIsPicking && !IsDense())
        return DrawBlocks(svg);
    if (mTrack.num_keys == 0)
        return;
    if (IsDense())
        return DrawEnvelope(svg);
    if (mLow < 0.0f && mHigh > 0.0f)
        svg.Line({mAxis.mLeft, Y(0.0)}, {mAxis.mLeft + mAxis.mWidth, Y(0.0)}, "#cfc8b8", 0.7);
    DrawCurve(svg);
    DrawKeys(svg);
}

bool cLane::IsDense() const { return double(mTrack.num_keys) > mAxis.mWidth * denseKeysPerPixel; }

std::string cLane::NameOf(float value) const
{
    const auto found = mNames.find(value);
    return found == mNames.end() ? vyr::FormatValue(value) : LastPart(found->second);
}

// As large as the block is wide, on two lines where one would be too small to read.
void cLane::DrawBlockName(cSvg &svg, const std::string &name, double x, double width) const
{
    const double middle = mTop + mHeight / 2;
    const double oneLine = width / (double(name.size()) * characterWidth);
    if (oneLine >= smallestLabel) {
        const double size = std::min(oneLine, labelSize);
        svg.Text({x, middle + size * 0.36}, name, size, "#2a2a28");
        return;
    }
    const size_t half = (name.size() + 1) / 2;
    const double size = std::min(width / (double(half) * characterWidth), labelSize);
    if (size < smallestLabel)
        return;
    svg.Text({x, middle - 1}, name.substr(0, half), size, "#2a2a28");
    svg.Text({x, middle + size}, name.substr(half), size, "#2a2a28");
}

// Blocks between keys; what picks nothing is left empty.
void cLane::DrawBlocks(cSvg &svg) const
{
    for (int i = 0; i < mTrack.num_keys; i++) {
        const sync_key &key = mTrack.keys[i];
        if (key.value < 0.0f)
            continue;
        const bool isLast = i + 1 == mTrack.num_keys;
        const double from = mAxis.X(i == 0 ? mAxis.mFirstRow : key.row);
        const double to = mAxis.X(isLast ? mAxis.mLastRow : mTrack.keys[i + 1].row);
        svg.Rect({from + 0.5, mTop + 1}, std::max(to - from - 1.0, 0.5), mHeight - 2, mColor, 0.28);
        svg.Rect({from, mTop}, 1.5, mHeight, mColor);
        DrawBlockName(svg, NameOf(key.value), from + 3, to - from - 3);
    }
}

cPoint cLane::At(double row) const { return {mAxis.X(row), Y(double(sync_get_val(&mTrack, row)))}; }

// From key `index` up to, not including, the next one.
void cLane::AppendSegment(int index, std::vector<cPoint> &points) const
{
    const sync_key &key = mTrack.keys[index], &next = mTrack.keys[index + 1];
    points.push_back(At(key.row));
    if (key.type == SYNC_KEY_HOLD)
        points.push_back({mAxis.X(next.row), Y(double(key.value))});
    if (key.type != SYNC_KEY_SMOOTHSTEP && key.type != SYNC_KEY_QUADRATIC)
        return;
    const double from = mAxis.X(key.row), to = mAxis.X(next.row);
    const int steps = int((to - from) / 3.0); // a corner every 3 pixels is smooth to the eye
    for (int i = 1; i < steps; i++)
        points.push_back(At(mAxis.Row(from + (to - from) * i / steps)));
}

void cLane::DrawCurve(cSvg &svg) const
{
    std::vector<cPoint> points = {At(std::min(mAxis.mFirstRow, double(mTrack.keys[0].row)))};
    for (int i = 0; i + 1 < mTrack.num_keys; i++)
        AppendSegment(i, points);
    const sync_key &last = mTrack.keys[mTrack.num_keys - 1];
    points.push_back(At(last.row));
    points.push_back(At(std::max(mAxis.mLastRow, double(last.row))));
    svg.Polyline(points, mColor, 1.4);
}

// Lowest and highest value of every pixel column.
void cLane::DrawEnvelope(cSvg &svg) const
{
    std::vector<cPoint> upper, lower;
    int next = 0;
    for (double x = mAxis.mLeft; x < mAxis.mLeft + mAxis.mWidth; x += 1.0) {
        float low = sync_get_val(&mTrack, mAxis.Row(x)), high = low;
        for (; next < mTrack.num_keys && mAxis.X(mTrack.keys[next].row) < x + 1.0; next++) {
            low = std::min(low, mTrack.keys[next].value);
            high = std::max(high, mTrack.keys[next].value);
        }
        upper.push_back({x, Y(double(high)) - 0.5});
        lower.push_back({x, Y(double(low)) + 0.5});
    }
    upper.insert(upper.end(), lower.rbegin(), lower.rend());
    svg.Polygon(upper, mColor, 0.6);
}

void cLane::DrawKeys(cSvg &svg) const
{
    for (int i = 0; i < mTrack.num_keys; i++)
        DrawKey(svg, mTrack.keys[i]);
}

void cLane::DrawKey(cSvg &svg, const sync_key &key) const
{
    svg.Polygon(KeyShape(key.type, {mAxis.X(key.row), Y(double(key.value))}), mColor);
}

// The curve comes down to this key: what is written above it would stand in the curve's way.
bool cLane::IsValley(int index) const
{
    const float value = mTrack.keys[index].value;
    const float before = index > 0 ? mTrack.keys[index - 1].value : value;
    const float after = index + 1 < mTrack.num_keys ? mTrack.keys[index + 1].value : value;
    return value <= before && value <= after && (value < before || value < after);
}

void cLane::DrawKeyLabels(cSvg &svg) const
{
    if (IsDense() || mIsPicking)
        return;
    double free = mAxis.mLeft; // labels stand side by side; the ones that find no room are left out
    for (int i = 0; i < mTrack.num_keys; i++) {
        const std::string label = vyr::FormatValue(mTrack.keys[i].value);
        const cPoint at = {mAxis.X(mTrack.keys[i].row), Y(double(mTrack.keys[i].value))};
        const double half = double(label.size()) * characterWidth * labelSize / 2.0;
        if (at.x - half < free)
            continue;
        const double y = at.y + (IsValley(i) ? 14.0 : -7.0);
        svg.Text({at.x, y}, label, labelSize, "#2a2a28", eAnchor::Middle);
        free = at.x + half + 2.0;
    }
}
} // namespace tracks
