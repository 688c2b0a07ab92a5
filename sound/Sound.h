#pragma once

/// Plays the show's music and reports how much of it has been heard.
///
/// These are the calls, result codes and numbers of the FMOD Ex interface, version 4.42, as far as
/// the show uses them, implemented with OpenAL Soft (output) and libmpg123 (decoding). Names are
/// that interface's own.
///
/// All calls belong to one thread. A handle stays safe to call after it was released, or its system
/// was: it answers FMOD_ERR_INVALID_HANDLE. Null where a result or a sound is expected answers
/// FMOD_ERR_INVALID_PARAM, a call before `init` FMOD_ERR_UNINITIALIZED.
///
/// Where there is no sound device, and where it disappears, the show is silent and its clock runs
/// on at the true rate. One line on standard error reports it; no call fails.

enum FMOD_RESULT : int
{
    FMOD_OK,
    FMOD_ERR_ALREADYLOCKED,
    FMOD_ERR_BADCOMMAND,
    FMOD_ERR_CDDA_DRIVERS,
    FMOD_ERR_CDDA_INIT,
    FMOD_ERR_CDDA_INVALID_DEVICE,
    FMOD_ERR_CDDA_NOAUDIO,
    FMOD_ERR_CDDA_NODEVICES,
    FMOD_ERR_CDDA_NODISC,
    FMOD_ERR_CDDA_READ,
    FMOD_ERR_CHANNEL_ALLOC,
    FMOD_ERR_CHANNEL_STOLEN,
    FMOD_ERR_COM,
    FMOD_ERR_DMA,
    FMOD_ERR_DSP_CONNECTION,
    FMOD_ERR_DSP_FORMAT,
    FMOD_ERR_DSP_NOTFOUND,
    FMOD_ERR_DSP_RUNNING,
    FMOD_ERR_DSP_TOOMANYCONNECTIONS,
    FMOD_ERR_FILE_BAD,
    FMOD_ERR_FILE_COULDNOTSEEK,
    FMOD_ERR_FILE_DISKEJECTED,
    FMOD_ERR_FILE_EOF,
    FMOD_ERR_FILE_NOTFOUND,
    FMOD_ERR_FILE_UNWANTED,
    FMOD_ERR_FORMAT,
    FMOD_ERR_HTTP,
    FMOD_ERR_HTTP_ACCESS,
    FMOD_ERR_HTTP_PROXY_AUTH,
    FMOD_ERR_HTTP_SERVER_ERROR,
    FMOD_ERR_HTTP_TIMEOUT,
    FMOD_ERR_INITIALIZATION,
    FMOD_ERR_INITIALIZED,
    FMOD_ERR_INTERNAL,
    FMOD_ERR_INVALID_ADDRESS,
    FMOD_ERR_INVALID_FLOAT,
    FMOD_ERR_INVALID_HANDLE,
    FMOD_ERR_INVALID_PARAM,
    FMOD_ERR_INVALID_POSITION,
    FMOD_ERR_INVALID_SPEAKER,
    FMOD_ERR_INVALID_SYNCPOINT,
    FMOD_ERR_INVALID_VECTOR,
    FMOD_ERR_MAXAUDIBLE,
    FMOD_ERR_MEMORY,
    FMOD_ERR_MEMORY_CANTPOINT,
    FMOD_ERR_MEMORY_SRAM,
    FMOD_ERR_NEEDS2D,
    FMOD_ERR_NEEDS3D,
    FMOD_ERR_NEEDSHARDWARE,
    FMOD_ERR_NEEDSSOFTWARE,
    FMOD_ERR_NET_CONNECT,
    FMOD_ERR_NET_SOCKET_ERROR,
    FMOD_ERR_NET_URL,
    FMOD_ERR_NET_WOULD_BLOCK,
    FMOD_ERR_NOTREADY,
    FMOD_ERR_OUTPUT_ALLOCATED,
    FMOD_ERR_OUTPUT_CREATEBUFFER,
    FMOD_ERR_OUTPUT_DRIVERCALL,
    FMOD_ERR_OUTPUT_ENUMERATION,
    FMOD_ERR_OUTPUT_FORMAT,
    FMOD_ERR_OUTPUT_INIT,
    FMOD_ERR_OUTPUT_NOHARDWARE,
    FMOD_ERR_OUTPUT_NOSOFTWARE,
    FMOD_ERR_PAN,
    FMOD_ERR_PLUGIN,
    FMOD_ERR_PLUGIN_INSTANCES,
    FMOD_ERR_PLUGIN_MISSING,
    FMOD_ERR_PLUGIN_RESOURCE,
    FMOD_ERR_PRELOADED,
    FMOD_ERR_PROGRAMMERSOUND,
    FMOD_ERR_RECORD,
    FMOD_ERR_REVERB_INSTANCE,
    FMOD_ERR_SUBSOUND_ALLOCATED,
    FMOD_ERR_SUBSOUND_CANTMOVE,
    FMOD_ERR_SUBSOUND_MODE,
    FMOD_ERR_SUBSOUNDS,
    FMOD_ERR_TAGNOTFOUND,
    FMOD_ERR_TOOMANYCHANNELS,
    FMOD_ERR_UNIMPLEMENTED,
    FMOD_ERR_UNINITIALIZED,
    FMOD_ERR_UNSUPPORTED,
    FMOD_ERR_UPDATE,
    FMOD_ERR_VERSION,
    FMOD_ERR_EVENT_FAILED,
    FMOD_ERR_EVENT_INFOONLY,
    FMOD_ERR_EVENT_INTERNAL,
    FMOD_ERR_EVENT_MAXSTREAMS,
    FMOD_ERR_EVENT_MISMATCH,
    FMOD_ERR_EVENT_NAMECONFLICT,
    FMOD_ERR_EVENT_NOTFOUND,
    FMOD_ERR_EVENT_NEEDSSIMPLE,
    FMOD_ERR_EVENT_GUIDCONFLICT,
    FMOD_ERR_EVENT_ALREADY_LOADED,
    FMOD_ERR_MUSIC_UNINITIALIZED,
    FMOD_ERR_MUSIC_NOTFOUND,
    FMOD_ERR_MUSIC_NOCALLBACK,
};

