// Pictures of the show's drawing, compared with pictures that a person has looked at.
//
// tests/record/golden/ holds a list of stills with the hash of each (hashes.txt, which names the
// renderer that drew them) and a small reference picture of each. On that renderer a still must be
// the same to the last bit. Any other rounds differently: there the still, shrunk to the size of
// its reference, may differ from it by the tolerance below.
//
// A still that differs leaves a picture in build/tests/record/golden-failures: expected, actual and
// difference (eight times as strong) side by side.
//
// After a change that is meant to be seen: VYR_UPDATE_GOLDEN=1
// build/tests/record/record_golden_test writes hashes and references anew; look at them before you
// commit them.

#include "demo/Tables.h"
#include "tests/record/GoldenShow.h"
#include "tests/record/RecordRun.h"
#include "tests/support/TestFiles.h"
#include "tools/record/Picture.h"
#include "tools/record/Stage.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

namespace fs = std::filesystem;

namespace
{
// Two renderers round coverage and texels differently along edges and nowhere else: on average far
// less than a level, and only a few pixels by more.
const double meanTolerance = 1.5;   // levels of 255, over all channels
const int channelTolerance = 24;    // levels
const double tolerableShare = 0.01; // of the channels, beyond that

const int referenceWidth = 128;
const int rowsPerLayer = 32;

struct cStill
{
    std::string mName;
    int64_t mRow; // whole rows
    record::cSize mSize;
};

std::string NameOf(const char *timeline, int64_t row, const record::cSize &size)
{
    char name[80];
    std::snprintf(name, sizeof name, "%s-%04d-%dx%d", timeline, int(row), size.mWidth,
                  size.mHeight);
    return name;
}

std::vector<cStill> StillsOfLayers(const record::cSize &size)
{
    std::vector<cStill> stills;
    for (int i = 0; i < golden::CountLayers(); i++) {
        const int64_t row = i * rowsPerLayer + 16;
        stills.push_back({NameOf("layer", row, size), row, size});
    }
    return stills;
}

// Three moments of each section, in bars.
const double allMoments[] = {1,     3.5,  6,    9.5,  14,    21.25, 24.25, 30,  39,    41,   43.5,
                             45.75, 46.5, 53,   60.5, 62.75, 66,    69.5,  70,  78.25, 85.5, 86.5,
                             90,    93.5, 94.5, 96,   97.75, 98.5,  104,   109, 110.5, 112,  113};
const double fewMoments[] = {6, 21.25, 43.5, 78.25};

template <size_t N>
std::vector<cStill> StillsOfSections(const double (&bars)[N], const record::cSize &size)
{
    std::vector<cStill> stills;
    for (const double bar : bars) {
        const auto row = int64_t(bar * 32.0);
        stills.push_back({NameOf("section", row, size), row, size});
    }
    return stills;
}

fs::path GoldenFolder() { return fs::path(VYR_SOURCE_DIR) / "tests/record/golden"; }
fs::path FailureFolder() { return fs::path(VYR_BINARY_DIR) / "tests/record/golden-failures"; }
fs::path ReferencePath(const std::string &name) { return GoldenFolder() / (name + ".png"); }
fs::path HashesPath() { return GoldenFolder() / "hashes.txt"; }

bool IsUpdating() { return std::getenv("VYR_UPDATE_GOLDEN") != nullptr; }

/// The hashes of all stills and the renderer that made them.
struct cHashes
{
    std::string mRenderer;
    std::map<std::string, std::string> mByName;

    static cHashes Read()
    {
        cHashes hashes;
        std::ifstream file(HashesPath());
        std::getline(file, hashes.mRenderer);
        if (!hashes.mRenderer.empty())
            hashes.mRenderer.erase(0, 2); // "# "
        std::string name, hash;
        while (file >> name >> hash)
            hashes.mByName[name] = hash;
        return hashes;
    }

    void Write() const
    {
        std::ofstream file(HashesPath());
        file << "# " << mRenderer << '\n';
        for (const auto &[name, hash] : mByName)
            file << name << ' ' << hash << '\n';
    }
};

record::cPicture ToReference(const record::cPicture &picture)
{
    return Shrink(picture, referenceWidth, referenceWidth * picture.mHeight / picture.mWidth);
}

record::cPicture Difference(const record::cPicture &a, const record::cPicture &b)
{
    record::cPicture difference(a.mWidth, a.mHeight);
    for (size_t i = 0; i < a.mBytes.size(); i++)
        difference.mBytes[i] =
            uint8_t(i % 4 == 3 ? 255 : std::min(255, 8 * std::abs(a.mBytes[i] - b.mBytes[i])));
    return difference;
}

record::cPicture SideBySide(const std::vector<record::cPicture> &pictures)
{
    const int width = pictures.front().mWidth, height = pictures.front().mHeight;
    record::cPicture whole(width * int(pictures.size()), height);
    for (size_t i = 0; i < pictures.size(); i++)
        for (int y = 0; y < height; y++)
            std::copy_n(pictures[i].Row(y), pictures[i].RowBytes(),
                        whole.Row(y) + i * pictures[i].RowBytes());
    return whole;
}

/// How far two pictures of the same size are apart.
struct cDistance
{
    double mMean = 0.0, mShareBeyond = 0.0;

