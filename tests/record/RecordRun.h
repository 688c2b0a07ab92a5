#pragma once

#include "tests/record/GoldenShow.h"
#include "tests/support/Process.h"
#include "tests/support/TestFiles.h"
#include "tools/record/Picture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace record_test
{
using tWords = std::vector<std::string>;

/// Small pictures, so that a second of show takes a fraction of one.
inline const tWords kSmall = {"--size", "64x36", "--fps", "30"};

tWords operator+(tWords words, const tWords &more);

/// A folder with a show in show/, which all tests of a program share: its sections, and 12 seconds
/// of music.
class cRecordTest : public testing::Test
{
protected:
    static void SetUpTestSuite();

    /// Runs vyr-record on the show with `words`, in the folder.
    static test::cProcessResult Record(const tWords &words, const tWords &environment = {});
    static tWords Command(const tWords &words);
    static const std::filesystem::path &Folder();
    static bool Exists(const std::string &name);
    /// Names of everything in the folder, hidden files too.
    static tWords Files();
};

/// The lines of a manifest that are not remarks.
tWords ManifestLines(const std::filesystem::path &path);
/// What ffprobe says about `entries` of `path`: a word each, in the order in which it has them.
tWords Probe(const std::filesystem::path &path, const std::string &stream,
             const std::string &entries);
/// A hash of each picture of `path`, decoded.
tWords DecodedFrames(const std::filesystem::path &path);
/// Decoded sound: 16-bit samples of the left channel at 44.1 kHz, as a player lays them against the
/// first picture.
std::vector<int16_t> DecodedSound(const std::filesystem::path &path);
/// A PNG as a recording's frame has it; of no size when it can't be read.
record::cPicture ReadPng(const std::filesystem::path &path);
} // namespace record_test
