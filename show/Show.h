#pragma once

#include <string>
#include <vector>

struct sync_track;

namespace vyr
{
/// What a player and the tools need to know about a show. Paths are relative to the show's folder.
struct cShowDescription
{
    /// A track that picks one of several files by number, counted from 0: its value is truncated
    /// toward zero, and below 0 it picks none. Files are pictures or objects (.lwo).
    struct cChoice
    {
        std::string mTrack;
        std::vector<std::string> mFiles;
    };

    std::string mTitle;
    std::string mMusic;        ///< an MP3 file
    double mRowsPerSecond = 0; ///< beats a minute / 60 * mRowsPerBeat
    int mRowsPerBeat = 8, mBeatsPerBar = 4;
    double mLastRow = 0;              ///< the show ends there; above 0
    std::vector<std::string> mTracks; ///< Sample's index is the place in this list
    /// Required files beside those of the choices: shaders (.vs, .fs), pictures, objects.
    std::vector<std::string> mFiles;
    std::vector<cChoice> mChoices;
};

/// A show: derive from this, implement the three calls, and write VYR_SHOW(cMine) once in the
/// show's sources. All calls come from one thread. `Load` and `Draw` may throw std::exception: the
/// program that plays or records the show then ends with one line that has its text.
class cShow
{
public:
    virtual ~cShow();

    /// The first call, and the only one that needs no OpenGL context and no files. Every call
    /// returns the same.
    virtual cShowDescription Describe() const = 0;

    /// Once, before the first frame: shaders, pictures, objects. The working directory is the
    /// show's folder, the context is current, the renderer and the texture manager exist
    /// (tSingleton), and the tracks can be sampled.
    virtual void Load() = 0;

    /// One frame, into whatever framebuffer is bound, from BeginScene to EndScene; the caller
    /// presents it. A show that draws into targets of its own ends in framebuffer 0
    /// (EndUpdateFBO): a recorder uses that as its picture too. `row` is the position in the
    /// music, 0 to mLastRow, with its fraction. `seconds` is for motion that follows no track: the
    /// same position in seconds, but for a player that runs such motion on a timer of its own.
    /// Blending is on at the first frame; from then on the OpenGL state is what the frame before
    /// left.
    virtual void Draw(double row, double seconds) = 0;

    /// Whether the frame at `row` leaves something to later frames beside the OpenGL state: a
    /// trail, a counter. A recorder that begins in the middle first draws the last such frame
    /// before its beginning, and then the one just before it. Needs the tracks, no context.
    virtual bool ReachesLater(double row) const;

protected:
    cShow();
    cShow(const cShow &) = delete;
    cShow &operator=(const cShow &) = delete;

    /// The value at `row` of the track at place `track` of the description's list. A track without
    /// a file is 0 everywhere. Not before `Load`, and not in `Describe`.
    float Sample(int track, double row) const { return SampleTrack(GetTrack(track), row); }

    /// The track itself, for a show that keeps its own table. It lives as long as the show.
    const sync_track *GetTrack(int track) const;

private:
    friend class cShowFolder;
    static float SampleTrack(const sync_track *track, double row);

    std::vector<const sync_track *> mLoadedTracks;
};

/// The version of VYR_SHOW and cShow. It changes when either does; a show of another version is
/// refused and has to be rebuilt.
inline constexpr int kShowInterface = 1;

/// The faults of a description, one sentence each: no tracks, a tempo of 0, a choice for a track
/// that is not there ... Empty for a good one.
std::vector<std::string> FindFaults(const cShowDescription &description);
} // namespace vyr

/// Makes `Class` the show of the library that it is linked into. Twice in one library does not
/// link. Where shows are linked into a program, that program calls vyr_create_show itself.
#define VYR_SHOW(Class)                                                                            \
    extern "C" {                                                                                   \
    extern const int vyr_show_interface;                                                           \
    const int vyr_show_interface = vyr::kShowInterface;                                            \
    vyr::cShow *vyr_create_show();                                                                 \
    vyr::cShow *vyr_create_show() { return new Class; }                                            \
    }                                                                                              \
    static_assert(true)
