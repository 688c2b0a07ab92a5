#include "tools/check/Check.h"
#include "tools/check/ShowProcess.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>

namespace
{
const int clean = 0, faulty = 1, misused = 2; // exit statuses

std::string Counted(size_t count, const char *what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

int CheckFolder(const std::string &folder, const std::string &timeline)
{
    std::error_code failure;
    std::filesystem::current_path(folder, failure);
    if (failure) {
        std::cerr << tools::OnOneLine(folder) << ": " << failure.message() << '\n';
        return misused;
    }
    const check::cFindings findings = check::CheckShow(timeline);
    for (const tools::cFault &warning : findings.mWarnings)
        std::cout << "warning: " << warning.ToLine() << '\n';
    tools::Print(std::cout, findings.mFaults);
    std::cout << Counted(findings.mFaults.size(), "fault") << ", "
              << Counted(findings.mWarnings.size(), "warning") << '\n';
    return findings.mFaults.empty() ? clean : faulty;
}
} // namespace

int main(int argc, char **argv)
{
    if (argc == 3 && std::string(argv[1]) == check::kShowProcess)
        return check::RunShowProcess(argv[2]);
    CLI::App app("Checks a show's folder before it plays: every fault on a line of its own.");
    std::string folder = ".", timeline;
    app.set_version_flag("--version", "vyr-check " VYR_VERSION);
    app.add_option("DIR", folder, "the show's folder (default: this one)");
    app.add_option("--timeline", timeline,
                   "the text that the tracks were made of (default: as the build noted it)")
        ->type_name("FILE");
    app.footer(
        "A show is code, which runs while it is checked: check only shows that you would start.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? clean : misused;
    }
    if (!timeline.empty()) // the working directory becomes the show's folder
        timeline = std::filesystem::absolute(timeline).string();
    return CheckFolder(folder, timeline);
}
