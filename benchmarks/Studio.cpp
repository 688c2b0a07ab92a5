// The studio on a hundred lanes of a thousand keys, beside five minutes of music: what its page
// costs while a thousand keys are dragged, how soon it is there, how soon a save is on the screen,
// and what a thousand reloads leave behind.
//
//   bench-studio FOLDER     a show's folder to work in, with show.so and what it needs

#include "studio/Studio.h"
#include "benchmarks/Report.h"
#include "benchmarks/Timing.h"
#include "studio/Gui.h"
#include "studio/Page.h"
#include "studio/Window.h"

#include <epoxy/gl.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>
#include <thread>

#include <malloc.h>

namespace fs = std::filesystem;
using studio::cEvent;

namespace
{
const int lanes = 100, keysPerLane = 1000, dragged = 1000, saves = 200, reloads = 1000;

double Now()
{
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

std::string MakeTimeline(float first)
{
    std::mt19937 random(7);
    std::ostringstream text;
    text << "tempo 120\n";
    for (int lane = 0; lane < lanes; lane++) {
        text << "track track" << 100 + lane << "\n";
        for (int key = 0; key < keysPerLane; key++)
            text << "  " << key * 4 << "  "
                 << (lane == 0 && key == 0 ? first : float(random() % 1000) / 1000.0f)
                 << "  linear\n";
    }
    return text.str();
}

void Write(const fs::path &file, const std::string &bytes)
{
    std::ofstream(file, std::ios::binary) << bytes;
}

std::string Read(const fs::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The whole studio but its loop.
struct cBench
{
    explicit cBench(const fs::path &folder)
        : mWindow(1600, 1000), mGui(mWindow, 1.0),
          mStudio(mWindow, {folder, folder / "timeline.txt", {320, 180}},
                  [] {
                      return std::make_unique<studio::cSoundPlayback>(
                          std::make_unique<vyr::SoundOutput>(vyr::OpenSoundDevice()));
                  }),
          mPage(mStudio, mGui, 1.0, folder)
    {}

    /// Processor seconds of the page itself: what it works out, and what it lists to be drawn.
    double Frame(const std::vector<cEvent> &events)
    {
        mWindow.Poll(0.0, nullptr);
        mStudio.Update(Now());
        timespec before{}, after{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &before);
        mGui.Begin(events, 1.0 / 60.0);
        mPage.Draw(events);
        mGui.End();
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &after);
        mGui.Render();
        mWindow.Present();
        return double(after.tv_sec - before.tv_sec) + double(after.tv_nsec - before.tv_nsec) * 1e-9;
    }

    studio::cWindow mWindow;
    studio::cGui mGui;
    studio::cStudio mStudio;
    studio::cPage mPage;
};

void PrintAgainstBar(const char *what, double ours, double bar, const char *unit)
{
    bench::PrintRow({what, "allowed", unit, "<=1"}, {{ours, bar}});
}

cEvent Move(ImVec2 at)
{
    cEvent event;
    event.mX = double(at.x);
    event.mY = double(at.y);
    return event;
}

cEvent Button(bool isDown)
{
    cEvent event;
    event.mKind = cEvent::BUTTON;
    event.mIsDown = isDown;
    return event;
}

// From the key to the first sample that is heard, by the device's own account.
void MeasurePlay(cBench &bench)
{
    std::vector<double> times;
    studio::cTransport &transport = bench.mStudio.Transport();
    for (int i = 0; i < 20; i++) {
        transport.Seek(100.0 * i);
        const double row = transport.Row(), start = Now();
        transport.Play();
        while (transport.Row() == row && Now() < start + 5.0)
            transport.Update();
        times.push_back(1000.0 * (Now() - start));
        transport.Pause();
    }
    PrintAgainstBar("studio: key to sound, 95th percentile of 20", bench::Percentile(times, 0.95),
                    50.0, "ms");
}

// Ten keys of each lane, near each other, taken at one of them and moved about.
void MeasureDrag(cBench &bench)
{
    studio::cStudio::tSelection selection;
    for (const timeline::cShowTrack &track : bench.mStudio.Document().Tracks())
        for (int i = 0; i < dragged / lanes; i++)
            selection.insert(track.mKeys[size_t(100 + i)].mId);
    bench.mStudio.Select(selection);
    cEvent zoom;
    zoom.mKind = cEvent::WHEEL;
    zoom.mY = 30.0;
    ImVec2 point;
    bench.Frame({Move(bench.mPage.PointOnRuler(404.0))});
    bench.Frame({zoom});
    bench.mPage.PointOnLane("track100", 404.0, {}, point);
    bench.Frame({Move(point)});
    bench.Frame({Button(true)});
    std::vector<double> frames;
    for (int i = 0; i < 300; i++)
        frames.push_back(1000.0 * bench.Frame({Move({point.x + float(10 + i % 100), point.y})}));
    bench.Frame({Button(false)});
    PrintAgainstBar("studio: page, a frame while 1,000 of 100,000 keys are dragged",
                    bench::Median(frames), 4.0, "ms");
    PrintAgainstBar("studio: page, the same, 95th percentile", bench::Percentile(frames, 0.95), 4.0,
                    "ms");
    bench.mStudio.Undo();
}

// From the moment at which the editor closes the file to the moment at which the frame is drawn.
void MeasureSaves(cBench &bench, const fs::path &folder)
{
    std::vector<double> times;
    for (int i = 0; i < saves; i++) {
        const int before = bench.mStudio.Generation();
        const std::string text = MakeTimeline(float(i % 100) / 100.0f + 0.001f);
        Write(folder / "timeline.new", text);
        const double start = Now();
        fs::rename(folder / "timeline.new", folder / "timeline.txt");
        while (bench.mStudio.Generation() ==
               before) { // as the loop waits, which draws nothing then
            bench.mStudio.Update(Now());
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        bench.Frame({});
        times.push_back(1000.0 * (Now() - start));
    }
    PrintAgainstBar("studio: text saved to picture, 95th percentile of 200",
                    bench::Percentile(times, 0.95), 100.0, "ms");
}

int CountObjects(studio::cWindow &window)
{
    window.UseShow();
    int count = 0;
    for (GLuint name = 1; name < 20'000; name++)
        count += glIsTexture(name) + glIsProgram(name) + glIsShader(name) + glIsBuffer(name) +
                 glIsFramebuffer(name) + glIsList(name);
    window.UsePage();
    return count;
}

void MeasureReloads(cBench &bench, const char *kind, const std::function<void(int)> &change,
                    const std::function<bool(int)> &isTaken)
{
    size_t before = 0;
    int objects = 0;
    for (int i = 0; i < reloads + 50; i++) {
        if (i == 50) { // what grows once has grown
            before = mallinfo2().uordblks;
            objects = CountObjects(bench.mWindow);
        }
        change(i);
        for (int frame = 0; frame < 10'000 && !isTaken(i); frame++) {
            bench.mStudio.Update(Now());
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    const double grown = double(mallinfo2().uordblks) - double(before);
    const std::string what = std::string("studio: memory that 1,000 reloads of ") + kind + " leave";
    PrintAgainstBar(what.c_str(), std::max(grown, 0.0) / 1e6, 1.0, "MB");
    const std::string left = std::string("studio: OpenGL objects that they leave, ") + kind;
    bench::PrintRow({left, "none", "", "<=0"},
                    {{double(CountObjects(bench.mWindow) - objects), 1.0}});
}

// Each kind of file has two contents that take turns; the watcher sees every one.
void MeasureKinds(cBench &bench, const fs::path &folder)
{
    const auto turn = [&folder](const char *file, const std::string &a, const std::string &b) {
        return [=](int i) {
            Write(folder / "next", i % 2 ? a : b);
            fs::rename(folder / "next", folder / file);
        };
    };
    // Taken when the studio knows it: nothing is under way any more.
    const auto quiet = [&bench](int) {
        bench.mStudio.Update(Now());
        return !bench.mStudio.IsBusy();
    };
    const std::string shader = Read(folder / "shader.fs"), object = Read(folder / "object.lwo"),
                      picture = Read(folder / "picture.png");
    MeasureReloads(bench, "a shader", turn("shader.fs", shader, shader + "// two\n"), quiet);
    MeasureReloads(bench, "a picture", turn("picture.png", picture, Read(folder / "other.png")),
                   quiet);
    MeasureReloads(bench, "an object", turn("object.lwo", object, Read(folder / "other.lwo")),
                   quiet);
}
} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench-studio FOLDER\n");
        return 2;
    }
    const fs::path folder = fs::canonical(argv[1]);
    Write(folder / "timeline.txt", MakeTimeline(0.5f));
    const double start = Now();
    cBench bench(folder);
    bench.Frame({});
    const double first = Now() - start - bench.mStudio.Preview().LoadSeconds();
    PrintAgainstBar("studio: start to first frame, beside the show's own loading", first, 1.0, "s");
    bench.mStudio.FinishReading();
    MeasurePlay(bench);
    MeasureDrag(bench);
    MeasureSaves(bench, folder);
    MeasureKinds(bench, folder);
    return 0;
}
