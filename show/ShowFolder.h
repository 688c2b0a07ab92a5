#pragma once

#include "show/Show.h"
#include "sync/track.h"

#include <filesystem>
#include <memory>
#include <stdexcept>

struct sync_device;

namespace vyr
{
/// Why a show cannot be opened, loaded or drawn: one line that names the file.
class cShowError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// What a show's folder holds beside the files of its description: its drawing, and the track
/// files.
inline constexpr const char *kShowLibrary = "show.so";
inline constexpr const char *kTrackPrefix = "sync"; ///< sync_NAME.track

/// "sync_tunnel:pos.track"
std::string GetTrackFile(const std::string &track);

/// Whether `folder` looks like a show's: it has a show.so. Runs nothing.
bool IsShowFolder(const std::filesystem::path &folder);

/// Why this program could not open the show.so of `folder`, judged by its bytes alone: missing, not
/// a library, for another kind of machine. Empty if no reason is found. Runs nothing.
std::string FindLibraryFault(const std::filesystem::path &folder);

/// A show that is open. Opening runs code of the folder, with all the rights of this program: open
/// only shows that you would run as a program.
class cShowFolder
{
public:
    /// Opens the show.so of `folder`, makes its show and asks for its description, which is checked
    /// (FindFaults). Throws cShowError.
    explicit cShowFolder(const std::filesystem::path &folder);
    ~cShowFolder(); ///< frees tracks, show and library, in this order; needs no context
    cShowFolder(const cShowFolder &) = delete;
    cShowFolder &operator=(const cShowFolder &) = delete;

    const cShowDescription &GetDescription() const { return mDescription; }

    // From here on the working directory is the show's folder.

    /// Reads the tracks, or reads them again. Missing and damaged files are not reported
    /// (vyr-check does that); what can be read is. Throws cShowError when memory is short.
    void LoadTracks();

    /// The track at place `track` of the description's list, after LoadTracks.
    const sync_track &GetTrack(int track) const { return *mShow->GetTrack(track); }
    /// The track of this name; null when the show has none.
    const sync_track *FindTrack(const std::string &name) const;

    /// The track at place `track` has these keys from now on, ascending by row, one a row: for who
    /// changes a show while it is drawn. After LoadTracks, which forgets them. Pointers to the
    /// track stay good. Throws cShowError when there is no memory.
    void SetKeys(int track, const std::vector<sync_key> &keys);

    /// The show's own calls; an exception of theirs becomes a cShowError that says where it was
    /// thrown.
    void Load();
    void Draw(double row, double seconds);
    bool ReachesLater(double row) const { return mShow->ReachesLater(row); }

private:
    struct cCloser
    {
        void operator()(void *library) const;
    };
    struct cTrackCloser
    {
        void operator()(sync_device *device) const;
    };

    std::string mLibraryPath; ///< for messages
    std::unique_ptr<void, cCloser> mLibrary;
    std::unique_ptr<cShow> mShow;
    std::unique_ptr<sync_device, cTrackCloser> mDevice;
    cShowDescription mDescription;
};
} // namespace vyr
