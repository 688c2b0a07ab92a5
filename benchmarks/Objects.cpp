// LWO2 objects of a thousand to a million triangles: read, with normals and the arrays to draw
// from, beside assimp reading the same file without any post-processing. Processor time and peak
// memory, each run a fresh process.
//
//   bench-objects [SHOW] [PAIRS]     the show is not needed: the objects are made here
//
// Of two kinds. A smooth surface names the angle up to which edges are smoothed; then assimp makes
// the normals that we make of any surface. Of a flat one it makes none of its own.

#include "benchmarks/Report.h"
#include "engine/3DObject.h"
#include "tests/support/LWO2Builder.h"

#ifdef VYR_HAS_ASSIMP
#include <assimp/cimport.h>
#endif

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include <unistd.h>

namespace
{
const int defaultPairs = 5; // assimp takes ten seconds for a million smooth triangles

// The files --------------------------------------------------------------------------------------

// As many as two-byte indices can name without a longer form: polygons have no other.
const int maximumPoints = 0xFF00;

// Of a square of points, which holds two triangles for each of its cells.
int FindSide(int triangles)
{
    const int wanted = int(std::ceil(std::sqrt(triangles / 2.0))) + 1;
    return std::min(wanted, int(std::sqrt(double(maximumPoints))));
}

std::string MakePoints(int side)
{
    std::string body;
    for (int i = 0; i < side * side; i++) {
        const int column = i % side, row = i / side;
        const float x = float(column), y = float(row);
        body += lwo2::F4(x) + lwo2::F4(y) + lwo2::F4(std::sin(0.3f * x) * std::cos(0.2f * y));
    }
    return lwo2::Chunk("PNTS", body);
}

std::string MakeTexCoords(int side)
{
    std::string body = "TXUV" + lwo2::U2(2) + lwo2::S0("map");
    for (int i = 0; i < side * side; i++) {
        const int column = i % side, row = i / side;
        body += lwo2::U2(i) + lwo2::F4(float(column) / float(side)) +
                lwo2::F4(float(row) / float(side));
    }
    return lwo2::Chunk("VMAP", body);
}

// Large meshes go over the square again and again: a polygon can't name more points.
std::string MakeTriangles(int triangles, int side)
{
    std::string body = "FACE";
    for (int i = 0; i < triangles; i++) {
        const int cell = i / 2 % ((side - 1) * (side - 1));
        const int corner = cell / (side - 1) * side + cell % (side - 1);
        const bool isUpper = i % 2;
        body += lwo2::U2(3) + lwo2::U2(isUpper ? corner + side + 1 : corner) +
                lwo2::U2(isUpper ? corner + side : corner + 1) +
                lwo2::U2(isUpper ? corner + 1 : corner + side);
    }
    return lwo2::Chunk("POLS", body);
}

std::string Index(int index)
{
    return index < maximumPoints ? lwo2::U2(index) : lwo2::U4(0xFF000000u | uint32_t(index));
}

std::string MakeTags(int triangles)
{
    std::string body = "SURF";
    for (int i = 0; i < triangles; i++)
        body += Index(i) + lwo2::U2(0);
    return lwo2::Chunk("PTAG", body);
}

// One layer at the origin. We pass over it; assimp reads nothing without.
std::string MakeLayer()
{
    return lwo2::Chunk("LAYR",
                       lwo2::U2(0) + lwo2::U2(0) + std::string(12, '\0') + lwo2::S0("layer"));
}

std::string MakeMesh(int triangles, bool isSmooth)
{
    const int side = FindSide(triangles);
    const std::string smoothing = lwo2::SubChunk("SMAN", lwo2::F4(1.5f)); // radians
    return lwo2::Form(lwo2::Tags({"skin"}) + MakeLayer() + MakePoints(side) + MakeTexCoords(side) +
                      MakeTriangles(triangles, side) + MakeTags(triangles) +
                      lwo2::Surface("skin", lwo2::ColorPart(1.0f, 0.5f, 0.25f) +
                                                (isSmooth ? smoothing : std::string())));
}

// A triangle with `count` surfaces, named and defined by a chunk each, last first.
std::string MakeManyChunks(int count)
{
    std::string chunks = lwo2::Points({{0, 0}, {1, 0}, {0, 1}}) +
                         lwo2::Faces(std::vector<std::vector<int>>(size_t(count), {0, 1, 2}));
    for (int i = 0; i < count; i++)
        chunks += lwo2::Tags({"surface " + std::to_string(i)});
    for (int i = count; i-- > 0;)
        chunks += lwo2::Surface("surface " + std::to_string(i), lwo2::ColorPart(1, 0, 0));
    return lwo2::Form(chunks);
}

// One run, in a process of its own ---------------------------------------------------------------

struct cCost
{
    double mMilliseconds = 0.0, mMebibytes = 0.0; // processor time a read; peak memory of one
};

double ProcessorSeconds()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

// VmRSS, what is held now, or VmHWM, the most that ever was.
double ReadMebibytes(const std::string &field)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == field + ":" && status >> word)
            return std::atof(word.c_str()) / 1024.0;
    return 0.0;
}

