// The show's clock against the machine's: the music at every pass of a loop such as the show's, for
// the show's whole length, without a sound device and on one. Then a while with the machine busy.
//
//   bench-clock SHOW FILE [--seconds N]
//
// FILE gets the device's error over time, with what the sound library itself says beside it;
// FILE.loaded the same of the busy while. The device is OpenAL Soft's null device, which mixes in
// real time for nobody, unless ALSOFT_DRIVERS names another.

#include "benchmarks/ClockLine.h"
#include "benchmarks/Report.h"
#include "demo/Music.h"
#include "demo/Show.h"
#include "sound/SoundDecoder.h"
#include "sound/SoundOutput.h"
#include "sound/SoundPlayer.h"
#include "sound/SoundTime.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
using bench::cPass;
using vyr::SteadySeconds;

const auto passPause = std::chrono::milliseconds(1);
const double showSeconds = 206.0;

// Between the opening of the device and the music the show loads what it shows. The clock uses the
// time to find the device's steps.
const auto loadingTime = std::chrono::milliseconds(600);

const double quietSeconds = 10.0, busySeconds = 20.0; // the second part: quiet, busy, quiet

// A pass that is kept waiting between its two looks at the machine's clock tells nothing.
const double sureSeconds = 0.0002;

/// Music that plays, and the passes at which it was asked.
class cPlayback
{
public:
    cPlayback(const char *path, std::unique_ptr<vyr::SoundDevice> device)
        : mDevice(device.get()), mOutput(std::move(device))
    {
        if (vyr::SoundDecoder::Open(path, mDecoder) != FMOD_OK)
            std::exit(1);
    }

    void Play() { mPlayer = std::make_unique<vyr::SoundPlayer>(mOutput, *mDecoder); }

    // As the show asks: in bytes, and from them the row.
    void Pass(double start)
    {
        cPass pass;
        const double before = SteadySeconds();
        const auto bytes = static_cast<unsigned int>(mPlayer->GetFrames()) * 4;
        const double after = SteadySeconds();
        pass.mMusic = demo::RowAtPosition(bytes) / demo::kRowsPerSecond;
        pass.mTime = (before + after) / 2.0 - start;
        pass.mRaw = mDevice ? mDevice->ReadHeardSeconds() : pass.mMusic;
        pass.mIsSure = after - before < sureSeconds && SteadySeconds() - after < sureSeconds;
        mPasses.push_back(pass);
    }

    const std::vector<cPass> &GetPasses() const { return mPasses; }
    double GetBlockSeconds() const { return mDevice ? mDevice->GetBlockSeconds() : 0.02; }

private:
    vyr::SoundDevice *mDevice; // the library's own clock
    vyr::SoundOutput mOutput;
    std::unique_ptr<vyr::SoundDecoder> mDecoder;
    std::unique_ptr<vyr::SoundPlayer> mPlayer;
    std::vector<cPass> mPasses;
};

struct cBoth
{
    cPlayback mSilent, mDevice;

    explicit cBoth(const char *path) : mSilent(path, nullptr), mDevice(path, vyr::OpenSoundDevice())
    {
        std::this_thread::sleep_for(loadingTime);
        mSilent.Play();
        mDevice.Play();
    }

    void PassUntil(double end, double start)
    {
        while (SteadySeconds() - start < end) {
            mSilent.Pass(start);
            mDevice.Pass(start);
            std::this_thread::sleep_for(passPause);
        }
    }
};

/// Two processes that do nothing but run, while it lives.
class cLoad
{
public:
    cLoad()
    {
        for (pid_t &process : mProcesses)
            if ((process = fork()) == 0)
                BeBusy();
    }
    ~cLoad()
    {
        for (pid_t process : mProcesses) {
            kill(process, SIGKILL);
            waitpid(process, nullptr, 0);
        }
    }
    cLoad(const cLoad &) = delete;
    cLoad &operator=(const cLoad &) = delete;

private:
    // Not longer than there is somebody to end it.
    [[noreturn]] static void BeBusy()
    {
        for (const pid_t parent = getppid(); getppid() == parent;) {
        }
        _exit(0);
    }

