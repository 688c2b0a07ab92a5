#include "examples/Music.h"

#include "examples/Example.h"
#include "sound/Sound.h"

#include <cstdio>

namespace
{
FMOD::System *sound = nullptr;
FMOD::Channel *channel = nullptr; // null: no music

bool Succeeded(FMOD_RESULT result)
{
    if (result != FMOD_OK)
        std::printf("no music: %s\n", FMOD_ErrorString(result));
    return result == FMOD_OK;
}

bool Play(const char *file)
{
    const FMOD_MODE mode = FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM | FMOD_ACCURATETIME;
    FMOD::Sound *music = nullptr;
    return Succeeded(FMOD_System_Create(&sound)) &&
           Succeeded(sound->init(1, FMOD_INIT_NORMAL, nullptr)) &&
           Succeeded(sound->createStream(file, mode, nullptr, &music)) &&
           Succeeded(sound->playSound(FMOD_CHANNEL_FREE, music, false, &channel));
}
} // namespace

double MusicSeconds()
{
    static const bool isPlaying = Play("data/waiting.mp3");
    if (!isPlaying)
        return WindowSeconds();
    sound->update();
    unsigned int frames = 0; // of 44100 a second
    channel->getPosition(&frames, FMOD_TIMEUNIT_PCM);
    return frames / 44100.0;
}