bool ReadOurs(const char *path)
{
    vyr::c3DObject *object = vyr::c3DObject::CreateFromLWO2(path);
    return object && object->CreateRenderObject();
}

bool ReadPeers([[maybe_unused]] const char *path)
{
#ifdef VYR_HAS_ASSIMP
    return aiImportFile(path, 0) != nullptr;
#else
    return false;
#endif
}

// The memory counts from the program's start, so with all that a library sets up for itself; the
// time from when the code has run once, for a small object.
bool PrintCost(const std::string &side, const char *warmUp, const char *path)
{
    const auto read = side == "ours" ? ReadOurs : ReadPeers;
    const double memoryBefore = ReadMebibytes("VmRSS");
    read(warmUp);
    const double before = ProcessorSeconds();
    const bool isRead = read(path);
    const double seconds = ProcessorSeconds() - before;
    std::printf("%.6f %.6f\n", seconds * 1000.0, ReadMebibytes("VmHWM") - memoryBefore);
    return isRead;
}

// The pairs --------------------------------------------------------------------------------------

/// The files, in a folder that goes when this does.
class cFiles
{
public:
    cFiles() : mFolder(std::filesystem::temp_directory_path() / ("bench-objects-" + Id()))
    {
        std::filesystem::create_directories(mFolder);
        std::ofstream(GetWarmUp(), std::ios::binary) << MakeMesh(8, true);
    }
    ~cFiles() { std::filesystem::remove_all(mFolder); }
    cFiles(const cFiles &) = delete;
    cFiles &operator=(const cFiles &) = delete;

    std::string GetWarmUp() const { return mFolder / "small.lwo"; }

    std::string Write(const std::string &name, const std::string &bytes) const
    {
        std::string path = mFolder / name;
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

    cCost Measure(const std::string &side, const std::string &path) const
    {
        const std::string command =
            "/proc/" + Id() + "/exe --run " + side + " '" + GetWarmUp() + "' '" + path + "'";
        FILE *process = popen(command.c_str(), "r");
        cCost cost;
        if (!process ||
            std::fscanf(process, "%lf %lf", &cost.mMilliseconds, &cost.mMebibytes) != 2 ||
            pclose(process) != 0) {
            std::fprintf(stderr, "bench-objects: a run failed: %s\n", command.c_str());
            std::exit(1);
        }
        return cost;
    }

private:
    static std::string Id() { return std::to_string(getpid()); }

    std::filesystem::path mFolder;
};

[[maybe_unused]] void CompareWithPeer(const cFiles &files, int triangles, bool isSmooth,
                                      int pairCount)
{
    const std::string path = files.Write("object.lwo", MakeMesh(triangles, isSmooth));
    std::vector<bench::cPair> times, memories;
    for (int i = 0; i < pairCount; i++) {
        const cCost ours = files.Measure("ours", path), peer = files.Measure("assimp", path);
        times.push_back({ours.mMilliseconds, peer.mMilliseconds});
        memories.push_back({ours.mMebibytes, peer.mMebibytes});
    }
    const std::string what =
        std::to_string(triangles) + (isSmooth ? " smooth" : " flat") + " triangles read";
    bench::PrintRow({what, "assimp", "ms (CPU)", "<=0.8"}, times);
    bench::PrintRow({what + ", memory", "assimp", "MiB", "<=0.5"}, memories);
}

void CompareWithPeers([[maybe_unused]] const cFiles &files, [[maybe_unused]] int pairCount)
{
#ifdef VYR_HAS_ASSIMP
    for (const bool isSmooth : {true, false})
        for (int triangles : {1000, 10000, 100000, 1000000})
            CompareWithPeer(files, triangles, isSmooth, pairCount);
#else
    bench::PrintSkip("objects read", "assimp is missing (libassimp-dev)");
#endif
}

// What one part of a large file costs, beside one of a small file.
void CompareGrowth(const cFiles &files, const std::string &part,
                   const std::function<std::string(int)> &make, int small, int large, int pairCount)
{
    const std::string smallFile = files.Write("small-part.lwo", make(small));
    const std::string largeFile = files.Write("large-part.lwo", make(large));
    const auto measure = [&](const std::string &path, int count) {
        return files.Measure("ours", path).mMilliseconds * 1e6 / count;
    };
    const auto pairs = bench::MeasurePairs(
        pairCount, [&] { return measure(largeFile, large); },
        [&] { return measure(smallFile, small); });
    bench::PrintRow({"a " + part + " of " + std::to_string(large), "of " + std::to_string(small),
                     "ns (CPU)", "<=2"},
                    pairs);
}
} // namespace

int main(int count, char **arguments)
{
    if (count == 5 && std::string(arguments[1]) == "--run")
        return PrintCost(arguments[2], arguments[3], arguments[4]) ? 0 : 1;
    const int pairCount = count > 2 ? std::atoi(arguments[2]) : defaultPairs;
    const cFiles files;
    CompareWithPeers(files, pairCount);
    CompareGrowth(
        files, "triangle", [](int triangles) { return MakeMesh(triangles, true); }, 1000, 1000000,
        pairCount);
    CompareGrowth(files, "surface", MakeManyChunks, 1000, 20000, pairCount);
    return 0;
}
