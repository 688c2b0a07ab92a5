#include "tests/soak/Soak.h"

#include "demo/Tables.h"
#include "tests/support/FixtureShow.h"
#include "tests/support/Process.h"
#include "tests/support/Screen.h"
#include "tests/support/TestFiles.h"

#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace soak
{
namespace
{
// The picture tells the time by its brightness, the sound by its pitch.
const int showSeconds = 8; // brightness rises from 0 to 1
const double lowestPitch = 400.0, pitchRise = 200.0;

const double longestSeconds = 0.2; // until they are together again
const double watchedSeconds = 1.0;
const double longestLook = 0.02; // at picture and sound: on a busy machine they go on in between
const double mostApart = 0.1;    // a frame of a software driver, and the steps of the brightness

void AppendNumber(std::string &bytes, float value)
{
    char number[sizeof value];
    std::memcpy(number, &value, sizeof value);
    bytes.append(number, sizeof value);
}

std::string RisingTrack()
{
    const int lastRow = 140;
    std::string bytes("\2\0\0\0\0\0\0\0\0\0\0\0", 12);
    AppendNumber(bytes, 0.0f);
    bytes += std::string("\1", 1) + std::string{char(lastRow), 0, 0, 0};
    AppendNumber(bytes, float(lastRow / demo::kRowsPerSecond / showSeconds));
    return bytes + std::string(1, '\0');
}

void WriteMusic(const fs::path &path)
{
    char pitch[200];
    std::snprintf(pitch, sizeof pitch, "aevalsrc='0.5*sin(2*PI*(%g*t+%g*t*t))':s=44100:d=%d",
                  lowestPitch, pitchRise / 2, showSeconds + 2);
    const test::cProcessResult made =
        test::Run({"ffmpeg", "-y", "-loglevel", "error", "-f", "lavfi", "-i", pitch, "-ac", "2",
                   "-b:a", "128k", path.string()});
    if (made.mStatus != 0)
        throw std::runtime_error("ffmpeg: " + made.mErrors);
}

// A show that tells its time, and a sound device that is a file.
void WriteTimedShow(const fs::path &folder)
{
    test::WriteFixtureShow(folder, 1.0);
    test::WriteFile(folder / "sync_fade:bg_white.track", RisingTrack());
    WriteMusic(folder / "data/waiting.mp3");
    test::WriteFile(folder / "sound.conf", "[wave]\nfile = heard.wav\n");
}

// The pitch of the last twentieth of a second that went out, by the first and the last of its
// upward crossings; as the second of the music that has it.
double SoundSeconds(const fs::path &wave)
{
    const size_t header = 44, window = 2205, frameBytes = 2 * sizeof(float);
    const std::string bytes = test::ReadFile(wave);
    if (bytes.size() < header + 2 * window * frameBytes)
        return 0.0;
    const size_t frames = (bytes.size() - header) / frameBytes;
    double first = -1, last = -1, previous = 0;
    int crossings = 0;
    for (size_t frame = frames - window; frame < frames; frame++) {
        float sample = 0;
        std::memcpy(&sample, bytes.data() + header + frame * frameBytes, sizeof sample);
        if (previous < 0 && sample >= 0) {
            last = double(frame) - double(sample) / (double(sample) - previous);
            first = first < 0 ? last : first;
            crossings++;
        }
        previous = double(sample);
    }
    if (crossings < 3)
        return 0.0;
    const double pitch = 44100.0 * (crossings - 1) / (last - first);
    return (pitch - lowestPitch) / pitchRise + double(window) / 44100.0 / 2;
}

double PictureSeconds(const test::cScreen &screen)
{
    const unsigned long blue = screen.Pixel(screen.Width() / 2, screen.Height() / 2) & 0xFF;
    return double(blue) / 255.0 * showSeconds;
}

// How far picture and sound are from each other at most, in the second that begins 0.2 s from now.
double WorstDistance(const test::cScreen &screen, const fs::path &wave)
{
    double worst = 0.0;
    Sleep(longestSeconds);
    for (const auto start = tClock::now(); SecondsSince(start) < watchedSeconds; Sleep(0.02)) {
        const auto look = tClock::now();
        const double picture = PictureSeconds(screen), sound = SoundSeconds(wave);
        if (SecondsSince(look) < longestLook)
            worst = std::max(worst, std::abs(picture - sound));
    }
    return worst;
}

// Answers whether the show was interrupted at all.
using tInterruption = std::function<bool(test::cScreen &, test::cProcess &)>;

bool IsAwayAfterASecond(const test::cScreen &screen)
{
    Sleep(1.0);
    return !screen.IsShown();
}

bool PlayInterrupted(const fs::path &demo, const fs::path &folder, const char *what,
                     const tInterruption &interrupt)
{
    fs::remove(folder / "heard.wav");
    test::cScreen screen;
    test::cProcess program({demo.string()}, folder,
                           {"ALSOFT_DRIVERS=wave", "ALSOFT_CONF=sound.conf"});
    if (!screen.WaitForWindow("Demo"))
        return Report(false, "a window appears");
    Sleep(3.0);
    const bool wasInterrupted = interrupt(screen, program);
    const double worst = WorstDistance(screen, folder / "heard.wav");
    screen.PressEscape();
    const test::cProcessResult result = program.Wait(5.0);
    std::printf("       %s: picture and sound %.0f ms apart at most, status %d\n%s", what,
                worst * 1000.0, result.mStatus, result.mErrors.c_str());
    return Report(wasInterrupted && worst <= mostApart && result.mStatus == 0, what);
}
} // namespace

bool PlayWithInterruptions(const fs::path &show)
{
    using test::cProcess, test::cScreen;
    const test::cTemporaryFolder folder;
    WriteTimedShow(folder.Path());
    const cProcess manager({"openbox", "--sm-disable"}, folder.Path(),
                           {"HOME=" + folder.Path().string()});
    if (!cScreen().WaitForWindowManager())
        return Report(false, "openbox, the window manager, starts");
    bool isGood = true;
    const auto play = [&](const char *what, const tInterruption &interrupt) {
        isGood = PlayInterrupted(show / "demo", folder.Path(), what, interrupt) && isGood;
    };
    play("left alone", [](cScreen &, cProcess &) { return true; });
    play("minimised for a second", [](cScreen &screen, cProcess &) {
        screen.Minimise();
        const bool wasAway = IsAwayAfterASecond(screen);
        screen.Activate();
        return wasAway;
    });
    play("on another desktop for a second", [](cScreen &screen, cProcess &) {
        screen.SendToDesktop(1);
        const bool wasAway = IsAwayAfterASecond(screen);
        screen.SendToDesktop(0);
        screen.Activate();
        return wasAway;
    });
    play("covered for a second", [](cScreen &screen, cProcess &) {
        screen.Cover(1.0);
        return true;
    });
    play("stopped for a second", [](cScreen &, cProcess &program) {
        program.Signal(SIGSTOP);
        Sleep(1.0);
        program.Signal(SIGCONT);
        return true;
    });
    return isGood;
}
} // namespace soak
