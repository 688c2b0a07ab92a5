#include "tools/tracks/CommandLine.h"

#include "tools/tracks/Commands.h"

#include <CLI/CLI.hpp>

namespace tracks
{
namespace
{
CLI::App *Add(CLI::App &app, const char *name, const char *what, int (*run)(const cOptions &),
              const cOptions &options, int &status)
{
    CLI::App *command = app.add_subcommand(name, what);
    command->callback([run, &options, &status] { status = run(options); });
    return command;
}

void AddFolder(CLI::App *command, cOptions &options)
{
    command->add_option("DIR", options.mFolder, "folder of the track files")->required();
}

void AddTempo(CLI::App *command, cOptions &options)
{
    command->add_option("--timeline", options.mTimeline,
                        "text to take the tempo from (default: the show's own)");
}

void AddEdit(CLI::App &app, cOptions &options, int &status)
{
    CLI::App *edit = Add(app, "edit", "changes in a timeline's text", RunEdit, options, status);
    edit->add_option("TIMELINE", options.mTimeline, "the text, changed in place")->required();
    edit->add_option("EDIT", options.mEdit,
                     "set TRACK TIME VALUE [INTERPOLATION], move TRACK TIME NEWTIME, delete TRACK "
                     "TIME, detach TRACK TIME, insert TIME LENGTH or remove TIME LENGTH")
        ->expected(1, 8);
    edit->add_option("-o", options.mOutput, "file for the result (default: TIMELINE itself)");
    edit->add_option("--script", options.mScript, "file of edits, one a line; - is standard input");
    edit->add_flag("--pattern", options.mIsPattern, "change all copies of a repeated section");
    edit->add_flag("--dry-run", options.mIsDryRun, "print a unified diff and write nothing");
}

void AddCommands(CLI::App &app, cOptions &options, int &status)
{
    CLI::App *compile =
        Add(app, "compile", "text timeline to track files", RunCompile, options, status);
    compile->add_option("TIMELINE", options.mTimeline, "the text")->required();
    compile->add_option("-o", options.mOutput, "folder for the track files")->required();

    AddEdit(app, options, status);

    CLI::App *dump = Add(app, "dump", "track files to text", RunDump, options, status);
    AddFolder(dump, options);
    dump->add_option("-o", options.mOutput, "file for the text (default: standard output)");
    AddTempo(dump, options);

    CLI::App *sample = Add(app, "sample", "values of one track as CSV", RunSample, options, status);
    AddFolder(sample, options);
    sample->add_option("NAME", options.mTrack, "the track")->required();
    sample->add_option("FROM", options.mFrom, "first time: rows, bars:beats:rows or 43.6s")
        ->required();
    sample->add_option("TO", options.mTo, "last time")->required();
    sample->add_option("STEP", options.mStep, "time between two values")->required();
    sample->add_option("-o", options.mOutput, "file for the values (default: standard output)");
    AddTempo(sample, options);

    CLI::App *plot = Add(app, "plot", "a page with all tracks, as SVG", RunPlot, options, status);
    AddFolder(plot, options);
    plot->add_option("-o", options.mOutput, "the page")->required();
    plot->add_option("--track", options.mTrack, "a page for this track alone");
    plot->add_option("--timeline", options.mTimeline,
                     "text to take tempo, sections and names from");
    plot->add_option("--lyrics", options.mLyrics, "the words, NUMBER TEXT a line");
    plot->add_option("--music", options.mMusic, "the music (default: the show's own)");

    CLI::App *captions = Add(app, "captions", "the words as WebVTT", RunCaptions, options, status);
    AddFolder(captions, options);
    captions->add_option("--lyrics", options.mLyrics, "the words, NUMBER TEXT a line")->required();
    captions->add_option("-o", options.mOutput, "the WebVTT file")->required();
    captions->add_option("--transcript", options.mTranscript, "the words as plain text too");
    AddTempo(captions, options);
}
} // namespace

int RunCommandLine(int argc, char **argv)
{
    CLI::App app("The show's tracks: made from a text timeline, read, plotted, captioned.");
    app.set_version_flag("--version", "vyr-tracks " VYR_VERSION);
    app.require_subcommand(1);
    cOptions options;
    int status = kClean;
    AddCommands(app, options, status);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? kClean : kMisused;
    }
    return status;
}
} // namespace tracks