    pid_t mProcesses[2];
};

void PrintBar(const std::string &what, double measured, double bar, const char *unit)
{
    bench::PrintRow({what, "at most", unit, bar > 0.0 ? "<=1" : "<=0"},
                    {{measured, bar > 0.0 ? bar : 1.0}});
}

void Report(const std::string &where, const std::vector<cPass> &passes)
{
    const bench::cLine line = bench::FitLine(passes);
    PrintBar("clock " + where + ": drift over the run", line.mDrift * 1e3, 2.0, "ms");
    PrintBar("clock " + where + ": from a straight line, rms", line.mRms * 1e3, 1.0, "ms");
    PrintBar("clock " + where + ": from a straight line, worst", line.mWorst * 1e3, 3.0, "ms");
    PrintBar("clock " + where + ": steps back", bench::CountStepsBack(passes), 0.0, "steps");
    PrintBar("clock " + where + ": a frame's advance, error of 99 in 100",
             bench::FrameError(passes, 0.99) * 1e3, 1.0, "ms");
}

// Right again one block of the mixer after the load has gone: as far from the line of the quiet
// passes as a quiet pass may be.
void ReportLoaded(const std::string &where, const cPlayback &playback, double loadEnd)
{
    const std::vector<cPass> &passes = playback.GetPasses();
    const bench::cLine line = bench::FitLine(bench::Between(passes, 0.0, quietSeconds));
    const double settled = loadEnd + playback.GetBlockSeconds();
    PrintBar("clock " + where + ": steps back under load", bench::CountStepsBack(passes), 0.0,
             "steps");
    PrintBar("clock " + where + ": a block after the load, worst",
             bench::FindWorst(bench::Between(passes, settled, settled + quietSeconds), line) * 1e3,
             3.0, "ms");
}

// A mixer that the machine keeps from its work leaves the listener without sound. The clock runs on
// for a twentieth of a second and then waits, as it should; a quiet machine shows none of it.
void NoteStall(const cPlayback &playback)
{
    const double lag = bench::FindDeviceLag(playback.GetPasses());
    if (lag > playback.GetBlockSeconds() + 0.05)
        std::printf("note\tclock on a device: the device itself stood still, up to %.0f ms behind; "
                    "the clock waited for it\n",
                    lag * 1e3);
}

void MeasureQuiet(const char *music, double seconds, const std::string &file)
{
    cBoth both(music);
    both.PassUntil(seconds, SteadySeconds());
    Report("without a device", both.mSilent.GetPasses());
    Report("on a device", both.mDevice.GetPasses());
    NoteStall(both.mDevice);
    bench::WriteErrors(file, both.mDevice.GetPasses());
}

void MeasureLoaded(const char *music, const std::string &file)
{
    cBoth both(music);
    const double start = SteadySeconds();
    both.PassUntil(quietSeconds, start);
    {
        const cLoad load;
        both.PassUntil(quietSeconds + busySeconds, start);
    }
    const double loadEnd = SteadySeconds() - start;
    both.PassUntil(loadEnd + quietSeconds, start);
    ReportLoaded("without a device", both.mSilent, loadEnd);
    ReportLoaded("on a device", both.mDevice, loadEnd);
    bench::WriteErrors(file, both.mDevice.GetPasses());
}
} // namespace

int main(int count, char **arguments)
{
    if (count < 3) {
        std::fprintf(stderr, "bench-clock: needs the folder of a show and a file to write\n");
        return 2;
    }
    const bool isShort = count == 5 && std::string(arguments[3]) == "--seconds";
    setenv("ALSOFT_DRIVERS", "null", 0);
    const std::string music = std::string(arguments[1]) + "/" + music_url, file = arguments[2];
    MeasureQuiet(music.c_str(), isShort ? std::atof(arguments[4]) : showSeconds, file);
    MeasureLoaded(music.c_str(), file + ".loaded");
}
