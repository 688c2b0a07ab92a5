// What each layer of the show costs: frames where it is on, drawn with it and without it in turn.
//
//   bench-layers SHOW
//
// Prints the driver's name and, a line each, "layer NAME SHARE MILLISECONDS": the share of the
// show's frames that have it, and the processor time that it takes of such a frame, a median.

#include "base/Truncate.h"
#include "benchmarks/FrameTimes.h"
#include "benchmarks/Report.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <epoxy/gl.h>

#include <cstdio>
#include <string>

#include <unistd.h>

namespace
{
const int sampledFrames = 200; // of the whole show, to find out where a layer is on
const int timedFrames = 20;    // of those

struct cLayer
{
    const char *mName;
    demo::eTrack mTrack;
    float mOff;
};

// An index that is negative, or a fade that is not above zero, switches a layer off.
const cLayer layers[] = {{"plasma with flare", demo::FADE_PLASMA, 0.0f},
                         {"tunnel", demo::TUNNEL_TEXTURE, -1.0f},
                         {"left photo", demo::IMAGE_LEFT, -1.0f},
                         {"right photo", demo::IMAGE_RIGHT, -1.0f},
                         {"centre photo", demo::IMAGE_CENTER, -1.0f},
                         {"words", demo::LYRICS_NUM, -1.0f},
                         {"object", demo::OBJECT_NUM, -1.0f},
                         {"noise", demo::FADE_FG_NOISE, 0.0f},
                         {"logo", demo::IMAGE_ZEMLOGO, 0.0f}};

bool IsOn(const cLayer &layer, double row, const bench::cStage &stage)
{
    const float value = sync_get_val(stage.GetShow().mTracks[size_t(layer.mTrack)], row);
    return layer.mOff < 0.0f ? vyr::TruncateToInt(double(value)) >= 0 : value > 0.0f;
}

double ProcessorMilliseconds(bench::cStage &stage, double row)
{
    stage.ShowFrame(row); // what the frame before left is the same both times
    return bench::TimeFrame(row, [&](double at) { stage.ShowFrame(at); }).mProcessorMilliseconds;
}

// `change` switches the layer off.
template <typename Change>
double TimeWithAndWithout(bench::cStage &stage, const std::vector<double> &rows, Change change)
{
    std::vector<double> costs;
    const size_t step = std::max<size_t>(1, rows.size() / timedFrames);
    for (size_t i = 0; i < rows.size(); i += step) {
        const double with = ProcessorMilliseconds(stage, rows[i]);
        change();
        costs.push_back(with - ProcessorMilliseconds(stage, rows[i]));
        stage.Restore();
    }
    return costs.empty() ? 0.0 : bench::Median(costs);
}

std::vector<double> AllRows()
{
    std::vector<double> rows;
    for (int i = 0; i < sampledFrames; i++)
        rows.push_back(bench::RowOf(i, sampledFrames));
    return rows;
}

void Print(const char *name, size_t rows, double milliseconds)
{
    std::printf("layer %s\t%.3f\t%.3f\n", name, double(rows) / sampledFrames, milliseconds);
    std::fflush(stdout);
}

// Always drawn, so an image of one pixel stands in for it.
void TimeVignette(bench::cStage &stage)
{
    unsigned char pixel[4] = {};
    const int small =
        vyr::tSingleton<vyr::cTextureManager>::GetSingleton().CreateTexture(pixel, 1, 1, 4);
    const std::vector<double> rows = AllRows();
    Print("vignette", rows.size(),
          TimeWithAndWithout(stage, rows, [&] { stage.UseVignette(small); }));
}

void TimeRest(bench::cStage &stage)
{
    for (const cLayer &layer : layers)
        stage.Fix(layer.mTrack, layer.mOff);
    std::vector<double> times;
    for (int i = 0; i < timedFrames; i++)
        times.push_back(ProcessorMilliseconds(stage, bench::RowOf(i, timedFrames)));
    stage.Restore();
    Print("clear, vignette and two fades, presented", sampledFrames, bench::Median(times));
}

const char *GetText(GLenum name) { return reinterpret_cast<const char *>(glGetString(name)); }
} // namespace

int main(int count, char **arguments)
{
    if (count < 2 || chdir(arguments[1]) != 0) {
        std::fprintf(stderr, "bench-layers: needs the folder of a show\n");
        return 2;
    }
    bench::cStage stage(vyr::platform::OffscreenWindowSystem(), 1280, 720);
    std::printf("driver %s, %s\n", GetText(GL_RENDERER), GetText(GL_VERSION));
    for (const cLayer &layer : layers) {
        std::vector<double> rows;
        for (double row : AllRows())
            if (IsOn(layer, row, stage))
                rows.push_back(row);
        Print(layer.mName, rows.size(),
              TimeWithAndWithout(stage, rows, [&] { stage.Fix(layer.mTrack, layer.mOff); }));
    }
    TimeVignette(stage);
    TimeRest(stage);
}
