#pragma once

#include "sync/track.h"
#include "tools/timeline/Timeline.h"
#include "tools/tracks/Svg.h"

#include <map>
#include <string>
#include <vector>

namespace tracks
{
/// Where a row lies on the page.
struct cTimeAxis
{
    double mLeft = 0.0, mWidth = 1.0;       // pixels
    double mFirstRow = 0.0, mLastRow = 1.0; // the first one is below the last one

    double X(double row) const
    {
        return mLeft + (row - mFirstRow) / (mLastRow - mFirstRow) * mWidth;
    }
    double Row(double x) const { return mFirstRow + (x - mLeft) / mWidth * (mLastRow - mFirstRow); }
};

/// One track drawn into a strip of the page.
class cLane
{
public:
    /// `names` are what values are called; they may be empty. The track must be legal.
    cLane(const sync_track &track, const cTimeAxis &axis, double top, double height,
          const char *color, const std::map<float, std::string> &names);

    /// Whether the track picks things: whole numbers that hold. It is drawn as named blocks then,
    /// and negative values, which pick nothing, as gaps.
    bool IsPicking() const { return mIsPicking; }
    void Draw(cSvg &svg) const;
    void DrawKeyLabels(cSvg &svg) const; ///< the value of every key, where it has room
    float Low() const { return mLow; }
    float High() const { return mHigh; }
    double Y(double value) const;

private:
    void DrawBlocks(cSvg &svg) const;
    void DrawBlockName(cSvg &svg, const std::string &name, double x, double width) const;
    void DrawCurve(cSvg &svg) const;
    void DrawEnvelope(cSvg &svg) const;
    void DrawKeys(cSvg &svg) const;
    void DrawKey(cSvg &svg, const sync_key &key) const;
    void AppendSegment(int index, std::vector<cPoint> &points) const;
    cPoint At(double row) const;
    std::string NameOf(float value) const;
    bool IsValley(int index) const;
    bool IsDense() const;

    const sync_track &mTrack;
    const cTimeAxis &mAxis;
    const double mTop, mHeight;
    const char *const mColor;
    const std::map<float, std::string> &mNames;
    float mLow = 0.0f, mHigh = 0.0f;
    bool mIsPicking = false;
};
} // namespace tracks
