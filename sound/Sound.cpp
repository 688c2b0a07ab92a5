#include "sound/Sound.h"

#include "sound/SoundDecoder.h"
#include "sound/SoundOutput.h"
#include "sound/SoundPlayer.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <deque>
#include <memory>

namespace
{
constexpr FMOD_MODE knownModes = FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM | FMOD_ACCURATETIME;

// The objects that the handles point to. A released one keeps its address, invalid, until it is
// reused, so a late call on it is safe.
struct SystemState;

struct SoundState : FMOD::Sound
{
    SystemState *system = nullptr;
    std::unique_ptr<vyr::SoundDecoder> decoder; // null: released
};

struct ChannelState : FMOD::Channel
{
    SoundState *sound = nullptr;              // null: free
    std::unique_ptr<vyr::SoundPlayer> player; // null: paused at the beginning

    void Stop()
    {
        player.reset();
        sound = nullptr;
    }
};

struct SystemState : FMOD::System
{
    bool isReleased = false;
    size_t maximumChannels = 0;
    // Players use decoders and the output: what stands below goes first.
    std::unique_ptr<vyr::SoundOutput> output; // null: not initialised
    std::deque<SoundState> sounds;
    std::deque<ChannelState> channels;

    void Close();
    void StopSound(const SoundState &sound);
};

void SystemState::Close()
{
    for (ChannelState &channel : channels)
        channel.Stop();
    for (SoundState &sound : sounds)
        sound.decoder.reset();
    output.reset();
}

void SystemState::StopSound(const SoundState &sound)
{
    for (ChannelState &channel : channels)
        if (channel.sound == &sound)
            channel.Stop();
}

// Its end, at the program's end, closes what is still open: no thread outlives the libraries.
std::deque<SystemState> &GetSystems()
{
    static std::deque<SystemState> systems;
    return systems;
}

template <typename List, typename Test>
auto &ReuseOrAdd(List &list, Test isFree)
{
    const auto found = std::find_if(list.begin(), list.end(), isFree);
    return found != list.end() ? *found : list.emplace_back();
}

SystemState &GetState(FMOD::System &system) { return static_cast<SystemState &>(system); }

FMOD_RESULT CheckRunning(const SystemState &state)
{
    if (state.isReleased)
        return FMOD_ERR_INVALID_HANDLE;
    return state.output ? FMOD_OK : FMOD_ERR_UNINITIALIZED;
}

// The channel that plays `sound` already, or one that is free; null when there is none.
ChannelState *FindChannel(SystemState &state, const SoundState &sound)
{
    for (ChannelState &channel : state.channels)
        if (channel.sound == &sound)
            return &channel;
    for (ChannelState &channel : state.channels)
        if (!channel.sound)
            return &channel;
    return nullptr;
}

FMOD_RESULT Play(SystemState &state, SoundState &sound, ChannelState &channel, bool paused)
{
    channel.Stop();
    if (!sound.decoder->Rewind())
        return FMOD_ERR_FILE_COULDNOTSEEK;
    channel.sound = &sound;
    if (!paused)
        channel.player = std::make_unique<vyr::SoundPlayer>(*state.output, *sound.decoder);
    return FMOD_OK;
}

ChannelState *FindOrAddChannel(SystemState &state, const SoundState &sound)
{
    ChannelState *channel = FindChannel(state, sound);
    if (!channel && state.channels.size() < state.maximumChannels)
        channel = &state.channels.emplace_back();
    return channel;
}

uint64_t GetPosition(vyr::SoundPlayer &player, FMOD_TIMEUNIT unit)
{
    const double frames = player.GetFrames();
    if (unit == FMOD_TIMEUNIT_MS)
        return uint64_t(frames * 1000 / player.GetRate());
    return uint64_t(frames) * (unit == FMOD_TIMEUNIT_PCMBYTES ? 4 : 1);
}
} // namespace

FMOD_RESULT FMOD_System_Create(FMOD_SYSTEM **system)
{
    if (!system)
        return FMOD_ERR_INVALID_PARAM;
    SystemState &state = ReuseOrAdd(GetSystems(), [](auto &any) { return any.isReleased; });
    state.isReleased = false;
    *system = &state;
    return FMOD_OK;
}

FMOD_RESULT FMOD::System::getVersion(unsigned int *version)
{
    if (GetState(*this).isReleased)
        return FMOD_ERR_INVALID_HANDLE;
    if (!version)
        return FMOD_ERR_INVALID_PARAM;
    *version = FMOD_VERSION;
    return FMOD_OK;
}

