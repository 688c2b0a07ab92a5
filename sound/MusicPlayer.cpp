#include "sound/MusicPlayer.h"

#include <algorithm>
#include <cmath>

namespace vyr
{
std::unique_ptr<MusicPlayer> MusicPlayer::Open(const std::string &path, SoundOutput &output,
                                               std::string &error)
{
    std::unique_ptr<MusicPlayer> player(new MusicPlayer(output));
    const FMOD_RESULT result = SoundDecoder::Open(path.c_str(), player->mDecoder);
    if (result == FMOD_OK)
        return player;
    error = FMOD_ErrorString(result);
    return nullptr;
}

void MusicPlayer::Play(double seconds)
{
    mPlayer.reset(); // the decoder is this thread's again
    const double rate = mDecoder->GetRate();
    const int64_t frame = mDecoder->Seek(std::llround(std::max(seconds, 0.0) * rate));
    mStartSeconds = double(frame) / rate;
    mPlayer = std::make_unique<SoundPlayer>(mOutput, *mDecoder);
}

void MusicPlayer::Stop()
{
    mStartSeconds = GetSeconds();
    mPlayer.reset();
}

double MusicPlayer::GetSeconds()
{
    return mStartSeconds + (mPlayer ? mPlayer->GetFrames() / mPlayer->GetRate() : 0.0);
}

bool MusicPlayer::HasEnded() { return mPlayer && mPlayer->HasPlayedOut(); }
} // namespace vyr
