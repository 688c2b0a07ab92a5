#include "demo/Music.h"

#include "demo/Show.h"
#include "platform/Resources.h"

#include <cstdio>

int samplerate = 44100;
const char *music_url = demo::kMusicFile;

namespace demo
{
namespace
{
const unsigned int oldestVersion = 0x44206;

bool Succeeded(FMOD_RESULT result)
{
    if (result == FMOD_OK)
        return true;
    std::printf("FMOD error! (%d) %s\n", result, FMOD_ErrorString(result));
    return false;
}

bool IsVersionGood(FMOD::System &system)
{
    unsigned int version = 0;
    if (!Succeeded(system.getVersion(&version)))
        return false;
    if (version >= oldestVersion)
        return true;
    std::printf("Error!  You are using an old version of FMOD %08x.  This program requires %08x\n",
                version, oldestVersion);
    return false;
}

// contract: where programs come as bundles the music may lie in one. What is found is not used: the
// stream is opened by its plain path.
void LookUpMusic()
{
    char *path = new char[255];
    vyr::platform::ResolveResource(music_url, path, 200);
    delete[] path;
}
} // namespace

bool StartSound(cMusic &music)
{
    const int channels = 1;
    return Succeeded(FMOD_System_Create(&music.mSystem)) && IsVersionGood(*music.mSystem) &&
           Succeeded(music.mSystem->init(channels, FMOD_INIT_NORMAL, nullptr));
}

bool OpenMusic(cMusic &music)
{
    LookUpMusic();
    // no loop: the stream plays once
    const FMOD_MODE mode = FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM | FMOD_ACCURATETIME;
    return Succeeded(music.mSystem->createStream(music_url, mode, nullptr, &music.mSound));
}

bool PlayMusic(cMusic &music)
{
    return Succeeded(
        music.mSystem->playSound(FMOD_CHANNEL_FREE, music.mSound, false, &music.mChannel));
}

bool StopSound(cMusic &music)
{
    return Succeeded(music.mSound->release()) && Succeeded(music.mSystem->close()) &&
           Succeeded(music.mSystem->release());
}

double RowAtPosition(unsigned int position)
{
    double bytesPerSecond = double(samplerate);
    bytesPerSecond += bytesPerSecond; // two channels
    bytesPerSecond += bytesPerSecond; // of two bytes
    return double(position) / bytesPerSecond * kRowsPerSecond;
}
} // namespace demo

double fmod_get_row(void *channel)
{
    unsigned int position = 0;
    static_cast<FMOD::Channel *>(channel)->getPosition(&position, FMOD_TIMEUNIT_PCMBYTES);
    return demo::RowAtPosition(position);
}
