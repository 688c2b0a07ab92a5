#include "tests/soak/Soak.h"

#include "tests/support/Process.h"

#include <cstdio>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <string>

namespace fs = std::filesystem;

namespace soak
{
namespace
{
const double settledSeconds = 20.0, longestSeconds = 260.0;
const double mostGrowth = 0.01; // of the memory

struct cState
{
    long mMemory = 0;                   // resident, kB
    std::map<std::string, long> mParts; // the same, by what is mapped
    int mFiles = 0;                     // open
};

// The name of what is mapped where a line of /proc/PID/smaps begins a mapping; else nothing.
std::optional<std::string> MappingOf(const std::string &line)
{
    std::istringstream words(line);
    std::string range, rights, offset, device, inode, name;
    words >> range >> rights >> offset >> device >> inode;
    if (range.find('-') == std::string::npos || inode.empty())
        return std::nullopt;
    std::getline(words >> std::ws, name);
    return name.empty() ? "(no name)" : name;
}

void ReadMemory(const fs::path &smaps, cState &state)
{
    std::ifstream file(smaps);
    std::string part;
    for (std::string line; std::getline(file, line);) {
        if (const auto mapping = MappingOf(line))
            part = *mapping;
        long kilobytes = 0;
        if (std::sscanf(line.c_str(), "Rss: %ld", &kilobytes) == 1) {
            state.mMemory += kilobytes;
            state.mParts[part] += kilobytes;
        }
    }
}

// Nothing when the process has just ended.
std::optional<cState> LookAt(pid_t process)
{
    const fs::path folder = fs::path("/proc") / std::to_string(process);
    cState state;
    ReadMemory(folder / "smaps", state);
    std::error_code failure;
    for (fs::directory_iterator entry(folder / "fd", failure), end; !failure && entry != end;
         entry.increment(failure))
        state.mFiles++;
    if (state.mMemory == 0 || failure)
        return std::nullopt;
    return state;
}

void PrintGrowth(const cState &before, const cState &after)
{
    std::printf("       memory %ld kB after %.0f s, %ld kB at most; files %d, %d\n", before.mMemory,
                settledSeconds, after.mMemory, before.mFiles, after.mFiles);
    for (const auto &[part, kilobytes] : after.mParts) {
        const auto old = before.mParts.find(part);
        const long growth = kilobytes - (old == before.mParts.end() ? 0 : old->second);
        if (growth != 0)
            std::printf("       %+ld kB %s\n", growth, part.c_str());
    }
}

// tests/soak/DebugContext.cpp begins every line of its own with this.
int CountReports(const std::string &errors)
{
    int count = 0;
    std::istringstream lines(errors);
    for (std::string line; std::getline(lines, line);)
        count += line.starts_with("OpenGL: ");
    return count;
}
} // namespace

bool PlayWhole(const fs::path &show, bool mayNotGrow)
{
    const auto start = tClock::now();
    // The silent device: its clock and its threads are real, and every machine has it.
    test::cProcess program({(show / "demo").string()}, show,
                           {"LD_PRELOAD=" VYR_DEBUG_CONTEXT, "ALSOFT_DRIVERS=null"});
    std::optional<cState> settled, largest;
    while (program.IsRunning() && SecondsSince(start) < longestSeconds) {
        Sleep(0.5);
        const auto now = LookAt(program.Id());
        if (!now || SecondsSince(start) < settledSeconds)
            continue;
        if (!settled)
            settled = largest = now;
        // not the last state: by then it may be letting go of everything
        if (now->mMemory > largest->mMemory || now->mFiles > largest->mFiles)
            largest = now;
    }
    const double seconds = SecondsSince(start);
    const test::cProcessResult result = program.Wait(1.0);
    if (!settled || !largest)
        return Report(false, ("it did not play: " + result.mOutput + result.mErrors).c_str());
    std::printf("       %.1f s, status %d\n%s%s", seconds, result.mStatus, result.mOutput.c_str(),
                result.mErrors.c_str());
    PrintGrowth(*settled, *largest);
    const double growth = double(largest->mMemory) / double(settled->mMemory) - 1.0;
    bool isGood = Report(result.mStatus == 0, "it ends by itself with status 0");
    // the one report: that it has begun to watch
    isGood = Report(CountReports(result.mErrors) == 1, "no OpenGL error") && isGood;
    if (mayNotGrow)
        isGood = Report(growth <= mostGrowth, "memory grows by no more than 1 %") && isGood;
    return Report(largest->mFiles <= settled->mFiles, "no file stays open") && isGood;
}
} // namespace soak