FMOD_RESULT FMOD::System::init(int maxchannels, FMOD_INITFLAGS flags, void *)
{
    SystemState &state = GetState(*this);
    const FMOD_RESULT running = CheckRunning(state);
    if (running != FMOD_ERR_UNINITIALIZED)
        return running == FMOD_OK ? FMOD_ERR_INITIALIZED : running;
    if (maxchannels < 1 || maxchannels > 4093 || flags != FMOD_INIT_NORMAL)
        return FMOD_ERR_INVALID_PARAM;
    state.maximumChannels = size_t(maxchannels);
    state.output = std::make_unique<vyr::SoundOutput>(vyr::OpenSoundDevice());
    return FMOD_OK;
}

FMOD_RESULT FMOD::System::createStream(const char *name, FMOD_MODE mode,
                                       FMOD_CREATESOUNDEXINFO *exinfo, Sound **sound)
{
    SystemState &state = GetState(*this);
    const FMOD_RESULT running = CheckRunning(state);
    if (running != FMOD_OK)
        return running;
    if (!name || !sound)
        return FMOD_ERR_INVALID_PARAM;
    if (exinfo || (mode & ~knownModes) != 0)
        return FMOD_ERR_UNSUPPORTED;
    std::unique_ptr<vyr::SoundDecoder> decoder;
    const FMOD_RESULT opened = vyr::SoundDecoder::Open(name, decoder);
    if (opened != FMOD_OK)
        return opened;
    SoundState &made = ReuseOrAdd(state.sounds, [](auto &any) { return !any.decoder; });
    made.system = &state;
    made.decoder = std::move(decoder);
    *sound = &made;
    return FMOD_OK;
}

FMOD_RESULT FMOD::System::playSound(FMOD_CHANNELINDEX channelid, Sound *sound, bool paused,
                                    Channel **channel)
{
    SystemState &state = GetState(*this);
    const FMOD_RESULT running = CheckRunning(state);
    if (running != FMOD_OK)
        return running;
    if (!sound || channelid != FMOD_CHANNEL_FREE)
        return FMOD_ERR_INVALID_PARAM;
    SoundState &played = static_cast<SoundState &>(*sound);
    if (!played.decoder || played.system != &state)
        return FMOD_ERR_INVALID_HANDLE;
    ChannelState *found = FindOrAddChannel(state, played);
    if (!found)
        return FMOD_ERR_CHANNEL_ALLOC;
    if (channel)
        *channel = found;
    return Play(state, played, *found, paused);
}

// The threads run by themselves. A silent output that is not asked for the time takes the program
// for stopped, so this asks.
FMOD_RESULT FMOD::System::update()
{
    SystemState &state = GetState(*this);
    const FMOD_RESULT running = CheckRunning(state);
    if (running == FMOD_OK)
        state.output->GetHeardSeconds();
    return running;
}

FMOD_RESULT FMOD::System::close()
{
    SystemState &state = GetState(*this);
    const FMOD_RESULT running = CheckRunning(state);
    if (running == FMOD_OK)
        state.Close();
    return running;
}

FMOD_RESULT FMOD::System::release()
{
    SystemState &state = GetState(*this);
    if (state.isReleased)
        return FMOD_ERR_INVALID_HANDLE;
    state.Close();
    state.isReleased = true;
    return FMOD_OK;
}

FMOD_RESULT FMOD::Sound::release()
{
    SoundState &state = static_cast<SoundState &>(*this);
    if (!state.decoder)
        return FMOD_ERR_INVALID_HANDLE;
    state.system->StopSound(state);
    state.decoder.reset();
    return FMOD_OK;
}

FMOD_RESULT FMOD::Channel::getPosition(unsigned int *position, FMOD_TIMEUNIT postype)
{
    const ChannelState &state = static_cast<ChannelState &>(*this);
    if (!state.sound)
        return FMOD_ERR_INVALID_HANDLE;
    if (!position)
        return FMOD_ERR_INVALID_PARAM;
    if (postype != FMOD_TIMEUNIT_MS && postype != FMOD_TIMEUNIT_PCM &&
        postype != FMOD_TIMEUNIT_PCMBYTES)
        return FMOD_ERR_FORMAT;
    const uint64_t reached = state.player ? GetPosition(*state.player, postype) : 0;
    // Beyond what the number holds (six hours, in bytes) it stands still.
    *position = static_cast<unsigned int>(std::min<uint64_t>(reached, UINT_MAX));
    return FMOD_OK;
}
