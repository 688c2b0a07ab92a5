#include "tests/soak/Soak.h"

#include "tests/support/Process.h"
#include "tests/support/Screen.h"

#include <algorithm>
#include <cstdio>
#include <random>
#include <vector>

namespace fs = std::filesystem;

namespace soak
{
namespace
{
const double longestSeconds = 0.1; // from the key to the end
// Seconds after the window has appeared. While it loads the show does not look at the keys.
const double earliestMoment = 5.0, latestMoment = 20.0;

// Seconds from the key to the end; beyond any bar when it did not end well.
double PlayOnce(const fs::path &show, double moment)
{
    test::cScreen screen;
    test::cProcess program({(show / "demo").string()}, show);
    if (!screen.WaitForWindow("Demo"))
        return 1e9;
    Sleep(moment);
    const auto pressed = tClock::now();
    screen.PressEscape();
    const test::cProcessResult result = program.Wait(5.0);
    const double seconds = SecondsSince(pressed);
    std::printf("       Escape after %.2f s: status %d after %.0f ms\n", moment, result.mStatus,
                seconds * 1000.0);
    return result.mStatus == 0 ? seconds : 1e9;
}
} // namespace

bool PlayUntilEscape(const fs::path &show, int count)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> moment(earliestMoment, latestMoment);
    std::vector<double> seconds;
    for (int i = 0; i < count; i++)
        seconds.push_back(PlayOnce(show, moment(random)));
    std::sort(seconds.begin(), seconds.end());
    if (seconds.empty())
        return true;
    std::printf("       half of them within %.0f ms, all within %.0f ms\n",
                seconds[seconds.size() / 2] * 1000.0, seconds.back() * 1000.0);
    return Report(seconds.back() <= longestSeconds, "Escape ends it within 100 ms, with status 0");
}
} // namespace soak
