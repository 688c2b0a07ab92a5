#include "sound/SoundOpenAL.h"

#define AL_ALEXT_PROTOTYPES
#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace vyr
{
namespace
{
const double nanosecond = 1e-9;

// The back ends of the library complain on standard error about every sound server that is not
// there. To read these messages, set the library's own log level.
class QuietErrors
{
public:
    QuietErrors()
    {
        const int nowhere = std::getenv("ALSOFT_LOGLEVEL") ? -1 : open("/dev/null", O_WRONLY);
        if (nowhere < 0)
            return;
        mErrors = dup(STDERR_FILENO);
        if (mErrors >= 0)
            dup2(nowhere, STDERR_FILENO);
        close(nowhere);
    }
    ~QuietErrors()
    {
        if (mErrors < 0)
            return;
        dup2(mErrors, STDERR_FILENO);
        close(mErrors);
    }
    QuietErrors(const QuietErrors &) = delete;
    QuietErrors &operator=(const QuietErrors &) = delete;

private:
    int mErrors = -1;
};

ALCcontext *CreateContext(ALCdevice *device)
{
    // The music goes out as it is: not turned into a room for headphones, not pressed together.
    const ALCint plain[] = {ALC_HRTF_SOFT, ALC_FALSE, ALC_OUTPUT_LIMITER_SOFT, ALC_FALSE, 0};
    // Without a clock the device does not know what is heard when.
    if (!alcIsExtensionPresent(device, "ALC_SOFT_device_clock"))
        return nullptr;
    return alcCreateContext(device, plain);
}
} // namespace

std::unique_ptr<SoundDevice> OpenSoundDevice()
{
    const QuietErrors quiet;
    ALCdevice *device = alcOpenDevice(nullptr);
    if (!device)
        return nullptr;
    ALCcontext *context = CreateContext(device);
    if (context)
        return std::make_unique<SoundOpenAL>(device, context);
    alcCloseDevice(device);
    return nullptr;
}

SoundOpenAL::SoundOpenAL(ALCdevice *device, ALCcontext *context)
    : mDevice(device), mContext(context)
{}

SoundOpenAL::~SoundOpenAL()
{
    alcDestroyContext(mContext);
    alcCloseDevice(mDevice);
}

double SoundOpenAL::GetBlockSeconds() const
{
    ALCint blocksPerSecond = 0;
    alcGetIntegerv(mDevice, ALC_REFRESH, 1, &blocksPerSecond);
    return blocksPerSecond > 0 ? 1.0 / blocksPerSecond : 0.02;
}

double SoundOpenAL::ReadHeardSeconds()
{
    ALCint64SOFT clockAndLatency[2] = {};
    alcGetInteger64vSOFT(mDevice, ALC_DEVICE_CLOCK_LATENCY_SOFT, 2, clockAndLatency);
    return double(clockAndLatency[0] - clockAndLatency[1]) * nanosecond;
}

bool SoundOpenAL::IsConnected()
{
    ALCint connected = ALC_TRUE;
    alcGetIntegerv(mDevice, ALC_CONNECTED, 1, &connected);
    return connected != ALC_FALSE;
}

std::unique_ptr<SoundVoice> SoundOpenAL::CreateVoice(int rate)
{
    auto voice = std::make_unique<SoundOpenALVoice>(mContext, rate);
    if (!voice->IsMade())
        return nullptr;
    return voice;
}

SoundOpenALVoice::SoundOpenALVoice(ALCcontext *context, int rate) : mRate(rate)
{
    alcSetThreadContext(context);
    alGetError();
    alGenSources(1, &mSource);
    alGenBuffers(ALsizei(mBuffers.size()), mBuffers.data());
    if (alGetError() != AL_NO_ERROR) {
        alDeleteSources(1, &mSource);
        mSource = 0;
        return;
    }
    mFree = mBuffers;
    mFreeCount = mFree.size();
    ChooseResampler();
}

SoundOpenALVoice::~SoundOpenALVoice()
{
    if (mSource != 0) {
        alDeleteSources(1, &mSource); // stops it, and lets go of its buffers
        alDeleteBuffers(ALsizei(mBuffers.size()), mBuffers.data());
    }
    alcSetThreadContext(nullptr);
}

// The last is the best, and one stream can afford it. It works only where the rates differ.
void SoundOpenALVoice::ChooseResampler()
{
    if (alIsExtensionPresent("AL_SOFT_source_resampler"))
        alSourcei(mSource, AL_SOURCE_RESAMPLER_SOFT, alGetInteger(AL_NUM_RESAMPLERS_SOFT) - 1);
}

int SoundOpenALVoice::GetInteger(int parameter) const
{
    ALint value = 0;
    alGetSourcei(mSource, parameter, &value);
    return value;
}

bool SoundOpenALVoice::IsPlaying() const { return GetInteger(AL_SOURCE_STATE) == AL_PLAYING; }

bool SoundOpenALVoice::HasRoom()
{
    DropHeard(GetInteger(AL_BUFFERS_PROCESSED));
    return mFreeCount > 0;
}

void SoundOpenALVoice::DropHeard(int count)
{
    for (int i = 0; i < count; i++) {
        ALuint buffer = 0;
        ALint bytes = 0;
        alSourceUnqueueBuffers(mSource, 1, &buffer);
        if (buffer == 0)
            return; // the device is gone
        alGetBufferi(buffer, AL_SIZE, &bytes);
        const int frames = bytes / 4;
        mDroppedFrames += frames;
        mFree[mFreeCount++] = buffer;
    }
}

bool SoundOpenALVoice::Queue(std::span<const int16_t> samples)
{
    ALuint buffer = mFree[--mFreeCount];
    alBufferData(buffer, AL_FORMAT_STEREO16, samples.data(), ALsizei(samples.size_bytes()), mRate);
    alSourceQueueBuffers(mSource, 1, &buffer);
    const size_t frames = samples.size() / 2;
    mProgress.limitFrames += double(frames);
    return IsPlaying() || Start();
}

// This is the first block, or the queue ran dry before it. A stopped source counts all of its queue
// as heard; this block was not.
bool SoundOpenALVoice::Start()
{
    DropHeard(GetInteger(AL_BUFFERS_QUEUED) - 1);
    mProgress.startSeconds = ReadPlace().clockSeconds - mDroppedFrames / mRate;
    alSourcePlay(mSource);
    return IsPlaying();
}

SoundOpenALVoice::Place SoundOpenALVoice::ReadPlace() const
{
    ALint64SOFT offsetAndClock[2] = {};
    alGetSourcei64vSOFT(mSource, AL_SAMPLE_OFFSET_CLOCK_SOFT, offsetAndClock);
    return {double(offsetAndClock[0]) / 4294967296.0, // 32 bits of fraction
            double(offsetAndClock[1]) * nanosecond};
}

// Reads the place again and again: where the device mixes at another rate its steps are rounded,
// and the stream runs some millionths too fast or too slow.
SoundProgress SoundOpenALVoice::GetProgress()
{
    const Place place = ReadPlace();
    if (place.offsetFrames > 0) // not before its first step, not after its last
        mProgress.startSeconds = place.clockSeconds - (mDroppedFrames + place.offsetFrames) / mRate;
    return mProgress;
}
} // namespace vyr
