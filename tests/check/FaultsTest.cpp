#include "tests/check/GoodShow.h"
#include "tests/support/LWO2Builder.h"
#include "tests/support/TestFiles.h"
#include "tools/check/CheckImages.h"
#include "tools/check/CheckLyrics.h"
#include "tools/check/CheckMusic.h"
#include "tools/check/CheckObjects.h"
#include "tools/check/CheckShaders.h"
#include "tools/check/CheckTracks.h"
#include "tools/check/Stage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <limits>

namespace fs = std::filesystem;
using test::TrackBytes;
using test::WriteFile;
using test::WriteTrack;
using testing::Contains;
using testing::ElementsAre;
using testing::StartsWith;

namespace
{
// What the program does, music apart, which takes its time: each area of it here.
void CheckAllTracks(check::cFindings &findings)
{
    tools::cTrackFolder folder("");
    check::CheckTracks(test::GetShow(), folder, findings);
}

void CheckAllLyrics(check::cFindings &findings)
{
    tools::cTrackFolder folder("");
    check::CheckLyrics(test::GetShow(), folder, findings);
}

template <void (*Check)(const vyr::cShowDescription &, check::cFindings &)>
void CheckAll(check::cFindings &findings)
{
    Check(test::GetShow(), findings);
}

/// A fault put into a copy of the good show, and the beginning of the line that must name it.
struct cCase
{
    const char *mName;
    void (*mCheck)(check::cFindings &);
    std::function<void()> mInject;
    std::string mFault;
};

void PrintTo(const cCase &each, std::ostream *out) { *out << each.mName; }

std::vector<std::string> Lines(const tools::tFaults &faults)
{
    std::vector<std::string> lines;
    for (const tools::cFault &fault : faults)
        lines.push_back(fault.ToLine());
    return lines;
}

class Injected : public testing::TestWithParam<cCase>
{
protected:
    Injected() { test::MakeGoodShow(); }

    test::cTemporaryFolder mFolder;
};

const auto hold = SYNC_KEY_HOLD, linear = SYNC_KEY_LINEAR;
const float infinity = std::numeric_limits<float>::infinity();
const float notANumber = std::numeric_limits<float>::quiet_NaN();

std::string Below(int count)
{
    return "an index below " + std::to_string(count) + " (or -1 for none)";
}

// Objects are put together from good parts, of which one is replaced.
struct cObjectParts
{
    std::string mTags = lwo2::Tags({"skin"});
    std::string mPoints = lwo2::Points({{0, 0}, {1, 0}, {0, 1}});
    std::string mFaces = lwo2::Faces({{0, 1, 2}});
    std::string mPolygonTags = lwo2::PolygonTags({{0, 0}});
    std::string mClip = lwo2::Clip(1, "data/tex9.png");
    std::string mSurface = lwo2::Surface("skin", lwo2::ColorPart(1, 1, 1) + lwo2::ImagePart(1));

