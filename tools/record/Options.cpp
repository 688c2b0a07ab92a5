#include "tools/record/Options.h"

#include "show/Tempo.h"
#include "tools/record/Failure.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <set>

namespace fs = std::filesystem;

namespace record
{
namespace
{
const int maximumColumns = 64;
const int64_t maximumFrame = int64_t(1) << 40; // more than any show has

/// Options that need no show, as they were typed.
struct cTyped
{
    std::optional<std::string> mSize, mRate, mPart, mFrames, mColumns;
};

[[noreturn]] void Refuse(const std::string &option, const std::string &text,
                         const std::string &wanted)
{
    throw cUsageError(option + " " + text + ": " + wanted);
}

template <typename T>
std::optional<T> ParseNumber(std::string_view text)
{
    T value{};
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (text.empty() || result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return value;
}

// Two numbers with one of `separators` between them.
std::optional<std::pair<int64_t, int64_t>> ParsePair(const std::string &text,
                                                     const char *separators)
{
    const size_t at = text.find_first_of(separators);
    if (at == std::string::npos)
        return std::nullopt;
    const auto first = ParseNumber<int64_t>(std::string_view(text).substr(0, at));
    const auto second = ParseNumber<int64_t>(std::string_view(text).substr(at + 1));
    if (!first || !second)
        return std::nullopt;
    return std::pair(*first, *second);
}

cSize ReadSize(const std::string &text)
{
    const auto pair = ParsePair(text, "xX");
    const int64_t limit = 1 << 20; // the driver's own is asked for later
    if (!pair || pair->first < 1 || pair->second < 1 || pair->first > limit || pair->second > limit)
        Refuse("--size", text, "a width and a height in pixels, as in 1280x720");
    return {int(pair->first), int(pair->second)};
}

cFrameRate ReadRate(const std::string &text)
{
    const auto rate = cFrameRate::Parse(text);
    if (!rate)
        Refuse("--fps", text, "frames a second, 1 to 1000, whole or a fraction as in 30000/1001");
    return *rate;
}

// "3624", "256.5"
std::string ToDecimal(double number)
{
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof text, number).ptr);
}

// A row of the show, in millionths.
int64_t ReadRow(const std::string &option, const std::string &text,
                const vyr::cShowDescription &show)
{
    const auto row = ParseNumber<double>(text);
    const std::string end = ToDecimal(show.mLastRow);
    if (!row || !std::isfinite(*row))
        Refuse(option, text, "a row of the show, 0 to " + end);
    if (*row < 0.0 || *row > show.mLastRow)
        Refuse(option, text, "the show has the rows 0 to " + end);
    return ToMicroRow(*row);
}

int64_t ReadStill(const std::string &text, const vyr::cShowDescription &show)
{
    const int64_t row = ReadRow("--still", text, show);
    if (row == ToMicroRow(show.mLastRow))
        Refuse("--still", text, "the show ends before this row");
    return row;
}

void ReadPart(const std::string &text, cOptions &options)
{
    const auto pair = ParsePair(text, "/");
    if (!pair || pair->first < 1 || pair->second < pair->first || pair->second > 1000000)
        Refuse("--part", text, "the K-th of N pieces, from 1/N to N/N");
    options.mPart = pair->first;
    options.mParts = pair->second;
}

// The last one included, as they stand in a manifest.
cFrameRange ReadFrames(const std::string &text)
{
    const auto pair = ParsePair(text, "-");
    if (!pair || pair->first < 0 || pair->second < pair->first || pair->second > maximumFrame)
        Refuse("--frames", text, "the first and the last frame, as in 1200-1499");
    return {pair->first, pair->second + 1};
}

// From a beat to the whole show.
double ReadEvery(const std::string &text, const vyr::cShowDescription &show)
{
    const auto bars = ParseNumber<double>(text);
    const double smallest = 1.0 / show.mBeatsPerBar;
    const double largest = std::max(smallest, show.mLastRow / vyr::TempoOf(show).RowsPerBar());
    if (!bars || !(*bars >= smallest && *bars <= largest))
        Refuse("--every", text,
               "bars between two pictures, " + ToDecimal(smallest) + " to " + ToDecimal(largest));
    return *bars;
}

int ReadColumns(const std::string &text)
{
    const auto columns = ParseNumber<int>(text);
    if (!columns || *columns < 1 || *columns > maximumColumns)
        Refuse("--columns", text, "pictures side by side, 1 to " + std::to_string(maximumColumns));
    return *columns;
}

void ReadTyped(const cTyped &typed, cOptions &options)
{
    if (typed.mSize)
        options.mSize = ReadSize(*typed.mSize);
    if (typed.mRate)
        options.mRate = ReadRate(*typed.mRate);
    if (typed.mPart)
        ReadPart(*typed.mPart, options);
    if (typed.mFrames)
        options.mFrames = ReadFrames(*typed.mFrames);
    if (typed.mColumns)
        options.mColumns = ReadColumns(*typed.mColumns);
}

void CheckName(const std::string &path, const char *extension, const char *what)
{
    if (fs::path(path).extension() != extension)
        throw cUsageError("-o " + path + ": " + what + " is written to a " + extension + " file");
}

void CheckRange(const cOptions &options, const vyr::cShowDescription &show)
{
    if (options.mFrom >= options.mTo)
        throw cUsageError("--from and --to: no row lies between them");
    if (options.mIsSheet)
        return;
    const cFrameRange range =
        cFrameGrid(options.mRate, show.mRowsPerSecond).Between(options.mFrom, options.mTo);
    if (range.Count() == 0)
        throw cUsageError("--from and --to: no frame lies between them");
    const cFrameRange piece = FindPiece(options, range);
    if (piece.mFirst < range.mFirst || piece.mEnd > range.mEnd)
        throw cUsageError("--frames: the frames from --from to --to are " +
                          std::to_string(range.mFirst) + "-" + std::to_string(range.mEnd - 1));
    if (piece.Count() == 0)
        throw cUsageError("--part: so many pieces leave this one without a frame");
}

void CheckRecording(const cOptions &options)
{
    if (!options.mIsDescription && options.mOutput.empty() && options.mManifest.empty() &&
        options.mFlashReport.empty() && options.mCosts.empty())
        throw cUsageError(
            "nothing to do: name a file with -o, --manifest, --flash-report or --costs");
    if (options.mOutput.empty())
        return;
    CheckName(options.mOutput, ".mp4", "a recording");
    if (options.mSize.mWidth % 2 != 0 || options.mSize.mHeight % 2 != 0)
        throw cUsageError("--size: the width and height of a video are even numbers");
}

void CheckPicture(const cOptions &options)
{
    if (options.mOutput.empty())
        throw cUsageError("name the picture's file with -o");
    CheckName(options.mOutput, ".png", "a picture");
}

void CheckDistinct(const cOptions &options)
{
    std::set<std::string> names;
    for (const std::string *name :
         {&options.mOutput, &options.mManifest, &options.mFlashReport, &options.mCosts})
        if (!name->empty() && !names.insert(*name).second)
            throw cUsageError("one file is named for two results");
}

void MakeAbsolute(std::string &path)
{
    if (!path.empty())
        path = fs::absolute(path).lexically_normal().string();
}

void CheckFiles(cOptions &options, bool isPicture)
{
    if (isPicture)
        CheckPicture(options);
    else
        CheckRecording(options);
    MakeAbsolute(options.mOutput);
    MakeAbsolute(options.mManifest);
    MakeAbsolute(options.mFlashReport);
    MakeAbsolute(options.mCosts);
    MakeAbsolute(options.mLyrics);
    MakeAbsolute(options.mPictures);
    CheckDistinct(options);
}

// Throws when one of `others` was given together with `option`.
void Exclude(const CLI::App &app, const char *option, std::initializer_list<const char *> others)
{
    for (const char *other : others)
        if (app.count(option) > 0 && app.count(other) > 0)
            throw cUsageError(std::string(option) + " and " + other + " do not go together");
}

void Require(const CLI::App &app, const char *option, const char *needed)
{
    if (app.count(option) > 0 && app.count(needed) == 0)
        throw cUsageError(std::string(option) + " goes with " + needed);
}

void CheckCombination(const CLI::App &app)
{
    Exclude(app, "--still",
            {"--sheet", "--from", "--to", "--part", "--frames", "--manifest", "--flash-report",
             "--lyrics", "--costs"});
    Exclude(app, "--sheet",
            {"--part", "--frames", "--manifest", "--flash-report", "--lyrics", "--costs"});
    Exclude(app, "--part", {"--frames"});
    Exclude(app, "--describe", {"--still", "--sheet", "--manifest", "--flash-report", "--costs"});
    Exclude(app, "--pictures",
            {"--still", "--sheet", "--part", "--frames", "--manifest", "--flash-report", "--costs",
             "--describe"});
    Require(app, "--pictures", "--output");
    Require(app, "--lyrics", "--output");
    Require(app, "--every", "--sheet");
    Require(app, "--columns", "--sheet");
}

void AddOptions(CLI::App &app, cCommandLine &line, cTyped &typed)
{
    cOptions &options = line.mOptions;
    app.add_option("-o,--output", options.mOutput, "the MP4 or PNG file to make")
        ->type_name("FILE");
    app.add_option("--show", line.mShow,
                   "the show's folder [the one this program stands in, else the current one]")
        ->type_name("DIR");
    app.add_option("--size", typed.mSize, "of the picture in pixels [1280x720]")->type_name("WxH");
    app.add_option("--fps", typed.mRate, "frames a second, whole or as 30000/1001 [60]")
        ->type_name("RATE");
    app.add_option("--from", line.mFrom, "begin with the first frame at or after ROW [0]")
        ->type_name("ROW");
    app.add_option("--to", line.mTo, "end before ROW [the show's last]")->type_name("ROW");
    app.add_option("--part", typed.mPart, "only the K-th of N equal pieces")->type_name("K/N");
    app.add_option("--frames", typed.mFrames, "only these frames, the last included, as a piece")
        ->type_name("A-B");
    app.add_option("--manifest", options.mManifest, "write a line a frame: frame, row, hash")
        ->type_name("FILE");
    app.add_option("--flash-report", options.mFlashReport,
                   "write where the picture flashes too often; status 3 when it does")
        ->type_name("FILE");
    app.add_option("--costs", options.mCosts,
                   "write how long each frame took; waits for the driver at each")
        ->type_name("FILE");
    app.add_option("--lyrics", options.mLyrics, "put the words in FILE into the video as captions")
        ->type_name("FILE");
    app.add_option("--pictures", options.mPictures,
                   "take the pictures from the videos in FILE, a list as ffmpeg's concat reads it")
        ->type_name("FILE");
    app.add_flag("--describe", options.mIsDescription,
                 "print what a recording would be, as the first line of its manifest");
    app.add_option("--still", line.mStill, "make one picture, of ROW")->type_name("ROW");
    app.add_flag("--sheet", options.mIsSheet, "make one picture of the whole show, labelled");
    app.add_option("--every", line.mEvery, "bars from one picture of the sheet to the next [4]")
        ->type_name("BARS");
    app.add_option("--columns", typed.mColumns, "pictures of the sheet side by side [6]")
        ->type_name("N");
    app.set_version_flag("--version", "vyr-record " VYR_VERSION);
}

const char *const footer =
    "The show is drawn without a window, frame by frame: frame n is what the show shows at second\n"
    "n / RATE of its music. The file named by -o is replaced, when the new one is complete.\n"
    "Exit status: 0 done, 1 failed, 2 misused, 3 flashes more often than WCAG 2.3.1 allows,\n"
    "130 interrupted.";
} // namespace

