// Plays the show in real time, from its first row to its last, and watches it from outside.
//
//     soak SHOW-FOLDER [--escapes N]      (on a display; scripts/soak brings one)
//
// One whole play: it must end by itself with status 0, its memory at the end within 1 % of that
// after 20 seconds, its files as many as then. With --escapes, N plays more, each ended with Escape
// at a random moment: status 0 within 100 ms.

#include "tests/support/Process.h"
#include "tests/support/Screen.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <string>
#include <thread>

namespace fs = std::filesystem;
using tClock = std::chrono::steady_clock;

namespace
{
const double settledSeconds = 20.0, longestSeconds = 260.0;
const double mostGrowth = 0.01;          // of the memory
const double longestEscapeSeconds = 0.1; // from the key to the end
const double latestEscape = 20.0;        // seconds into the show

struct cState
{
    long mMemory = 0; // resident, kB
    int mFiles = 0;   // open
};

void Sleep(double seconds) { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

double SecondsSince(tClock::time_point start)
{
    return std::chrono::duration<double>(tClock::now() - start).count();
}

// Nothing when the process has just ended.
std::optional<cState> LookAt(pid_t process)
{
    const fs::path folder = fs::path("/proc") / std::to_string(process);
    std::ifstream status(folder / "status");
    cState state;
    for (std::string word; status >> word;)
        if (word == "VmRSS:")
            status >> state.mMemory;
    std::error_code failure;
    for (fs::directory_iterator entry(folder / "fd", failure), end; !failure && entry != end;
         entry.increment(failure))
        state.mFiles++;
    if (state.mMemory == 0 || failure)
        return std::nullopt;
    return state;
}

bool Report(bool isGood, const char *what)
{
    std::printf("%-6s %s\n", isGood ? "ok" : "FAULT", what);
    std::fflush(stdout);
    return isGood;
}

bool PlayWhole(const fs::path &show)
{
    const auto start = tClock::now();
    test::cProcess program({(show / "demo").string()}, show);
    std::optional<cState> settled, last;
    while (program.IsRunning() && SecondsSince(start) < longestSeconds) {
        Sleep(0.5);
        const auto now = LookAt(program.Id());
        if (now)
            last = now;
        if (!settled && SecondsSince(start) >= settledSeconds)
            settled = last;
    }
    const double seconds = SecondsSince(start);
    const test::cProcessResult result = program.Wait(1.0);
    if (!settled || !last)
        return Report(false, ("it did not play: " + result.mOutput + result.mErrors).c_str());
    std::printf("       %.1f s, status %d; memory %ld kB after 20 s, %ld kB at the end; files %d, "
                "%d\n%s",
                seconds, result.mStatus, settled->mMemory, last->mMemory, settled->mFiles,
                last->mFiles, result.mErrors.c_str());
    const double growth = double(last->mMemory) / double(settled->mMemory) - 1.0;
    bool isGood = Report(result.mStatus == 0, "it ends by itself with status 0");
    isGood = Report(growth <= mostGrowth, "memory grows by no more than 1 %") && isGood;
    return Report(last->mFiles <= settled->mFiles, "no file stays open") && isGood;
}

bool PlayUntilEscape(const fs::path &show, double moment)
{
    test::cScreen screen;
    test::cProcess program({(show / "demo").string()}, show);
    if (!screen.WaitForWindow("Demo"))
        return Report(false, "a window appears");
    Sleep(moment);
    const auto pressed = tClock::now();
    screen.PressEscape();
    const test::cProcessResult result = program.Wait(5.0);
    const double seconds = SecondsSince(pressed);
    std::printf("       Escape after %.2f s: status %d after %.0f ms\n", moment, result.mStatus,
                seconds * 1000.0);
    return Report(result.mStatus == 0 && seconds <= longestEscapeSeconds, "Escape ends it");
}
} // namespace

int main(int argc, char **argv)
{
    if (argc != 2 && !(argc == 4 && std::string(argv[2]) == "--escapes")) {
        std::fprintf(stderr, "usage: soak SHOW-FOLDER [--escapes N]\n");
        return 2;
    }
    const fs::path show = fs::absolute(argv[1]);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> moment(0.0, latestEscape);
    bool isGood = PlayWhole(show);
    for (int left = argc == 4 ? std::atoi(argv[3]) : 0; left > 0; left--)
        isGood = PlayUntilEscape(show, moment(random)) && isGood;
    return isGood ? 0 : 1;
}
