#include "show/Player.h"

#include "engine/Renderer.h"
#include "show/ShowFolder.h"
#include "show/Stage.h"
#include "show/Time.h"
#include "sound/MusicPlayer.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <thread>

namespace fs = std::filesystem;

namespace vyr
{
namespace
{
enum eStatus : int
{
    PLAYED = 0,
    FAILED = 1,
    MISUSED = 2
};

struct cUsageError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

struct cOptions
{
    bool mIsWindow = false;
    int mWidth = 1280, mHeight = 720; ///< of the window
    std::string mFrom = "0";
    bool mIsSilent = false;
};

std::string ProgramName(const char *path) { return fs::path(path ? path : "").filename().string(); }

// "640x360"; empty leaves the size as it is.
void ReadSize(const std::string &text, cOptions &options)
{
    if (text.empty())
        return;
    const int largest = 16384;
    const char *end = text.data() + text.size();
    int width = 0, height = 0;
    const auto first = std::from_chars(text.data(), end, width);
    const bool hasCross = first.ec == std::errc() && first.ptr != end && *first.ptr == 'x';
    const auto second = hasCross ? std::from_chars(first.ptr + 1, end, height) : first;
    if (!hasCross || second.ec != std::errc() || second.ptr != end || width < 1 || height < 1 ||
        width > largest || height > largest)
        throw cUsageError("--window " + text + ": a width and a height in pixels, as in 1280x720");
    options.mWidth = width;
    options.mHeight = height;
}

// Nothing comes back when only help was asked for, which has been printed.
std::optional<cOptions> ReadCommandLine(int argc, char **argv, const cShowDescription &description)
{
    CLI::App app("Plays " + description.mTitle + ", full-screen. Escape ends it.",
                 ProgramName(argv[0]));
    cOptions options;
    std::string size;
    auto *window = app.add_option("--window", size, "play in a window of this size [1280x720]");
    window->type_name("WxH")->expected(0, 1);
    app.add_option("--from", options.mFrom, "begin there: bar:beat:row, a row, or seconds as 12.5s")
        ->type_name("TIME");
    app.add_flag("--silent", options.mIsSilent, "without sound");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success &success) {
        app.exit(success);
        return std::nullopt;
    } catch (const CLI::ParseError &error) {
        throw cUsageError(error.what());
    }
    options.mIsWindow = window->count() > 0;
    ReadSize(size, options);
    return options;
}

// The row that --from names.
double ReadStart(const std::string &text, const cShowDescription &description)
{
    double row = 0;
    std::string expected;
    if (!ParsePosition(text, TempoOf(description), row, expected))
        throw cUsageError("--from " + text + ": expected " + expected);
    if (!(row >= 0 && row < description.mLastRow))
        throw cUsageError("--from " + text + ": the show ends at row " +
                          std::to_string(int64_t(description.mLastRow)));
    return row;
}

fs::path FindOwnFolder() { return fs::canonical("/proc/self/exe").parent_path(); }

void ShowBlackFrame(cRenderer &renderer)
{
    renderer.BeginScene();
    renderer.Clear(cColor(0, 0, 0, 1));
    renderer.EndScene();
    renderer.Present();
}

// Frame after frame while the music moves, to the last row, the music's end, or Escape.
void PlayFrames(cShowFolder &show, cRenderer &renderer, MusicPlayer &music)
{
    const cShowDescription &description = show.GetDescription();
    double drawnRow = -1;
    while (renderer.Update() && drawnRow < description.mLastRow && !music.HasEnded()) {
        const double seconds = music.GetSeconds();
        const double row = seconds * description.mRowsPerSecond;
        if (row == drawnRow) { // nothing has moved; let the music have the processor
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            continue;
        }
        show.Draw(row, seconds);
        renderer.Present();
        drawnRow = row;
    }
}

std::unique_ptr<SoundOutput> OpenOutput(const cOptions &options)
{
    return options.mIsSilent ? std::make_unique<SoundOutput>()
                             : std::make_unique<SoundOutput>(OpenSoundDevice());
}

eStatus Play(int argc, char **argv)
{
    fs::current_path(FindOwnFolder());
    cShowFolder show(".");
    const cShowDescription &description = show.GetDescription();
    const auto options = ReadCommandLine(argc, argv, description);
    if (!options)
        return PLAYED;
    const double startRow = ReadStart(options->mFrom, description);

    const cStage stage(options->mIsWindow ? cStage::WINDOW : cStage::FULLSCREEN, options->mWidth,
                       options->mHeight);
    if (!stage.IsOpen())
        return FAILED; // the window system has said why
    stage.GetRenderer().SetCaption(description.mTitle);
    ShowBlackFrame(stage.GetRenderer()); // while everything loads

    const auto output = OpenOutput(*options);
    std::string error;
    const auto music = MusicPlayer::Open(description.mMusic, *output, error);
    if (!music)
        throw cShowError(description.mMusic + ": " + error);
    show.LoadTracks();
    show.Load();
    music->Play(startRow / description.mRowsPerSecond);
    PlayFrames(show, stage.GetRenderer(), *music);
    return PLAYED;
}

eStatus Fail(const char *program, const std::string &line, eStatus status)
{
    std::fprintf(stderr, "%s: %s\n", ProgramName(program).c_str(), line.c_str());
    return status;
}
} // namespace

int PlayShow(int argc, char **argv)
{
    try {
        return Play(argc, argv);
    } catch (const cUsageError &error) {
        return Fail(argv[0], error.what(), MISUSED);
    } catch (const std::exception &error) {
        return Fail(argv[0], error.what(), FAILED);
    }
}
} // namespace vyr
