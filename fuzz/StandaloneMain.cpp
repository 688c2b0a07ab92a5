// Runs a fuzz target without the fuzzer: over files, and over a fixed series of damaged versions of
// them. So every compiler's tests replay the seeds and every fault found before.
//
//     fuzz-NAME [--runs N] FILE|FOLDER...

#include "fuzz/Fuzz.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace fs = std::filesystem;

namespace
{
using tBytes = std::vector<uint8_t>;

const size_t maximumDamagedBytes = 16384; // longer files are run as they are, and not damaged

tBytes ReadBytes(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return tBytes(std::istreambuf_iterator<char>(file), {});
}

void AddFiles(const fs::path &path, std::vector<tBytes> &inputs)
{
    if (!fs::is_directory(path)) {
        inputs.push_back(ReadBytes(path));
        return;
    }
    std::vector<fs::path> files;
    for (const fs::directory_entry &entry : fs::directory_iterator(path))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end()); // the same series on every file system
    for (const fs::path &file : files)
        inputs.push_back(ReadBytes(file));
}

// One small change: a byte, a bit, a cut, a doubled piece, or a number of four bytes.
void Damage(tBytes &bytes, std::mt19937 &random)
{
    if (bytes.empty())
        bytes.push_back(0);
    const size_t at = random() % bytes.size();
    const size_t length = std::min<size_t>(bytes.size() - at, 1 + random() % 16);
    const auto from = bytes.begin() + std::ptrdiff_t(at);
    switch (random() % 6) {
    case 0:
        bytes[at] = uint8_t(random());
        return;
    case 1:
        bytes[at] = uint8_t(bytes[at] ^ 1u << random() % 8);
        return;
    case 2:
        bytes.erase(from, from + std::ptrdiff_t(length));
        return;
    case 3: {
        const tBytes piece(from, from + std::ptrdiff_t(length));
        bytes.insert(bytes.begin() + std::ptrdiff_t(at), piece.begin(), piece.end());
        return;
    }
    case 4:
        std::fill(from, from + std::ptrdiff_t(length), uint8_t(random() % 2 ? 0xFF : 0));
        return;
    default:
        bytes.insert(bytes.begin() + std::ptrdiff_t(at), uint8_t(random()));
    }
}

void RunDamaged(const std::vector<tBytes> &inputs, long runs)
{
    std::mt19937 random(1);
    for (long i = 0; i < runs; i++) {
        tBytes bytes = inputs[random() % inputs.size()];
        if (bytes.size() > maximumDamagedBytes)
            continue;
        for (size_t changes = 1 + random() % 4; changes > 0; changes--)
            Damage(bytes, random);
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
}
} // namespace

int main(int argc, char **argv)
{
    long runs = 0;
    std::vector<tBytes> inputs;
    for (int i = 1; i < argc; i++) {
        if (std::string_view(argv[i]) == "--runs" && i + 1 < argc)
            runs = std::atol(argv[++i]);
        else
            AddFiles(argv[i], inputs);
    }
    for (const tBytes &bytes : inputs)
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    if (!inputs.empty())
        RunDamaged(inputs, runs);
    std::printf("%zu files, %ld damaged versions\n", inputs.size(), runs);
    return inputs.empty();
}
