#pragma once

#include "sound/Sound.h"

/// The music and the clock that it is.

extern int samplerate; ///< frames a second that the clock assumes; the file's own is not asked
extern const char *music_url; ///< where the music lies, under the working directory

namespace demo
{
/// The sound objects, which the entry point owns.
struct cMusic
{
    FMOD::System *mSystem = nullptr;
    FMOD::Sound *mSound = nullptr;
    FMOD::Channel *mChannel = nullptr;
};

// Each of these prints one line and gives false when the sound library fails; what was made so far
// is left as it is, since the program ends then.

bool StartSound(cMusic &music);
bool OpenMusic(cMusic &music);
bool PlayMusic(cMusic &music);
bool StopSound(cMusic &music);

/// The row, in 17.6ths of a second, of a play position in bytes of 16-bit stereo sound.
double RowAtPosition(unsigned int position);
} // namespace demo

/// The row that `channel` (an FMOD::Channel) plays now.
double fmod_get_row(void *channel);
