#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace faults
{
/// What can be wrong with one file.
struct cFault
{
    enum eKind
    {
        Missing,
        Empty,
        Cut,        ///< ends at `mPlace` of 21 equal parts of its length
        OtherKind,  ///< holds a picture where no picture belongs, words where one does
        Folder,     ///< is a folder
        Unreadable, ///< its mode lets nobody read it; run what meets it test::WithoutPrivileges
    };
    eKind mKind;
    int mPlace = 0;

    std::string Name() const;
};

/// All of them, every cut included; or, as the tests run by default, one cut. VYR_ALL_FAULTS in the
/// environment asks for all.
std::vector<cFault> List();

bool WantsAll(); ///< VYR_ALL_FAULTS is set

/// A file with a fault, as long as this lives; good again afterwards.
class cFaultyFile
{
public:
    cFaultyFile(const std::filesystem::path &path, const cFault &fault);
    ~cFaultyFile();
    cFaultyFile(const cFaultyFile &) = delete;
    cFaultyFile &operator=(const cFaultyFile &) = delete;

private:
    std::filesystem::path mPath;
    std::string mGood;
};

/// The fixture show with every layer on: photos 0, 1 and 2, lyric 0, object 0, the tunnel, the logo
/// and both shaders.
void WriteShowWithEverythingOn(const std::filesystem::path &folder);

/// A track file of one key that holds `value`.
std::string TrackOf(float value);
} // namespace faults
