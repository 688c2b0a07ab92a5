#include "tools/new/NewShow.h"
#include "tools/support/Faults.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <iostream>

namespace
{
const int done = 0, failed = 1, misused = 2; // exit statuses

double ReadTempo(const std::string &text)
{
    double tempo = 0;
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, tempo);
    if (text.empty() || result.ec != std::errc() || result.ptr != end ||
        !(tempo >= newshow::kMinimumTempo && tempo <= newshow::kMaximumTempo))
        throw newshow::cRefusal("--tempo " + tools::Quote(text) +
                                ": expected beats a minute, 20 to 400");
    return tempo;
}

int Fail(const std::string &line, int status)
{
    std::cerr << "vyr-new: " << tools::OnOneLine(line) << '\n';
    return status;
}
} // namespace

int main(int argc, char **argv)
{
    CLI::App app("Writes a small finished show to start from: source, timeline, shader, pictures, "
                 "music, and how to build it.",
                 "vyr-new");
    app.set_version_flag("--version", "vyr-new " VYR_VERSION);
    newshow::cRequest request;
    std::string folder, tempo = "120";
    app.add_option("DIR", folder, "a new folder; its name becomes the show's")->required();
    app.add_option("--title", request.mTitle, "what the show is called [its name]")
        ->type_name("TEXT");
    app.add_option("--tempo", tempo, "beats a minute [120]")->type_name("BPM");
    app.footer("Exit status: 0 done, 1 failed, 2 misused. Nothing is written unless all is.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? done : misused;
    }
    try {
        request.mFolder = folder;
        request.mBeatsPerMinute = ReadTempo(tempo);
        newshow::WriteNewShow(request);
    } catch (const newshow::cRefusal &refusal) {
        return Fail(refusal.what(), misused);
    } catch (const std::exception &error) {
        return Fail(error.what(), failed);
    }
    const std::string name =
        std::filesystem::absolute(folder + "/").lexically_normal().parent_path().filename();
    std::cout << "Now: cd " << folder << " && cmake -B build && cmake --build build && build/"
              << name << '/' << name << '\n';
    return done;
}
