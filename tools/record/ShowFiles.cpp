#include "tools/record/ShowFiles.h"

#include "base/Truncate.h"
#include "engine/3DObject.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "sync/track.h"
#include "tools/record/Failure.h"
#include "tools/support/Faults.h"
#include "tools/support/Files.h"
#include "tools/support/ShaderSource.h"

#include <epoxy/gl.h>

#include <fstream>
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

// The show plays without them, but they are hardly left out on purpose.
void WarnOfMissingTracks(const std::vector<std::string> &tracks)
{
    std::string missing;
    for (const std::string &track : tracks) {
        const std::string file = vyr::GetTrackFile(track);
        std::error_code ignored;
        if (!fs::exists(file, ignored))
            missing += (missing.empty() ? "" : ", ") + file;
    }
    if (!missing.empty())
        std::cerr << "vyr-record: not there, so 0 throughout: " << missing << '\n';
}

// Reads the object once more than the show does: there, one that can't be read is the end.
bool IsReadableObject(const std::string &path)
{
    const std::unique_ptr<vyr::c3DObject> object(vyr::c3DObject::CreateFromLWO2(path));
    return object != nullptr;
}

void CheckObject(const std::string &path)
{
    CheckReadable(path);
    if (!IsReadableObject(path))
        throw cFailure(path + ": not an LWO2 object that can be read");
}

// Of a list that may name anything: by its extension.
bool IsPicture(const std::string &path)
{
    const std::string extension = fs::path(path).extension().string();
    return extension == ".png" || extension == ".jpg" || extension == ".jpeg" ||
           extension == ".tga" || extension == ".bmp";
}

// As a rule the show has loaded it, and the manager finds it. Where it has not, loading it here
// leaves the texture bound that was.
bool IsReadablePicture(const std::string &path)
{
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    const int id = vyr::tSingleton<vyr::cTextureManager>::GetSingleton().LoadTexture(path, false);
    glBindTexture(GL_TEXTURE_2D, GLuint(bound));
    return id >= 0;
}

std::string DescribeUnlinked(const tools::cShaderFiles &files)
{
    return files.mFragment + ": does not compile or link with " +
           fs::path(files.mVertex).filename().string();
}
// Programs have the smallest free numbers of the context, so a look at the first few thousand finds
// all that a show has made.
void CheckPrograms(const vyr::cShowDescription &description)
{
    const GLuint end = 4096;
    for (GLuint program = 1; program < end; program++) {
        GLint isLinked = GL_TRUE;
        if (glIsProgram(program))
            glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
        if (!isLinked)
            throw cFailure(DescribeUnlinked(tools::FindShaderFiles(program, description)));
    }
}

// Of a folder that IsShowFolder says no to.
std::string DescribeNoShow(const std::string &folder)
{
    std::error_code failure;
    if (!fs::exists(fs::path(folder) / vyr::kShowLibrary, failure) && failure)
        return folder + ": " + failure.message();
    return folder + ": no show there: it has no " + vyr::kShowLibrary;
}
} // namespace

fs::path FindShow(const std::string &asked)
{
    if (!asked.empty() && !vyr::IsShowFolder(asked))
        throw cFailure(DescribeNoShow(asked));
    if (!asked.empty())
        return asked;
    std::error_code ignored;
    fs::path own = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    if (vyr::IsShowFolder(own))
        return own;
    fs::path current = fs::current_path(ignored);
    if (!vyr::IsShowFolder(current))
        throw cFailure("no show in " + own.string() + " or " + current.string() +
                       ": neither has a " + vyr::kShowLibrary +
                       "; name the show's with --show DIR");
    return current;
}

void CheckShowFiles(const vyr::cShowDescription &description)
{
    for (const std::string &track : description.mTracks)
        CheckTrackFile(vyr::GetTrackFile(track));
    WarnOfMissingTracks(description.mTracks);
    for (const std::string &file : description.mFiles)
        if (tools::IsObject(file))
            CheckObject(file);
        else
            CheckReadable(file);
    for (const auto &choice : description.mChoices)
        for (const std::string &file : choice.mFiles)
            if (tools::IsObject(file))
                CheckObject(file);
}

void CheckLoaded(const vyr::cShowDescription &description)
{
    CheckPrograms(description);
    for (const std::string &file : description.mFiles)
        if (IsPicture(file) && !IsReadablePicture(file))
            throw cFailure(file + ": no picture that can be read");
}

void cRowCheck::Check(double row)
{
    const vyr::cShowDescription &description = mShow.GetDescription();
    for (const auto &choice : description.mChoices)
        CheckChoice(choice, row);
}

void cRowCheck::CheckChoice(const vyr::cShowDescription::cChoice &choice, double row)
{
    const sync_track &track = *mShow.FindTrack(choice.mTrack);
    const int index = vyr::TruncateToInt(double(sync_get_val(&track, row)));
    const std::string trackFile = vyr::GetTrackFile(choice.mTrack);
    if (index < 0)
        return;
    if (size_t(index) >= choice.mFiles.size())
        throw cFailure(trackFile + ": " + std::to_string(index) + " at row " + std::to_string(row) +
                       ", where " + std::to_string(choice.mFiles.size() - 1) + " is the last");
    const std::string &file = choice.mFiles[size_t(index)];
    const auto found = mIsUsable.find(file);
    const bool isUsable = found != mIsUsable.end() ? found->second
                          : tools::IsObject(file)  ? true // checked before it was loaded
                                                   : IsReadablePicture(file);
    mIsUsable[file] = isUsable;
    if (!isUsable)
        throw cFailure(file + ": row " + std::to_string(row) + " shows it, picked by " + trackFile +
                       ", and it is no picture that can be read");
}
} // namespace record