    void Write() const
    {
        WriteFile("data/oh2.lwo",
                  lwo2::Form(mTags + mPoints + mFaces + mPolygonTags + mClip + mSurface));
    }
};

template <typename Change>
std::function<void()> WithObject(Change change)
{
    return [change] {
        cObjectParts parts;
        change(parts);
        parts.Write();
    };
}

std::function<void()> WithShader(const std::string &file, const std::string &source)
{
    return [=] { WriteFile("data/shaders/" + file, source); };
}

std::function<void()> WithKeys(const std::string &track, const std::vector<sync_key> &keys)
{
    return [=] { WriteTrack(track, keys); };
}

std::function<void()> WithMusic(const std::vector<std::string> &arguments)
{
    return [=] { test::WriteMusic(arguments); };
}

const std::vector<cCase> fileCases = {
    {"missing photo", CheckAll<check::CheckImages>, [] { fs::remove("data/photos/tovak04.png"); },
     "data/photos/tovak04.png: image:left 5: missing"},
    {"missing lyric", CheckAll<check::CheckImages>, [] { fs::remove("data/lyrics/lyrics007"); },
     "data/lyrics/lyrics007: lyrics:num 7: missing"},
    {"missing logo", CheckAll<check::CheckImages>, [] { fs::remove("data/zemlogo.png"); },
     "data/zemlogo.png: missing"},
    {"unreadable image", CheckAll<check::CheckImages>,
     [] { WriteFile("data/duck.png", "no picture"); },
     "data/duck.png: image:left 0: can't be read as an image: "},
    {"cut-off image", CheckAll<check::CheckImages>,
     [] { WriteFile("data/duck.png", test::ReadFile("data/duck.png").substr(0, 60)); },
     "data/duck.png: image:left 0: can't be read as an image: "},
    {"a folder for an image", CheckAll<check::CheckImages>,
     [] {
         fs::remove("data/duck.png");
         fs::create_directory("data/duck.png");
     },
     "data/duck.png: image:left 0: can't be read as an image: "},
    {"grey image", CheckAll<check::CheckImages>,
     [] { test::WriteFlatImage("data/duck.png", 8, 8, 1); },
     "data/duck.png: image:left 0: expected colour (3 components) or colour and alpha (4), found "
     "grey "
     "(1)"},
    {"grey image with alpha", CheckAll<check::CheckImages>,
     [] { test::WriteFlatImage("data/duck.png", 8, 8, 2); },
     "data/duck.png: image:left 0: expected colour (3 components) or colour and alpha (4), found "
     "grey "
     "and alpha (2)"},
    {"rows against the alignment", CheckAll<check::CheckImages>,
     [] { test::WriteFlatImage("data/tex9.png", 7, 8, 3); },
     "data/tex9.png: expected rows of a multiple of 4 bytes, found 21"},
    {"wide image", CheckAll<check::CheckImages>,
     [] { test::WriteFlatImage("data/tex9.png", 2052, 4, 4); },
     "data/tex9.png: expected at most 2048 by 2048 pixels, which every driver "
     "takes, found 2052 by 4"},
    {"high image", CheckAll<check::CheckImages>,
     [] { test::WriteFlatImage("data/tex9.png", 4, 2049, 4); },
     "data/tex9.png: expected at most 2048 by 2048 pixels, which every driver "
     "takes, found 4 by 2049"}};

const std::vector<cCase> trackCases = {
    {"missing track", CheckAllTracks, [] { fs::remove("sync_flare:x.track"); },
     "sync_flare:x.track: missing"},
    {"truncated track", CheckAllTracks,
     [] {
         WriteFile("sync_flare:x.track", TrackBytes({{0, 1, hold}, {1, 1, hold}}).substr(0, 20));
     },
     "sync_flare:x.track: end: expected 26 bytes for 2 keys, found 20 bytes: truncated"},
    {"extra bytes", CheckAllTracks,
     [] {
         WriteFile("sync_flare:x.track", TrackBytes({{0, 1, hold}}) + "abc");
     },
     "sync_flare:x.track: end: expected 17 bytes for 1 keys, found 20 bytes: extra bytes"},
    {"rows out of order", CheckAllTracks, WithKeys("flare:x", {{5, 1, hold}, {3, 1, hold}}),
     "sync_flare:x.track: key 1 (row 3): expected rows in ascending order, found it behind row 5"},
    {"a row twice", CheckAllTracks, WithKeys("flare:x", {{5, 1, hold}, {5, 1, hold}}),
     "sync_flare:x.track: key 1 (row 5): expected one key a row, found a second one"},
    {"type 4", CheckAllTracks, WithKeys("flare:x", {{5, 1, 4}}),
     "sync_flare:x.track: key 0 (row 5): expected an interpolation type from 0 to 3, found 4"},
    {"type -1", CheckAllTracks, WithKeys("flare:x", {{5, 1, -1}}),
     "sync_flare:x.track: key 0 (row 5): expected an interpolation type from 0 to 3, found -1"},
    {"not a number", CheckAllTracks, WithKeys("flare:x", {{5, notANumber, hold}}),
     "sync_flare:x.track: key 0 (row 5): expected a finite value, found nan"},
    {"infinity", CheckAllTracks, WithKeys("flare:x", {{5, -infinity, hold}}),
     "sync_flare:x.track: key 0 (row 5): expected a finite value, found -inf"},
    {"infinity between keys", CheckAllTracks,
     WithKeys("flare:x", {{0, -3e38f, linear}, {8, 3e38f, hold}}),
     "sync_flare:x.track: key 0 (row 0): expected a step to the next key that a float can hold"},
    {"key after the end", CheckAllTracks, WithKeys("flare:x", {{3624, 1, hold}, {3625, 1, hold}}),
     "sync_flare:x.track: key 1 (row 3625): expected a row up to 3624, where the show ends"},
    {"photo past the table", CheckAllTracks,
     WithKeys("image:right", {{0, float(test::CountPhotos()), hold}}),
     "sync_image:right.track: key 0 (row 0): expected " + Below(test::CountPhotos()) + ", found "},
    {"photo past the table on the way", CheckAllTracks,
     // What is just below the end is allowed, but the step to it from -8388608 rounds up to the
     // end.
     WithKeys("image:right", {{0, -8388608.0f, linear},
                              {3000, std::nextafter(float(test::CountPhotos()), 0.0f), hold}}),
     "sync_image:right.track: key 0 (row 0): expected " + Below(test::CountPhotos()) +
         " up to the next key, found "},
    {"lyric past the table", CheckAllTracks,
     WithKeys("lyrics:num", {{0, float(test::CountLyrics()) + 0.5f, hold}}),
     "sync_lyrics:num.track: key 0 (row 0): expected " + Below(test::CountLyrics()) + ", found "},
    {"object 2", CheckAllTracks, WithKeys("object:num", {{0, 2, hold}}),
     "sync_object:num.track: key 0 (row 0): expected an index below 2 (or -1 for none), found "
     "2.0000"},
    {"a track that no one reads", CheckAllTracks, WithKeys("flare:sise", {{0, 2, hold}}),
     "sync_flare:sise.track: no one reads this track, nearest known name 'flare:size': remove the "
     "file, or give it the name of a track of the show"}};

const std::vector<cCase> objectCases = {
    {"missing object", CheckAll<check::CheckObjects>, [] { fs::remove("data/oh1.lwo"); },
     "data/oh1.lwo: missing"},
    {"no object", CheckAll<check::CheckObjects>,
     [] { WriteFile("data/oh2.lwo", "no object at all"); },
     "data/oh2.lwo: expected an LWO2 object (FORM, LWO2), found 'no o', 't at'"},
    {"cut-off object", CheckAll<check::CheckObjects>,
     [] {
         cObjectParts().Write();
         const std::string whole = test::ReadFile("data/oh2.lwo");
         WriteFile("data/oh2.lwo", whole.substr(0, whole.size() - 10));
     },
     "data/oh2.lwo: chunk 'SURF': expected its "},
    {"wrong form size", CheckAll<check::CheckObjects>,
     [] {
         cObjectParts().Write();
         WriteFile("data/oh2.lwo", test::ReadFile("data/oh2.lwo") + "  ");
     },
     "data/oh2.lwo: FORM: expected a size of "},
    {"not a triangle", CheckAll<check::CheckObjects>, WithObject([](cObjectParts &p) {
         p.mPoints = lwo2::Points({{0, 0}, {1, 0}, {1, 1}, {0, 1}});
         p.mFaces = lwo2::Faces({{0, 1, 2, 3}});
     }),
     "data/oh2.lwo: polygon 0: expected a triangle, found 4 corners"},
    {"4-byte index", CheckAll<check::CheckObjects>, WithObject([](cObjectParts &p) {
         p.mFaces = lwo2::Faces({{0, 1, 2}, {0xFF00, 1, 2}});
     }),
     "data/oh2.lwo: polygon 1: expected indices of 2 bytes, found one of 4"},
    {"corner that is no point", CheckAll<check::CheckObjects>, WithObject([](cObjectParts &p) {
         p.mFaces = lwo2::Faces({{0, 1, 3}});
     }),
     "data/oh2.lwo: polygon 0: expected an index below 3, found 3"},
    {"polygons that are no faces", CheckAll<check::CheckObjects>,
     WithObject([](cObjectParts &p) { p.mFaces = lwo2::Chunk("POLS", "PTCH"); }),
     "data/oh2.lwo: chunk POLS: expected polygons of type FACE, found 'PTCH'"},
    {"polygons that don't come out", CheckAll<check::CheckObjects>, WithObject([](cObjectParts &p) {
         p.mFaces = lwo2::Chunk("POLS", "FACE" + lwo2::U2(3) + lwo2::U2(0) + lwo2::U2(1));
     }),
     "data/oh2.lwo: chunk POLS: expected it to end behind a polygon, found its end in polygon 0"},
    {"points that don't come out", CheckAll<check::CheckObjects>,
     WithObject([](cObjectParts &p) { p.mPoints = lwo2::Chunk("PNTS", std::string(38, '\0')); }),
     "data/oh2.lwo: chunk PNTS: expected 12 bytes a point, found 38 bytes"},
    {"polygon tags that don't come out", CheckAll<check::CheckObjects>,
     WithObject([](cObjectParts &p) {
         p.mPolygonTags = lwo2::Chunk("PTAG", "SURF" + lwo2::U2(0) + lwo2::U2(0) + lwo2::U2(0));
     }),
     "data/oh2.lwo: chunk PTAG: expected its counts to come out at its end, found too few bytes"},
    {"a clip that is not the first", CheckAll<check::CheckObjects>, WithObject([](cObjectParts &p) {
         p.mClip += lwo2::Clip(2, "data/duck.png");
         p.mSurface = lwo2::Surface("skin", lwo2::ImagePart(2));
     }),
     "data/oh2.lwo: surface 'skin': expected the first clip (1), found 2"},
    {"a clip below its surface", CheckAll<check::CheckObjects>,
     WithObject([](cObjectParts &p) { std::swap(p.mClip, p.mSurface); }),
     "data/oh2.lwo: surface 'skin': expected its clip above it, found no clip there"},
    {"a clip that is no file", CheckAll<check::CheckObjects>,
     WithObject([](cObjectParts &p) { p.mClip = lwo2::Clip(1, "C:/x/data/none.png"); }),
     "data/oh2.lwo: chunk CLIP: expected an image file, found none at data/none.png"},
    {"a clip outside data", CheckAll<check::CheckObjects>,
     WithObject([](cObjectParts &p) { p.mClip = lwo2::Clip(1, "C:/x/tex9.png"); }),
     "data/oh2.lwo: chunk CLIP: expected a path with data/ in it, found 'C:/x/tex9.png'"},
    {"a clip that leads out of data", CheckAll<check::CheckObjects>,
     WithObject([](cObjectParts &p) {
         test::WriteFlatImage("out.png", 8, 8, 3);
         p.mClip = lwo2::Clip(1, "data/photos/../../out.png");
     }),
     "data/oh2.lwo: chunk CLIP: expected a path that stays in data/, found "
     "'data/photos/../../out.png'"},
    {"a clip of the wrong kind", CheckAll<check::CheckObjects>, WithObject([](cObjectParts &p) {
         test::WriteFlatImage("data/grey.png", 8, 8, 1);
         p.mClip = lwo2::Clip(1, "data/grey.png");
     }),
     "data/grey.png: texture of data/oh2.lwo: expected colour (3 components)"},
    {"surface not in the list", CheckAll<check::CheckObjects>,
     WithObject([](cObjectParts &p) { p.mSurface += lwo2::Surface("hide", ""); }),
     "data/oh2.lwo: surface 'hide': expected a surface of the list above (TAGS)"},
    {"tag that is no surface", CheckAll<check::CheckObjects>, WithObject([](cObjectParts &p) {
         p.mPolygonTags = lwo2::PolygonTags({{0, 1}});
     }),
     "data/oh2.lwo: chunk PTAG: expected a surface of the list above, found 1"},
    {"first polygon without a surface", CheckAll<check::CheckObjects>,
     WithObject([](cObjectParts &p) {
         p.mFaces = lwo2::Faces({{0, 1, 2}, {0, 1, 2}});
         p.mPolygonTags = lwo2::PolygonTags({{1, 0}});
     }),
     "data/oh2.lwo: polygon 0: expected a surface"},
    {"colour of another length", CheckAll<check::CheckObjects>, WithObject([](cObjectParts &p) {
         p.mSurface = lwo2::Surface("skin", lwo2::SubChunk("COLR", std::string(16, '\0')));
     }),
     "data/oh2.lwo: surface 'skin': expected a COLR of 14 bytes, as which it is read, found 16"},
    {"nothing in it", CheckAll<check::CheckObjects>,
     [] { WriteFile("data/oh2.lwo", lwo2::Form("")); },
     "data/oh2.lwo: expected points (PNTS), found none"}};

const std::vector<cCase> shaderCases = {
    {"missing vertex shader", CheckAll<check::CheckShaders>,
     [] { fs::remove("data/shaders/default.vs"); }, "data/shaders/default.vs: missing"},
    {"missing fragment shader", CheckAll<check::CheckShaders>,
     [] { fs::remove("data/shaders/noise.fs"); }, "data/shaders/noise.fs: missing"},
    {"vertex shader that does not compile", CheckAll<check::CheckShaders>,
     WithShader("default.vs", "void main() { gl_Position = nonsense; }"),
     "data/shaders/default.vs: does not compile: "},
    {"fragment shader that does not compile", CheckAll<check::CheckShaders>,
     WithShader("plasma.fs", "void main() { gl_FragColor = nonsense; }"),
     "data/shaders/plasma.fs: does not compile: "},
    {"program that does not link", CheckAll<check::CheckShaders>,
     WithShader("noise.fs", "vec4 color();\nvoid main() { gl_FragColor = color(); }"),
     "data/shaders/noise.fs: does not link: "}};

const std::string sine = "sine=frequency=440:duration=5:sample_rate=";

const std::vector<cCase> musicCases = {
    {"missing music", CheckAll<check::CheckMusic>, [] { fs::remove("data/waiting.mp3"); },
     "data/waiting.mp3: missing"},
    {"no music", CheckAll<check::CheckMusic>,
     [] {
         fs::remove("data/waiting.mp3");
         WriteFile("data/waiting.mp3", std::string(100'000, 'x'));
     },
     "data/waiting.mp3: can't be decoded: "},
    {"another rate", CheckAll<check::CheckMusic>, WithMusic({"-i", sine + "48000", "-ac", "2"}),
     "data/waiting.mp3: rate: expected 44100 frames a second, found 48000"},
    {"one channel", CheckAll<check::CheckMusic>, WithMusic({"-i", sine + "44100"}),
     "data/waiting.mp3: channels: expected 2, found 1"},
    {"short music", CheckAll<check::CheckMusic>, WithMusic({"-i", sine + "44100", "-ac", "2"}),
     "data/waiting.mp3: length: expected 205.9 s, to the show's last row, found 5."},
    {"clipping", CheckAll<check::CheckMusic>,
     WithMusic({"-i", sine + "44100", "-af", "volume=26dB", "-ac", "2", "-b:a", "320k"}),
     "data/waiting.mp3: samples: expected no clipping, found "},
    {"quiet music", CheckAll<check::CheckMusic>, WithMusic({"-i", sine + "44100", "-ac", "2"}),
     "data/waiting.mp3: loudness: expected -14 LUFS, give or take 1, found -22."},
    {"true peak", CheckAll<check::CheckMusic>,
     WithMusic({"-i", sine + "44100", "-af", "volume=20.6dB", "-ac", "2", "-b:a", "320k"}),
     "data/waiting.mp3: true peak: expected at most -1.0 dBTP, found -0."}};

const std::vector<cCase> lyricCases = {
    {"lyric on the screen for a moment", CheckAllLyrics,
     WithKeys("lyrics:num", {{0, 3, hold}, {17, -1, hold}}),
     "data/lyrics/lyrics003: at 0:00: expected it on the screen for 1.0 s, half opaque or more, "
     "found 0.97 s"},
    {"lyric that is hardly there", CheckAllLyrics,
     [] {
         WriteTrack("lyrics:num", {{0, -1, hold}, {176, 4, hold}, {352, -1, hold}});
         WriteTrack("lyrics:fade", {{176, 1, hold}, {180, 0.4f, hold}});
     },
     "data/lyrics/lyrics004: at 0:10: expected it on the screen for 1.0 s"},
    {"letters like their backing", CheckAllLyrics,
     [] { test::WriteLyricImage("data/lyrics/lyrics005", 150, 90, 255); },
     "data/lyrics/lyrics005: expected a contrast of at least 4.5 to 1 over black and over white, "
     "found 2."},
    {"letters without a backing", CheckAllLyrics,
     [] { test::WriteLyricImage("data/lyrics/lyrics005", 255, 0, 0); },
     "data/lyrics/lyrics005: expected a contrast of at least 4.5 to 1 over black and over white, "
     "found 1.0"},
    {"lyric without alpha", CheckAllLyrics,
     [] { test::WriteFlatImage("data/lyrics/lyrics005", 8, 8, 3); },
     "data/lyrics/lyrics005: expected an alpha channel (4 components), found 3"}};
} // namespace

TEST_P(Injected, FaultIsNamed)
{
    GetParam().mInject();
    const check::cStage stage;
    check::cFindings findings;
    GetParam().mCheck(findings);
    EXPECT_THAT(Lines(findings.mFaults), Contains(StartsWith(GetParam().mFault)));
}

INSTANTIATE_TEST_SUITE_P(Files, Injected, testing::ValuesIn(fileCases));
INSTANTIATE_TEST_SUITE_P(Tracks, Injected, testing::ValuesIn(trackCases));
INSTANTIATE_TEST_SUITE_P(Objects, Injected, testing::ValuesIn(objectCases));
INSTANTIATE_TEST_SUITE_P(Shaders, Injected, testing::ValuesIn(shaderCases));
INSTANTIATE_TEST_SUITE_P(Music, Injected, testing::ValuesIn(musicCases));
INSTANTIATE_TEST_SUITE_P(Lyrics, Injected, testing::ValuesIn(lyricCases));

// The show plays with these; its maker should know.
TEST(Warnings, AreToldApartFromFaults)
{
    const test::cTemporaryFolder folder;
    test::MakeGoodShow();
    WriteTrack("image:left", {{0, 0.5f, linear}, {8, 3, hold}});
    WriteTrack("flare:x", {});
    const check::cStage stage;
    check::cFindings findings;
    CheckAllTracks(findings);
    EXPECT_THAT(Lines(findings.mFaults), ElementsAre());
    EXPECT_THAT(
        Lines(findings.mWarnings),
        ElementsAre("sync_flare:x.track: has no keys: it is 0 everywhere",
                    "sync_image:left.track: key 0 (row 0): picks entry 0 by the fraction 0.5000",
                    "sync_image:left.track: key 0 (row 0): moves through other entries on its way "
                    "to the next key: hold would not"));
}

// The driver's words stand in the report, on its one line, and nowhere else.
TEST(Shaders, TheDriversLogIsPartOfTheFault)
{
    const test::cTemporaryFolder folder;
    test::MakeGoodShow();
    WriteFile("data/shaders/noise.fs", "void main() { gl_FragColor = nonsense; }");
    const check::cStage stage;
    check::cFindings findings;
    testing::internal::CaptureStdout();
    check::CheckShaders(test::GetShow(), findings);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    ASSERT_EQ(findings.mFaults.size(), 1u);
    EXPECT_THAT(findings.mFaults[0].ToLine(), testing::HasSubstr("nonsense"));
}

// Every prefix of an object, and the object with any one byte changed: an answer, never a crash.
TEST(Objects, AnyBytesAreAnswered)
{
    const test::cTemporaryFolder folder;
    test::MakeGoodShow();
    const std::string good = test::ReadFile("data/oh1.lwo");
    const check::cStage stage;
    for (size_t i = 0; i < 2 * good.size(); i++) {
        std::string bytes = i < good.size() ? good.substr(0, i) : good;
        if (i >= good.size())
            bytes[i - good.size()] = char(~bytes[i - good.size()]);
        WriteFile("data/oh1.lwo", bytes);
        check::cFindings findings;
        check::CheckObject("data/oh1.lwo", findings);
        if (i < good.size()) {
            EXPECT_FALSE(findings.mFaults.empty()) << i;
        }
    }
}
