#include "studio/Program.h"

#include "show/Time.h"
#include "studio/Gui.h"
#include "studio/Page.h"
#include "studio/Script.h"
#include "studio/Studio.h"
#include "studio/Window.h"
#include "tools/record/Picture.h"
#include "tools/record/ShowFiles.h"
#include "tools/support/Files.h"

#include <CLI/CLI.hpp>
#include <epoxy/gl.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <thread>

namespace fs = std::filesystem;

namespace studio
{
namespace
{
enum eStatus : int
{
    DONE = 0,
    FAILED = 1,
    MISUSED = 2
};

struct cUsageError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

struct cOptions
{
    std::string mShow, mTimeline, mScript;
    double mScale = 1.0;
    bool mIsMuted = false;
    record::cSize mSize{1280, 720}, mWindow{1600, 1000};
};

record::cSize ReadSize(const std::string &text, const std::string &option)
{
    record::cSize size;
    char rest = 0;
    const int count = std::sscanf(text.c_str(), "%dx%d%c", &size.mWidth, &size.mHeight, &rest);
    if (count != 2 || size.mWidth < 16 || size.mHeight < 16 || size.mWidth > 16384 ||
        size.mHeight > 16384)
        throw cUsageError(option + " " + text + ": a width and a height in pixels, as in 1280x720");
    return size;
}

// Nothing comes back when only help or the version was asked for, which have been printed.
std::optional<cOptions> ReadCommandLine(int argc, char **argv)
{
    CLI::App app(
        "Plays a show beside its timeline and its music. What is dragged here is changed in "
        "the author's own text; what any editor saves is seen here at once.\n"
        "Opening a show runs its code.",
        "vyr-studio");
    cOptions options;
    std::string size, window;
    app.add_option("DIR", options.mShow, "the show's folder [build/show]");
    app.add_option("--timeline", options.mTimeline,
                   "the timeline's text, where the folder's build has not noted it")
        ->type_name("FILE");
    app.add_option("--scale", options.mScale, "size of everything, 1 to 3 [1]")
        ->check(CLI::Range(1.0, 3.0))
        ->type_name("N");
    app.add_option("--size", size, "pixels of the picture [1280x720]")->type_name("WxH");
    app.add_option("--window", window, "pixels of the window [1600x1000]")->type_name("WxH");
    app.add_flag("--mute", options.mIsMuted, "without sound");
    app.add_option("--script", options.mScript, "do what stands there, frame by frame, and end")
        ->type_name("FILE");
    app.set_version_flag("--version", std::string("vyr-studio ") + VYR_VERSION);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success &success) {
        app.exit(success);
        return std::nullopt;
    } catch (const CLI::ParseError &error) {
        throw cUsageError(error.what());
    }
    if (!size.empty())
        options.mSize = ReadSize(size, "--size");
    if (!window.empty())
        options.mWindow = ReadSize(window, "--window");
    return options;
}

cOpen ToOpen(const cOptions &options)
{
    cOpen open;
    std::string show = options.mShow;
    if (show.empty() && vyr::IsShowFolder("build/show"))
        show = "build/show";
    open.mShow = fs::absolute(record::FindShow(show)).lexically_normal();
    if (!options.mTimeline.empty()) {
        open.mTimeline = fs::absolute(options.mTimeline).lexically_normal();
        if (!fs::is_regular_file(open.mTimeline))
            throw std::runtime_error(options.mTimeline + ": not there");
    }
    open.mSize = options.mSize;
    return open;
}

double Now()
{
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

std::unique_ptr<cPlayback> OpenPlayback(const cOptions &options)
{
    return std::make_unique<cSoundPlayback>(
        options.mIsMuted ? std::make_unique<vyr::SoundOutput>()
                         : std::make_unique<vyr::SoundOutput>(vyr::OpenSoundDevice()));
}

/// The window with the page in it.
class cProgram
{
public:
    /// The sound comes last: what can't be opened is said before.
    cProgram(const cOptions &options, const cStudio::tOpenPlayback &openPlayback)
        : mFolder(fs::current_path()), mOpen(ToOpen(options)),
          mWindow(options.mWindow.mWidth, options.mWindow.mHeight), mGui(mWindow, options.mScale),
          mStudio(mWindow, mOpen, openPlayback), mPage(mStudio, mGui, options.mScale, mFolder)
    {}

    cStudio &Studio() { return mStudio; }
    cPage &Page() { return mPage; }
    const fs::path &Folder() const { return mFolder; }

    void DrawFrame(const std::vector<cEvent> &events, double seconds)
    {
        mWindow.SetTitle(WindowTitle(mStudio.Show().mTitle, mStudio.Transport()));
        mGui.Begin(events, seconds);
        mPage.Draw(events);
        mGui.End();
        mGui.Render();
    }

    void Present() { mWindow.Present(); }
    cWindow &Window() { return mWindow; }

    /// The page as it has been drawn last, before it is presented.
    record::cPicture Read()
    {
        const auto size = mWindow.Size();
        record::cPicture picture(size.width, size.height), upright = picture;
        glReadPixels(0, 0, size.width, size.height, GL_RGBA, GL_UNSIGNED_BYTE,
                     picture.mBytes.data());
        for (int y = 0; y < size.height; y++)
            std::copy_n(picture.Row(size.height - 1 - y), picture.RowBytes(), upright.Row(y));
        return upright;
    }

private:
    const fs::path mFolder; ///< where it was started: the show's becomes the working directory
    const cOpen mOpen;
    cWindow mWindow;
    cGui mGui;
    cStudio mStudio;
    cPage mPage;
};

// Draws while something moves, and for a few frames after; waits for the next event otherwise.
eStatus Run(const cOptions &options)
{
    cProgram program(options, [&options] { return OpenPlayback(options); });
    cEventQueue queue;
    const int restFrames = 4; // in which what a hand has done comes to rest on the page
    int toDraw = restFrames;
    double before = Now();
    while (!program.Window().IsToClose() && !program.Page().IsQuitAsked()) {
        const bool isMoving = program.Studio().Transport().IsPlaying() || toDraw > 0;
        program.Window().Poll(isMoving ? 0.001 : 0.01, &queue);
        const std::vector<cEvent> events = queue.Take();
        const double now = Now();
        if (program.Studio().Update(now) || !events.empty())
            toDraw = restFrames;
        if (toDraw == 0)
            continue;
        toDraw--;
        program.DrawFrame(events, std::max(now - before, 1e-4));
        program.Present();
        before = now;
    }
    return DONE;
}

/// Does a script's steps. Its time is counted in frames of a sixtieth of a second.
class cScriptRun
{
public:
    cScriptRun(cProgram &program, cSteppedPlayback &playback)
        : mProgram(program), mPlayback(playback)
    {
        mProgram.Page().LeaveOutTimes();
        Frame({}, 0.0);
        Settle();
    }

    /// Throws std::runtime_error.
    void Do(const cStep &step)
    {
        switch (step.mKind) {
        case cStep::EVENT:
            return Frame({step.mEvent}, kFrame);
        case cStep::TO_LANE:
        case cStep::TO_RULER:
        case cStep::SEEK:
            return MoveTo(step);
        case cStep::WAIT:
            for (int i = 0; i < step.mCount; i++)
                Frame({}, kFrame);
            return;
        case cStep::SETTLE:
            return Settle();
        case cStep::RUN:
            return RunCommand(step.mText);
        case cStep::SCREENSHOT:
            return Screenshot(step.mText);
        case cStep::PRINT:
            return Print(step.mText);
        }
    }

private:
    static constexpr double kFrame = 1.0 / 60.0;

    void Frame(const std::vector<cEvent> &events, double seconds)
    {
        mProgram.Window().Poll(0.0, nullptr); // hands are not listened to
        mPlayback.Step(seconds);
        mProgram.Studio().Update(Now());
        mProgram.DrawFrame(events, kFrame);
        mProgram.Present();
    }

    // The music is decoded, changes on disk have been taken, nothing is built or recorded. The
    // show's time stands still meanwhile.
    void Settle()
    {
        mProgram.Studio().FinishReading();
        const double quiet = 4.0 * cWatcher::kQuietSeconds;
        for (double since = Now(); mProgram.Studio().IsBusy() || Now() < since + quiet;) {
            if (mProgram.Studio().IsBusy())
                since = Now();
            Frame({}, 0.0);
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        for (int i = 0; i < 3; i++)
            Frame({}, 0.0);
    }

    void MoveTo(const cStep &step)
    {
        const vyr::cTempo &tempo = mProgram.Studio().Transport().Tempo();
        double row = 0.0;
        std::string expected;
        if (!vyr::ParsePosition(step.mTime, tempo, row, expected))
            throw std::runtime_error(step.mTime + ": expected " + expected);
        if (step.mKind == cStep::SEEK) {
            mProgram.Studio().Transport().Seek(row);
            return Frame({}, 0.0);
        }
        std::optional<double> value;
        if (!step.mValue.empty())
            value = std::strtod(step.mValue.c_str(), nullptr);
        ImVec2 point = mProgram.Page().PointOnRuler(row);
        if (step.mKind == cStep::TO_LANE &&
            !mProgram.Page().PointOnLane(step.mText, row, value, point))
            throw std::runtime_error("no lane " + step.mText);
        cEvent event = step.mEvent;
        event.mKind = cEvent::MOVE;
        event.mX = double(point.x);
        event.mY = double(point.y);
        Frame({event}, kFrame);
    }

    void RunCommand(const std::string &command)
    {
        const fs::path show = fs::current_path();
        fs::current_path(mProgram.Folder());
        const int status = std::system(command.c_str());
        fs::current_path(show);
        if (status != 0)
            throw std::runtime_error("run: ended with a status that is not 0");
    }

    void Screenshot(const std::string &file)
    {
        mProgram.Studio().Update(Now());
        mProgram.DrawFrame({}, kFrame);
        const record::cPicture picture = mProgram.Read();
        mProgram.Present();
        const fs::path path = mProgram.Folder() / file;
        if (!record::WritePng(path.string(), picture))
            throw std::runtime_error(file + ": can't be written");
    }

    void Print(const std::string &what)
    {
        cStudio &studio = mProgram.Studio();
        if (what == "title")
            std::puts(WindowTitle(studio.Show().mTitle, studio.Transport()).c_str());
        else if (what == "message")
            std::puts(studio.Message().c_str());
        else if (what == "selection")
            std::printf("%zu keys selected\n", studio.Selection().size());
        else if (what == "row")
            std::printf("%.6f\n", studio.Transport().Row());
        else if (what == "frame")
            std::puts(record::HashPixels(studio.Preview().Read()).c_str());
        else if (what == "problems")
            for (const cProblem &problem : studio.Problems())
                std::puts(problem.ToLine().c_str());
        else
            throw std::runtime_error("nothing to print is called " + what);
        std::fflush(stdout);
    }

    cProgram &mProgram;
    cSteppedPlayback &mPlayback;
};

eStatus RunScript(const cOptions &options)
{
    std::string text, error;
    if (!tools::ReadWhole(options.mScript, size_t(1) << 20, text, error))
        throw std::runtime_error(options.mScript + ": " + error);
    std::vector<cStep> steps;
    if (!ReadScript(text, steps, error))
        throw std::runtime_error(options.mScript + ": " + error);
    cSteppedPlayback *stepped = nullptr;
    cProgram program(options, [&stepped] {
        auto playback = std::make_unique<cSteppedPlayback>();
        stepped = playback.get();
        return playback;
    });
    cScriptRun run(program, *stepped);
    for (const cStep &step : steps) {
        try {
            run.Do(step);
        } catch (const std::exception &failure) {
            throw std::runtime_error(options.mScript + ": line " + std::to_string(step.mLine) +
                                     ": " + failure.what());
        }
    }
    return DONE;
}

eStatus Fail(const std::string &line, eStatus status)
{
    if (!line.empty())
        std::fprintf(stderr, "vyr-studio: %s\n", line.c_str());
    return status;
}
} // namespace

int RunStudio(int argc, char **argv)
{
    try {
        const auto options = ReadCommandLine(argc, argv);
        if (!options)
            return DONE;
        return options->mScript.empty() ? Run(*options) : RunScript(*options);
    } catch (const cUsageError &error) {
        return Fail(error.what(), MISUSED);
    } catch (const std::exception &error) {
        return Fail(error.what(), FAILED);
    }
}
} // namespace studio
