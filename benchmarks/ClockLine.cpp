#include "benchmarks/ClockLine.h"

#include "benchmarks/Report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace bench
{
namespace
{
const size_t maximumLines = 20000;

// From when the sound is heard: before, the clock stands at zero.
std::vector<cPass> Moving(const std::vector<cPass> &passes)
{
    std::vector<cPass> moving;
    for (const cPass &pass : passes)
        if (pass.mIsSure && pass.mMusic > 0.0)
            moving.push_back(pass);
    if (moving.size() < 2) {
        std::fprintf(stderr, "bench-clock: the music does not play\n");
        std::exit(1);
    }
    return moving;
}

// The median distance of the library's number from the music: it counts from another beginning.
double FindRawOffset(const std::vector<cPass> &passes)
{
    std::vector<double> distances;
    for (const cPass &pass : passes)
        distances.push_back(pass.mRaw - pass.mMusic);
    return Median(distances);
}
} // namespace

cLine FitLine(const std::vector<cPass> &passes)
{
    const std::vector<cPass> moving = Moving(passes);
    const double count = double(moving.size());
    double meanTime = 0.0, meanMusic = 0.0, products = 0.0, squares = 0.0;
    for (const cPass &pass : moving) {
        meanTime += pass.mTime / count;
        meanMusic += pass.mMusic / count;
    }
    for (const cPass &pass : moving) {
        products += (pass.mTime - meanTime) * (pass.mMusic - meanMusic);
        squares += (pass.mTime - meanTime) * (pass.mTime - meanTime);
    }
    cLine line;
    line.mSlope = products / squares;
    line.mOffset = meanMusic - line.mSlope * meanTime;
    line.mDrift = std::abs(line.mSlope - 1.0) * (moving.back().mTime - moving.front().mTime);
    for (const cPass &pass : moving)
        line.mRms += line.ErrorOf(pass) * line.ErrorOf(pass) / count;
    line.mRms = std::sqrt(line.mRms);
    line.mWorst = FindWorst(moving, line);
    return line;
}

std::vector<cPass> Between(const std::vector<cPass> &passes, double from, double to)
{
    std::vector<cPass> between;
    for (const cPass &pass : passes)
        if (pass.mTime >= from && pass.mTime < to)
            between.push_back(pass);
    return between;
}

double FindWorst(const std::vector<cPass> &passes, const cLine &line)
{
    double worst = 0.0;
    for (const cPass &pass : Moving(passes))
        worst = std::max(worst, std::abs(line.ErrorOf(pass)));
    return worst;
}

int CountStepsBack(const std::vector<cPass> &passes)
{
    int count = 0;
    for (size_t i = 1; i < passes.size(); i++)
        count += passes[i].mMusic < passes[i - 1].mMusic;
    return count;
}

double FrameError(const std::vector<cPass> &passes, double part)
{
    const double frameSeconds = 1.0 / 60.0;
    const std::vector<cPass> moving = Moving(passes);
    std::vector<double> errors;
    size_t last = 0;
    for (size_t i = 1; i < moving.size(); i++) {
        const double time = moving[i].mTime - moving[last].mTime;
        if (time < frameSeconds)
            continue;
        errors.push_back(std::abs(moving[i].mMusic - moving[last].mMusic - time));
        last = i;
    }
    return Percentile(errors, part);
}

double FindDeviceLag(const std::vector<cPass> &passes)
{
    const std::vector<cPass> moving = Moving(passes);
    const cLine line = FitLine(passes);
    const double rawOffset = FindRawOffset(moving);
    double lag = 0.0;
    for (const cPass &pass : moving)
        lag = std::max(lag, pass.mMusic - line.ErrorOf(pass) - (pass.mRaw - rawOffset));
    return lag;
}

void WriteErrors(const std::string &path, const std::vector<cPass> &passes)
{
    const std::vector<cPass> moving = Moving(passes);
    const cLine line = FitLine(passes);
    const double rawOffset = FindRawOffset(moving);
    FILE *file = std::fopen(path.c_str(), "w");
    if (!file) {
        std::fprintf(stderr, "bench-clock: %s: can't be written\n", path.c_str());
        std::exit(1);
    }
    std::fputs("seconds\terror_ms\traw_error_ms\n", file);
    const size_t step = (moving.size() + maximumLines - 1) / maximumLines;
    for (size_t i = 0; i < moving.size(); i += step) {
        const double error = line.ErrorOf(moving[i]);
        const double raw = error + moving[i].mRaw - rawOffset - moving[i].mMusic;
        std::fprintf(file, "%.4f\t%.4f\t%.4f\n", moving[i].mTime, error * 1e3, raw * 1e3);
    }
    std::fclose(file);
}
} // namespace bench