std::optional<cCommandLine> ReadCommandLine(int argc, char **argv)
{
    CLI::App app("Records a show, as a video, a picture or a contact sheet.", "vyr-record");
    app.footer(footer);
    cCommandLine line;
    cTyped typed;
    AddOptions(app, line, typed);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success &success) {
        app.exit(success, std::cout, std::cerr);
        return std::nullopt;
    } catch (const CLI::ParseError &error) {
        throw cUsageError(error.what());
    }
    CheckCombination(app);
    ReadTyped(typed, line.mOptions);
    CheckFiles(line.mOptions, line.mStill || line.mOptions.mIsSheet);
    return line;
}

cFrameRange FindPiece(const cOptions &options, const cFrameRange &range)
{
    return options.mFrames ? *options.mFrames : range.Part(options.mPart, options.mParts);
}

cOptions ReadOptions(const cCommandLine &line, const vyr::cShowDescription &show)
{
    cOptions options = line.mOptions;
    options.mTo = ToMicroRow(show.mLastRow);
    if (line.mFrom)
        options.mFrom = ReadRow("--from", *line.mFrom, show);
    if (line.mTo)
        options.mTo = ReadRow("--to", *line.mTo, show);
    if (line.mStill)
        options.mStill = ReadStill(*line.mStill, show);
    if (line.mEvery)
        options.mEveryBars = ReadEvery(*line.mEvery, show);
    CheckRange(options, show);
    return options;
}
} // namespace record
