#include "tests/faults/Faults.h"

#include "demo/Tables.h"
#include "tests/support/FixtureShow.h"
#include "tests/support/TestFiles.h"

#include <cstdlib>
#include <cstring>

namespace fs = std::filesystem;

namespace faults
{
namespace
{
const int cutPlaces = 20;

const char picture[] = "\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1";
const char words[] = "the sign says seven minutes\n";

std::string OtherKindThan(const std::string &good)
{
    const bool isPicture = good.compare(1, 3, "PNG") == 0;
    return isPicture ? words : std::string(picture, sizeof picture - 1);
}
} // namespace

std::string cFault::Name() const
{
    const char *names[] = {"missing", "empty", "cut at ", "other kind", "a folder", "unreadable"};
    return names[mKind] + (mKind == Cut ? std::to_string(mPlace) + "/21" : std::string());
}

bool WantsAll() { return std::getenv("VYR_ALL_FAULTS"); }

std::vector<cFault> List()
{
    std::vector<cFault> list = {
        {cFault::Missing}, {cFault::Empty}, {cFault::OtherKind}, {cFault::Folder}};
    for (int place = 1; place <= cutPlaces; place++)
        if (WantsAll() || place == cutPlaces / 2)
            list.push_back({cFault::Cut, place});
    list.push_back({cFault::Unreadable});
    return list;
}

cFaultyFile::cFaultyFile(const fs::path &path, const cFault &fault)
    : mPath(path), mGood(test::ReadFile(path))
{
    fs::remove(path);
    if (fault.mKind == cFault::Folder)
        fs::create_directory(path);
    if (fault.mKind == cFault::Empty)
        test::WriteFile(path, "");
    if (fault.mKind == cFault::Cut)
        test::WriteFile(path, mGood.substr(0, mGood.size() * size_t(fault.mPlace) / 21));
    if (fault.mKind == cFault::OtherKind)
        test::WriteFile(path, OtherKindThan(mGood));
    if (fault.mKind == cFault::Unreadable) {
        test::WriteFile(path, mGood);
        fs::permissions(path, fs::perms::none);
    }
}

cFaultyFile::~cFaultyFile()
{
    std::error_code ignored;
    fs::remove_all(mPath, ignored);
    test::WriteFile(mPath, mGood);
}

std::string TrackOf(float value)
{
    std::string bytes("\1\0\0\0\0\0\0\0\0\0\0\0", 12);
    char number[4];
    std::memcpy(number, &value, sizeof number);
    bytes.append(number, sizeof number);
    bytes.push_back(0);
    return bytes;
}

void WriteShowWithEverythingOn(const fs::path &folder)
{
    test::WriteFixtureShow(folder, 3.0);
    const std::pair<demo::eTrack, float> values[] = {
        {demo::FADE_BG_WHITE, 0.0f},  {demo::FADE_PLASMA, 1.0f},   {demo::FADE_FG_NOISE, 0.5f},
        {demo::TUNNEL_TEXTURE, 0.0f}, {demo::IMAGE_LEFT, 0.0f},    {demo::IMAGE_RIGHT, 1.0f},
        {demo::IMAGE_CENTER, 2.0f},   {demo::LYRICS_NUM, 0.0f},    {demo::LYRICS_FADE, 1.0f},
        {demo::OBJECT_NUM, 0.0f},     {demo::IMAGE_ZEMLOGO, 1.0f}, {demo::OBJECT_Z, -5.0f},
    };
    for (const auto &[track, value] : values)
        test::WriteFile(folder / ("sync_" + std::string(demo::TrackName(track)) + ".track"),
                        TrackOf(value));
}
} // namespace faults