    cDistance(const record::cPicture &a, const record::cPicture &b)
    {
        for (size_t i = 0; i < a.mBytes.size(); i++) {
            const int difference = std::abs(a.mBytes[i] - b.mBytes[i]);
            mMean += difference;
            mShareBeyond += difference > channelTolerance ? 1.0 : 0.0;
        }
        mMean /= double(a.mBytes.size());
        mShareBeyond /= double(a.mBytes.size());
    }

    bool IsTolerable() const { return mMean <= meanTolerance && mShareBeyond <= tolerableShare; }
};

std::string LeaveFailure(const std::string &name, const record::cPicture &expected,
                         const record::cPicture &actual)
{
    fs::create_directories(FailureFolder());
    const fs::path path = FailureFolder() / (name + ".png");
    record::WritePng(path.string(), SideBySide({expected, actual, Difference(expected, actual)}));
    return "expected, actual and difference: " + path.string();
}

class GoldenPictures : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        folder = new test::cTemporaryFolder;
        golden::WriteContent(folder->Path());
        hashes = new cHashes(cHashes::Read());
    }

    static void TearDownTestSuite()
    {
        if (IsUpdating())
            hashes->Write();
        delete hashes;
        delete folder;
    }

    // All of `stills` have one size and stand in the order of their rows.
    void Check(const golden::tTimeline &timeline, const std::vector<cStill> &stills)
    {
        golden::WriteTracks(folder->Path(), timeline);
        vyr::cShowFolder show("."); // closed after each stage, so that none knows of the one before
        record::cStage stage(show, stills.front().mSize);
        stage.LoadShow();
        const record::cFrameGrid grid(record::cFrameRate(), show.GetDescription().mRowsPerSecond);
        for (const cStill &still : stills)
            CheckStill(still, stage.DrawStill(grid, still.mRow * record::kMicroRows));
    }

private:
    void CheckStill(const cStill &still, const record::cPicture &picture)
    {
        if (IsUpdating())
            return Update(still, picture);
        const record::cPicture expected = record_test::ReadPng(ReferencePath(still.mName));
        const record::cPicture actual = ToReference(picture);
        ASSERT_EQ(expected.mBytes.size(), actual.mBytes.size()) << ReferencePath(still.mName);
        const cDistance distance(expected, actual);
        EXPECT_TRUE(distance.IsTolerable())
            << still.mName << ": mean " << distance.mMean << ", beyond " << distance.mShareBeyond
            << "; " << LeaveFailure(still.mName, expected, actual);
        if (record::cStage::GetRendererName() == hashes->mRenderer) {
            EXPECT_EQ(HashPixels(picture), hashes->mByName[still.mName])
                << still.mName << "; " << LeaveFailure(still.mName, expected, actual);
        }
    }

    static void Update(const cStill &still, const record::cPicture &picture)
    {
        hashes->mRenderer = record::cStage::GetRendererName();
        hashes->mByName[still.mName] = HashPixels(picture);
        fs::create_directories(GoldenFolder());
        ASSERT_TRUE(WritePng(ReferencePath(still.mName).string(), ToReference(picture)));
    }

    static inline test::cTemporaryFolder *folder = nullptr;
    static inline cHashes *hashes = nullptr;
};

TEST_F(GoldenPictures, EveryLayerAlone) { Check(golden::Layers(), StillsOfLayers({1280, 720})); }

TEST_F(GoldenPictures, EverySection)
{
    Check(golden::Sections(), StillsOfSections(allMoments, {1280, 720}));
}

TEST_F(GoldenPictures, SmallScreen)
{
    Check(golden::Sections(), StillsOfSections(fewMoments, {640, 360}));
}

TEST_F(GoldenPictures, TallScreenHasBars)
{
    Check(golden::Sections(), StillsOfSections(fewMoments, {1440, 900}));
}

TEST_F(GoldenPictures, WideScreenIsCropped)
{
    Check(golden::Sections(), StillsOfSections(fewMoments, {2560, 1080}));
}

// Otherwise a new track, or a setting that shows nothing, would never be seen in a picture.
TEST(GoldenSet, HasALayerForEachTrackAndAPictureOfItsOwnForEachLayer)
{
    const golden::tTimeline layers = golden::Layers();
    for (const char *track : demo::kTrackNames)
        EXPECT_TRUE(layers.contains(track)) << track;
    std::map<std::string, std::string> names;
    cHashes hashes = cHashes::Read();
    for (const cStill &still : StillsOfLayers({1280, 720})) {
        const std::string hash = hashes.mByName[still.mName];
        EXPECT_TRUE(names.emplace(hash, still.mName).second)
            << still.mName << " looks like " << names[hash];
    }
}

TEST(GoldenSet, HasNoHashWithoutItsPictureAndNoPictureWithoutItsHash)
{
    const cHashes hashes = cHashes::Read();
    EXPECT_GE(hashes.mByName.size(), 60u);
    for (const auto &[name, hash] : hashes.mByName)
        EXPECT_TRUE(fs::exists(ReferencePath(name))) << name;
    for (const auto &entry : fs::directory_iterator(GoldenFolder()))
        if (entry.path().extension() == ".png") {
            EXPECT_TRUE(hashes.mByName.contains(entry.path().stem().string())) << entry.path();
        }
}
} // namespace
