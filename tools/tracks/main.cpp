#include "tools/support/Files.h"
#include "tools/tracks/Compiler.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace
{
const int clean = 0, faulty = 1, misused = 2; // exit statuses

struct cOptions
{
    std::string mTimeline, mFolder, mOutput;
};

int Fail(const std::string &line)
{
    std::cerr << "vyr-tracks: " << tools::OnOneLine(line) << '\n';
    return faulty;
}

int Compile(const cOptions &options)
{
    std::string text, error;
    if (!tools::ReadWhole(options.mTimeline, tracks::kMaximumTextBytes, text, error))
        return Fail(options.mTimeline + ": " + error);
    tracks::tTextFaults faults;
    const tracks::cTimeline timeline = tracks::ParseTimeline(text, faults);
    const std::vector<tracks::cTrack> tracks = tracks::Compile(timeline, faults);
    if (!faults.empty()) {
        tools::Print(std::cerr, tracks::ToReports(options.mTimeline, faults));
        return faulty;
    }
    if (!tools::ReplaceFiles(tracks::TrackFiles(tracks, options.mOutput), error))
        return Fail(error);
    return clean;
}

void AddCompile(CLI::App &app, cOptions &options, int &status)
{
    CLI::App *command = app.add_subcommand("compile", "make track files from a text timeline");
    command->add_option("TIMELINE", options.mTimeline, "the text")->required();
    command->add_option("-o", options.mOutput, "folder for the track files")->required();
    command->callback([&options, &status] { status = Compile(options); });
}
} // namespace

int main(int argc, char **argv)
{
    CLI::App app("The show's tracks: made from a text timeline, read, plotted, captioned.");
    app.require_subcommand(1);
    cOptions options;
    int status = clean;
    AddCompile(app, options, status);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? clean : misused;
    }
    return status;
}
