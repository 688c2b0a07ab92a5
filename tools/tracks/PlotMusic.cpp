#include "tools/tracks/PlotMusic.h"

#include <algorithm>
#include <cstdio>

namespace tracks
{
namespace
{
const char *const ink = "#2a2a28", *const faint = "#8a8578", *const petrol = "#1e4f5a",
                  *const amber = "#c9781a";
const double quietest = -40.0, loudest = 0.0; // LUFS, of the loudness scale
const double gap = 8.0;                       // pixels between waveform and loudness

/// A strip of the page for a curve that has a value every step of the measure.
struct cStrip
{
    const tools::cMusicMeasure &mMusic;
    const vyr::cTempo &mTempo;
    const cTimeAxis &mAxis;
    double mTop, mHeight;

    // Where step `index` ends.
    double X(size_t index) const { return mAxis.X(mTempo.Rows(double(index + 1) * mMusic.mStep)); }
    double LoudnessY(double loudness) const
    {
        const double inRange = std::clamp(loudness, quietest, loudest);
        return mTop + mHeight * (loudest - inRange) / (loudest - quietest);
    }
    bool IsOnPage(size_t index) const { return X(index) <= mAxis.mLeft + mAxis.mWidth; }
};

void DrawWaveform(cSvg &svg, const cStrip &strip)
{
    const double middle = strip.mTop + strip.mHeight / 2;
    std::vector<cPoint> upper, lower;
    for (size_t i = 0; i < strip.mMusic.mLow.size() && strip.IsOnPage(i); i++) {
        upper.push_back({strip.X(i), middle - double(strip.mMusic.mHigh[i]) * strip.mHeight / 2});
        lower.push_back({strip.X(i), middle - double(strip.mMusic.mLow[i]) * strip.mHeight / 2});
    }
    upper.insert(upper.end(), lower.rbegin(), lower.rend());
    svg.Polygon(upper, petrol, 0.75);
}

std::vector<cPoint> LoudnessCurve(const cStrip &strip, const std::vector<double> &loudness)
{
    std::vector<cPoint> points;
    for (size_t i = 0; i < loudness.size() && strip.IsOnPage(i); i++)
        points.push_back({strip.X(i), strip.LoudnessY(loudness[i])});
    return points;
}

void DrawLoudness(cSvg &svg, const cStrip &strip)
{
    for (double level : {-10.0, -20.0, -30.0}) {
        const double y = strip.LoudnessY(level);
        char text[16];
        std::snprintf(text, sizeof text, "%.0f", level);
        svg.Line({strip.mAxis.mLeft, y}, {strip.mAxis.mLeft + strip.mAxis.mWidth, y}, "#cfc8b8",
                 0.7);
        svg.Text({strip.mAxis.mLeft - 8, y + 3}, text, 9, faint, eAnchor::End);
    }
    std::vector<cPoint> area = LoudnessCurve(strip, strip.mMusic.mMomentary);
    if (!area.empty()) {
        area.push_back({area.back().x, strip.mTop + strip.mHeight});
        area.push_back({area.front().x, strip.mTop + strip.mHeight});
    }
    svg.Polygon(area, amber, 0.3);
    svg.Polyline(LoudnessCurve(strip, strip.mMusic.mShortTerm), amber, 2.0);
}

void Label(cSvg &svg, const cStrip &strip, const char *name, const char *detail)
{
    const double x = strip.mAxis.mLeft - 32;
    svg.Text({x, strip.mTop + strip.mHeight / 2}, name, 13, ink, eAnchor::End, true);
    svg.Text({x, strip.mTop + strip.mHeight / 2 + 13}, detail, 9, faint, eAnchor::End);
}
} // namespace

void DrawMusic(cSvg &svg, const tools::cMusicMeasure &music, const vyr::cTempo &tempo,
               const cTimeAxis &axis, double top, double height)
{
    const double half = (height - gap) / 2;
    const cStrip wave{music, tempo, axis, top, half},
        loudness{music, tempo, axis, top + half + gap, half};
    svg.Rect({axis.mLeft, top}, axis.mWidth, height, "#ffffff", 0.55);
    DrawWaveform(svg, wave);
    DrawLoudness(svg, loudness);
    char detail[64];
    std::snprintf(detail, sizeof detail, "%.1f LUFS in all", music.mIntegrated);
    Label(svg, wave, "waveform", "full scale");
    Label(svg, loudness, "loudness", detail);
}
} // namespace tracks
