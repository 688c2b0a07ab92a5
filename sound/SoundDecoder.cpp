#include "sound/SoundDecoder.h"

#include <mpg123.h>

#include <cerrno>
#include <mutex>
#include <sys/stat.h>

namespace vyr
{
namespace
{
const size_t frameBytes = 2 * sizeof(int16_t);
const int64_t damageBytes = 1 << 20; // after a minute's worth of nothing it is no music any more

void StartLibrary()
{
    static std::once_flag once;
    std::call_once(once, [] { mpg123_init(); });
}

// Only a plain file is opened: opening a pipe would wait for its writer, a device has no end.
FMOD_RESULT CheckFile(const char *path)
{
    struct stat status = {};
    if (stat(path, &status) != 0)
        return errno == ENOENT || errno == ENOTDIR ? FMOD_ERR_FILE_NOTFOUND : FMOD_ERR_FILE_BAD;
    return S_ISREG(status.st_mode) ? FMOD_OK : FMOD_ERR_FILE_BAD;
}

// 16-bit stereo at any rate. The library doubles a single channel by itself.
bool AskForStereo(mpg123_handle *handle)
{
    const long *rates = nullptr;
    size_t count = 0;
    mpg123_rates(&rates, &count);
    mpg123_format_none(handle);
    bool isAllowed = count > 0;
    for (size_t i = 0; i < count; i++)
        if (mpg123_format(handle, rates[i], MPG123_STEREO, MPG123_ENC_SIGNED_16) != MPG123_OK)
            isAllowed = false;
    return isAllowed;
}
} // namespace

FMOD_RESULT SoundDecoder::Open(const char *path, std::unique_ptr<SoundDecoder> &decoder)
{
    const FMOD_RESULT fileResult = CheckFile(path);
    if (fileResult != FMOD_OK)
        return fileResult;
    std::unique_ptr<SoundDecoder> opened(new SoundDecoder);
    const FMOD_RESULT result = opened->OpenFile(path);
    if (result == FMOD_OK)
        decoder = std::move(opened);
    return result;
}

FMOD_RESULT SoundDecoder::OpenFile(const char *path)
{
    StartLibrary();
    mHandle = mpg123_new(nullptr, nullptr);
    if (!mHandle)
        return FMOD_ERR_MEMORY;
    mpg123_param(mHandle, MPG123_ADD_FLAGS, MPG123_QUIET | MPG123_GAPLESS, 0);
    if (!AskForStereo(mHandle))
        return FMOD_ERR_INTERNAL;
    if (mpg123_open(mHandle, path) != MPG123_OK)
        return FMOD_ERR_FILE_BAD;
    mRate = FindRate();
    mGoodPlace = mpg123_tell_stream(mHandle);
    return mRate > 0 ? FMOD_OK : FMOD_ERR_FORMAT;
}

SoundDecoder::~SoundDecoder()
{
    mpg123_delete(mHandle); // closes the file; null is fine
}

// The rate of the frames that come next; 0 when there are none.
int SoundDecoder::FindRate()
{
    long rate = 0;
    int channels = 0, encoding = 0;
    return mpg123_getformat(mHandle, &rate, &channels, &encoding) == MPG123_OK ? int(rate) : 0;
}

size_t SoundDecoder::Read(int16_t *frames, size_t count)
{
    size_t done = 0;
    while (done < count && !mHasEnded)
        done += ReadSome(frames + 2 * done, count - done);
    return done;
}

// The library gives up after a kilobyte without a frame, and goes on from there when asked again.
// Damage can also look like the head of a frame of another rate: what is decoded from there until
// the rate is right again is noise, at the wrong speed, and is left out.
size_t SoundDecoder::ReadSome(int16_t *frames, size_t count)
{
    size_t bytes = 0;
    const int64_t before = mpg123_tell_stream(mHandle);
    const int result = mpg123_read(mHandle, frames, count * frameBytes, &bytes);
    const int64_t place = mpg123_tell_stream(mHandle);
    const size_t done = mIsForeign ? 0 : bytes / frameBytes;
    if (done > 0)
        mGoodPlace = place;
    if (result == MPG123_NEW_FORMAT)
        mIsForeign = FindRate() != mRate;
    const bool isStuck = result != MPG123_NEW_FORMAT && bytes == 0 && place == before;
    mHasEnded = result == MPG123_DONE || isStuck || place - mGoodPlace > damageBytes;
    return done;
}

// Past the end the library answers with an error and stays where it is: then the end is where
// reading on ends.
int64_t SoundDecoder::Seek(int64_t frame)
{
    mIsForeign = mHasEnded = false;
    const int64_t length = mpg123_length(mHandle);
    const int64_t wanted = length >= 0 && frame > length ? length : frame;
    const int64_t place = mpg123_seek(mHandle, wanted, SEEK_SET);
    mGoodPlace = mpg123_tell_stream(mHandle);
    if (place >= 0)
        return place;
    mpg123_seek(mHandle, 0, SEEK_SET);
    return 0;
}

bool SoundDecoder::Rewind()
{
    mIsForeign = mHasEnded = false;
    const bool isThere = mpg123_seek(mHandle, 0, SEEK_SET) == 0;
    mGoodPlace = mpg123_tell_stream(mHandle);
    return isThere;
}
} // namespace vyr
