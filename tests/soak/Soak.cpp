// Plays the show in real time and watches it from outside.
//
//     soak play SHOW-FOLDER             one whole play
//     soak memory SHOW-FOLDER           the same, whose memory must not grow
//     soak escape SHOW-FOLDER COUNT     COUNT plays, each ended with Escape
//     soak interrupt SHOW-FOLDER        minimised, sent to another desktop, covered, stopped
//
// On a display; scripts/soak brings one.

#include "tests/soak/Soak.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

namespace soak
{
void Sleep(double seconds) { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

double SecondsSince(tClock::time_point start)
{
    return std::chrono::duration<double>(tClock::now() - start).count();
}

bool Report(bool isGood, const char *what)
{
    std::printf("%-6s %s\n", isGood ? "ok" : "FAULT", what);
    std::fflush(stdout);
    return isGood;
}
} // namespace soak

int main(int argc, char **argv)
{
    std::setvbuf(stdout, nullptr, _IOLBF, 0); // a line is there when it happens, in a log too
    const std::string part = argc > 2 ? argv[1] : "";
    const std::filesystem::path show = std::filesystem::absolute(argc > 2 ? argv[2] : ".");
    if ((part == "play" || part == "memory") && argc == 3)
        return soak::PlayWhole(show, part == "memory") ? 0 : 1;
    if (part == "escape" && argc == 4)
        return soak::PlayUntilEscape(show, std::atoi(argv[3])) ? 0 : 1;
    if (part == "interrupt" && argc == 3)
        return soak::PlayWithInterruptions(show) ? 0 : 1;
    std::fprintf(stderr, "usage: soak play|memory|escape|interrupt SHOW-FOLDER [COUNT]\n");
    return 2;
}
