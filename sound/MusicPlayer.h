#pragma once

#include "sound/SoundDecoder.h"
#include "sound/SoundOutput.h"
#include "sound/SoundPlayer.h"

#include <memory>
#include <string>

namespace vyr
{
/// A piece of music that can be started anywhere, and the clock that it is. By one thread.
class MusicPlayer
{
public:
    /// Opens the MP3 file `path`, to be heard on `output`, which has to outlive the player. Null,
    /// and one line without the path in `error`, when it is no music that can be read.
    static std::unique_ptr<MusicPlayer> Open(const std::string &path, SoundOutput &output,
                                             std::string &error);

    /// Plays from `seconds` on, 0 or more; what played before stops at once. Beyond the end nothing
    /// is heard, and the music has ended.
    void Play(double seconds);
    void Stop(); ///< silent at once; GetSeconds stays where it was

    /// The position that is heard now. Even, and never back but by Play. Where nothing plays yet,
    /// 0.
    double GetSeconds();
    /// Whether the last sample has been heard.
    bool HasEnded();

private:
    explicit MusicPlayer(SoundOutput &output) : mOutput(output) {}

    SoundOutput &mOutput;
    std::unique_ptr<SoundDecoder> mDecoder;
    double mStartSeconds = 0;
    std::unique_ptr<SoundPlayer> mPlayer; // last: it uses the decoder; null: nothing plays
};
} // namespace vyr
