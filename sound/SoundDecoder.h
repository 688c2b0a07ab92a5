#pragma once

#include "sound/Sound.h"
#include "sound/SoundStream.h"

#include <cstddef>
#include <cstdint>
#include <memory>

struct mpg123_handle_struct;

namespace vyr
{
/// An MP3 file as a stream of stereo frames (two 16-bit samples, left first) at the file's own
/// rate. Mono is doubled. The first frame is the music's first: the encoder's delay and padding
/// that the file names are left out. Used by one thread at a time.
class SoundDecoder : public SoundStream
{
public:
    /// Opens `path` and makes sure that it begins with MP3; `decoder` stays as it is on failure.
    static FMOD_RESULT Open(const char *path, std::unique_ptr<SoundDecoder> &decoder);

    ~SoundDecoder() override;
    SoundDecoder(const SoundDecoder &) = delete;
    SoundDecoder &operator=(const SoundDecoder &) = delete;

    int GetRate() const override { return mRate; }

    /// Decodes up to `count` frames into `frames` (two values each) and says how many there were.
    /// Damaged places are skipped, if they are shorter than a megabyte. 0: the end.
    size_t Read(int16_t *frames, size_t count) override;

    /// Goes on from `frame`, 0 or more, to the sample; what Read gives next is what it would have
    /// given there. Returns where it is: the end for a frame beyond it, 0 where the file does not
    /// allow it.
    int64_t Seek(int64_t frame);

    /// Back to the first frame; false where the file does not allow it.
    bool Rewind();

private:
    SoundDecoder() = default;
    FMOD_RESULT OpenFile(const char *path);
    int FindRate();
    size_t ReadSome(int16_t *frames, size_t count);

    mpg123_handle_struct *mHandle = nullptr;
    int mRate = 0;
    bool mIsForeign = false; // what comes now is not the music: see ReadSome
    bool mHasEnded = false;
    int64_t mGoodPlace = 0; // bytes into the file: the last music came from there
};
} // namespace vyr
