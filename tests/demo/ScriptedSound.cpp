#include "sound/Sound.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

// A sound library without sound: its play positions come from VYR_TEST_ROWS, one a pass, and the
// call named by VYR_TEST_FAIL fails. "stay" at the end of the rows: the last one is there for ever.

namespace
{
std::string Setting(const char *name, const char *standard)
{
    const char *value = std::getenv(name);
    return value ? value : standard;
}

FMOD_RESULT ResultOf(const char *call)
{
    return Setting("VYR_TEST_FAIL", "") == call ? FMOD_ERR_INTERNAL : FMOD_OK;
}

struct cSystem : FMOD::System
{
} theSystem;
struct cSound : FMOD::Sound
{
} theSound;
struct cChannel : FMOD::Channel
{
} theChannel;

std::vector<std::string> ReadRows()
{
    std::vector<std::string> rows;
    std::istringstream text(Setting("VYR_TEST_ROWS", "3624"));
    for (std::string row; std::getline(text, row, ',');)
        rows.push_back(row);
    return rows;
}

const std::vector<std::string> rows = ReadRows();
size_t passes = 0;

bool IsStaying() { return passes < rows.size() && rows[passes] == "stay"; }

bool IsLogged() { return std::getenv("VYR_TEST_ROWS"); }

FMOD_RESULT Note(const char *call, const char *text)
{
    if (IsLogged())
        std::printf("%s\n", text);
    return ResultOf(call);
}
} // namespace

FMOD_RESULT FMOD_System_Create(FMOD_SYSTEM **system)
{
    if (system)
        *system = &theSystem;
    return ResultOf("System_Create");
}

const char *FMOD_ErrorString(FMOD_RESULT) { return "scripted"; }

namespace FMOD
{
FMOD_RESULT System::getVersion(unsigned int *version)
{
    *version = Setting("VYR_TEST_FAIL", "") == "version" ? FMOD_VERSION - 1 : FMOD_VERSION;
    return ResultOf("getVersion");
}

FMOD_RESULT System::init(int channels, FMOD_INITFLAGS flags, void *data)
{
    const bool isAsTold = channels == 1 && flags == FMOD_INIT_NORMAL && !data;
    return isAsTold ? ResultOf("init") : FMOD_ERR_INVALID_PARAM;
}

FMOD_RESULT System::createStream(const char *name, FMOD_MODE mode, FMOD_CREATESOUNDEXINFO *info,
                                 Sound **sound)
{
    const bool isAsTold = std::strcmp(name, "data/waiting.mp3") == 0 && mode == 0x40C8 && !info;
    *sound = &theSound;
    return isAsTold ? ResultOf("createStream") : FMOD_ERR_INVALID_PARAM;
}

FMOD_RESULT System::playSound(FMOD_CHANNELINDEX channelid, Sound *sound, bool paused,
                              Channel **channel)
{
    const bool isAsTold = channelid == FMOD_CHANNEL_FREE && sound == &theSound && !paused;
    *channel = &theChannel;
    return isAsTold ? ResultOf("playSound") : FMOD_ERR_INVALID_PARAM;
}

FMOD_RESULT System::update()
{
    if (IsStaying())
        return FMOD_OK;
    if (passes == rows.size()) {
        std::printf("the program went on past the script\n");
        std::exit(3);
    }
    if (IsLogged())
        std::printf("update %s\n", rows[passes].c_str());
    return FMOD_OK;
}

FMOD_RESULT System::close() { return Note("close", "close"); }

FMOD_RESULT System::release() { return Note("System::release", "release"); }

FMOD_RESULT Sound::release() { return Note("Sound::release", "release sound"); }

FMOD_RESULT Channel::getPosition(unsigned int *position, FMOD_TIMEUNIT unit)
{
    if (IsStaying())
        return FMOD_OK;
    const std::string &row = rows[passes++];
    if (row == "fail" || unit != FMOD_TIMEUNIT_PCMBYTES)
        return FMOD_ERR_INVALID_HANDLE;
    // rounded up, so that row 3624 is reached and not just missed
    *position = unsigned(std::ceil(std::stod(row) / 17.6 * 176400.0));
    return FMOD_OK;
}
} // namespace FMOD