using FMOD_INITFLAGS = unsigned int;
using FMOD_MODE = unsigned int;
using FMOD_TIMEUNIT = unsigned int;

constexpr unsigned int FMOD_VERSION = 0x00044206;

constexpr FMOD_INITFLAGS FMOD_INIT_NORMAL = 0;

constexpr FMOD_MODE FMOD_2D = 0x8;
constexpr FMOD_MODE FMOD_SOFTWARE = 0x40;
constexpr FMOD_MODE FMOD_CREATESTREAM = 0x80;
constexpr FMOD_MODE FMOD_ACCURATETIME = 0x4000;

constexpr FMOD_TIMEUNIT FMOD_TIMEUNIT_MS = 1;       ///< milliseconds
constexpr FMOD_TIMEUNIT FMOD_TIMEUNIT_PCM = 2;      ///< frames of the file: one sample a channel
constexpr FMOD_TIMEUNIT FMOD_TIMEUNIT_PCMBYTES = 4; ///< frames times 4: 16 bits, two channels

enum FMOD_CHANNELINDEX : int
{
    FMOD_CHANNEL_FREE = -1
};

struct FMOD_CREATESOUNDEXINFO; ///< extended information; there is none here

namespace FMOD
{
class Channel;
class Sound;

/// The output and everything that plays on it.
class System
{
public:
    /// FMOD_VERSION. Needs no `init`.
    FMOD_RESULT getVersion(unsigned int *version);

    /// Opens the sound device. `maxchannels` (1 to 4093) sounds play at a time; `flags` is
    /// FMOD_INIT_NORMAL; `extradriverdata` is not read. A second call: FMOD_ERR_INITIALIZED.
    FMOD_RESULT init(int maxchannels, FMOD_INITFLAGS flags, void *extradriverdata);

    /// Opens the MP3 file `name` and reads its beginning; the rest is decoded while it plays.
    /// `mode` is made of the four FMOD_MODE values above, `exinfo` is null, or it is
    /// FMOD_ERR_UNSUPPORTED. The sound belongs to the system until its `release`. No such file:
    /// FMOD_ERR_FILE_NOTFOUND. A folder, a device, a file that may not be read: FMOD_ERR_FILE_BAD.
    /// Anything that is not MP3, an empty file too: FMOD_ERR_FORMAT.
    FMOD_RESULT createStream(const char *name, FMOD_MODE mode, FMOD_CREATESOUNDEXINFO *exinfo,
                             Sound **sound);

    /// Plays `sound` once, from its first sample; `paused` keeps it there. `channelid` is
    /// FMOD_CHANNEL_FREE. A sound that was played before begins anew, on the same channel.
    /// `channel` may be null. All channels in use: FMOD_ERR_CHANNEL_ALLOC.
    FMOD_RESULT playSound(FMOD_CHANNELINDEX channelid, Sound *sound, bool paused,
                          Channel **channel);

    /// Once a pass of the loop; as cheap as reading a clock.
    FMOD_RESULT update();

    /// Stops and releases all sounds and the output. `init` may follow.
    FMOD_RESULT close();

    /// Closes what is open and gives the system back.
    FMOD_RESULT release();

protected:
    System() = default;
    ~System() = default;
    System(const System &) = delete;
    System &operator=(const System &) = delete;
};

/// A music file, opened.
class Sound
{
public:
    /// Stops the sound where it plays, and closes its file.
    FMOD_RESULT release();

protected:
    Sound() = default;
    ~Sound() = default;
    Sound(const Sound &) = delete;
    Sound &operator=(const Sound &) = delete;
};

/// A sound that plays, or has played to its end.
class Channel
{
public:
    /// The position of the sound that reaches the ear now, in `postype` (FMOD_TIMEUNIT_...; another
    /// unit: FMOD_ERR_FORMAT). It runs evenly, never goes back, and stands still at the end. It
    /// counts the file's own frames, at whatever rate they play. A failed call leaves `position`.
    FMOD_RESULT getPosition(unsigned int *position, FMOD_TIMEUNIT postype);

protected:
    Channel() = default;
    ~Channel() = default;
    Channel(const Channel &) = delete;
    Channel &operator=(const Channel &) = delete;
};
} // namespace FMOD

using FMOD_SYSTEM = FMOD::System;

/// Makes a system; it belongs to the caller until its `release`. What is left at the end of the
/// program is closed then.
FMOD_RESULT FMOD_System_Create(FMOD_SYSTEM **system);

/// One sentence for each code, in words of this project's own; "Unknown error." for a number that
/// is none. The text is static.
const char *FMOD_ErrorString(FMOD_RESULT errcode);
