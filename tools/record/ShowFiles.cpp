#include "tools/record/ShowFiles.h"

#include "base/Truncate.h"
#include "tools/record/Failure.h"
#include "tools/support/Faults.h"
#include "tools/support/Files.h"

#include <epoxy/gl.h>

#include <climits>
#include <fstream>
#include <initializer_list>
#include <iostream>
#include <memory>

namespace fs = std::filesystem;

namespace record
{
namespace
{
const size_t trackHeaderBytes = 8;
const size_t keyBytes = 9;
const size_t maximumTrackBytes = 64 << 20;

bool HasShow(const fs::path &folder)
{
    std::error_code ignored;
    return fs::is_directory(folder / "data", ignored);
}

std::string TrackFile(demo::eTrack track)
{
    return std::string(demo::kTrackPrefix) + "_" + demo::TrackName(track) + ".track";
}

void CheckReadable(const std::string &path)
{
    std::error_code error;
    if (!fs::is_regular_file(path, error))
        throw cFailure(path + ": the show needs this file, and it is not there");
    if (!std::ifstream(path))
        throw cFailure(path + ": can't be read");
}

int32_t ReadInteger(const std::string &bytes, size_t at)
{
    uint32_t value = 0;
    for (size_t i = 0; i < 4; i++)
        value |= uint32_t(uint8_t(bytes[at + i])) << (8 * i);
    return int32_t(value);
}

const char *FindTrackFault(const std::string &bytes)
{
    if (bytes.size() < trackHeaderBytes)
        return "cut off in the key count";
    const int32_t count = ReadInteger(bytes, 0);
    if (count < 0)
        return "a negative key count";
    if (bytes.size() < trackHeaderBytes + keyBytes * size_t(count))
        return "fewer keys than it says";
    for (int32_t i = 0; i < count; i++) {
        const size_t at = trackHeaderBytes + keyBytes * size_t(i);
        if (uint8_t(bytes[at + keyBytes - 1]) > 3)
            return "a key with an unknown interpolation";
        if (i > 0 && ReadInteger(bytes, at) < ReadInteger(bytes, at - keyBytes))
            return "keys out of order";
    }
    return nullptr;
}

void CheckTrackFile(const std::string &path)
{
    std::error_code ignored;
    if (!fs::exists(path, ignored))
        return;
    std::string bytes, error;
    if (!tools::ReadWhole(path, maximumTrackBytes, bytes, error))
        throw cFailure(path + ": " + error);
    if (const char *fault = FindTrackFault(bytes))
        throw cFailure(path + ": " + fault);
}

// The show plays without them. Whoever made it hardly meant that.
void WarnOfMissingTracks()
{
    std::string missing;
    for (int i = 0; i < demo::TRACK_COUNT; i++) {
        const std::string file = TrackFile(demo::eTrack(i));
        std::error_code ignored;
        if (!fs::exists(file, ignored))
            missing += (missing.empty() ? "" : ", ") + file;
    }
    if (!missing.empty())
        std::cerr << "vyr-record: not there, so 0 throughout: " << missing << '\n';
}

void CheckProgram(unsigned int program, const char *path)
{
    GLint isLinked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
    if (!isLinked)
        throw cFailure(std::string(path) + ": does not compile or link with default.vs");
}

// Reads the object once more than the show does: there, one that can't be read is the end.
void CheckObject(const char *path)
{
    const std::unique_ptr<vyr::c3DObject> object(vyr::c3DObject::CreateFromLWO2(path));
    if (!object)
        throw cFailure(std::string(path) + ": not an LWO2 object that can be read");
}

// What `track` chooses at `row` among `count`; negative for nothing.
int GetIndex(const demo::cShow &show, demo::eTrack track, double row, int count)
{
    const int index = vyr::TruncateToInt(double(sync_get_val(show.mTracks[size_t(track)], row)));
    if (index >= count)
        throw cFailure(TrackFile(track) + ": " + std::to_string(index) + " at row " +
                       std::to_string(row) + ", where " + std::to_string(count - 1) +
                       " is the last");
    return index;
}

// `track` puts it there; none for what is always drawn.
void CheckPicture(int texture, const std::string &path, double row, const std::string &track = "")
{
    if (texture < 0)
        throw cFailure(path + ": row " + std::to_string(row) + " shows it" +
                       (track.empty() ? "" : ", picked by " + track) +
                       ", and it is no picture that can be read");
}

void CheckPhoto(const demo::cShow &show, demo::eTrack track, double row)
{
    const int index = GetIndex(show, track, row, demo::kPhotoCount);
    if (index >= 0)
        CheckPicture(show.mAssets.mPhotos[size_t(index)], show.mAssets.mPhotoNames[size_t(index)],
                     row, TrackFile(track));
}

void CheckLyric(const demo::cShow &show, double row)
{
    const int index = GetIndex(show, demo::LYRICS_NUM, row, demo::kLyricCount);
    if (index >= 0)
        CheckPicture(show.mAssets.mLyrics[size_t(index)], demo::LyricName(index), row,
                     TrackFile(demo::LYRICS_NUM));
}
} // namespace

fs::path FindShow(const std::string &asked)
{
    if (!asked.empty() && !HasShow(asked))
        throw cFailure(asked + ": no show there: it has no data folder");
    if (!asked.empty())
        return asked;
    std::error_code ignored;
    fs::path own = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    if (HasShow(own))
        return own;
    fs::path current = fs::current_path(ignored);
    if (!HasShow(current))
        throw cFailure("no show in " + own.string() + " or " + current.string() +
                       ": neither has a data folder; name the show's with --show DIR");
    return current;
}

void CheckShowFiles()
{
    for (int i = 0; i < demo::TRACK_COUNT; i++)
        CheckTrackFile(TrackFile(demo::eTrack(i)));
    WarnOfMissingTracks();
    for (const char *path :
         {demo::kVertexShaderFile, demo::kNoiseShaderFile, demo::kPlasmaShaderFile})
        CheckReadable(path);
    for (const char *path : {demo::kObject1File, demo::kObject2File}) {
        CheckReadable(path);
        CheckObject(path);
    }
}

void CheckPrograms(const demo::cAssets &assets)
{
    CheckProgram(assets.mNoiseProgram, demo::kNoiseShaderFile);
    CheckProgram(assets.mPlasmaProgram, demo::kPlasmaShaderFile);
}

void CheckRow(const demo::cShow &show, double row)
{
    CheckPhoto(show, demo::IMAGE_LEFT, row);
    CheckPhoto(show, demo::IMAGE_RIGHT, row);
    CheckPhoto(show, demo::IMAGE_CENTER, row);
    CheckLyric(show, row);
    GetIndex(show, demo::OBJECT_NUM, row, 2);
    if (GetIndex(show, demo::TUNNEL_TEXTURE, row, INT_MAX) >= 0)
        CheckPicture(show.mAssets.mTunnelTexture, demo::kTunnelFile, row,
                     TrackFile(demo::TUNNEL_TEXTURE));
    if (sync_get_val(show.mTracks[demo::IMAGE_ZEMLOGO], row) > 0.0f)
        CheckPicture(show.mAssets.mLogo, demo::kLogoFile, row, TrackFile(demo::IMAGE_ZEMLOGO));
    CheckPicture(show.mAssets.mVignette, demo::kVignetteFile, row); // always drawn
}
} // namespace record
