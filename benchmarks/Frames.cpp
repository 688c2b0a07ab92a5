// The show drawn in a window, frames spread evenly over its length:
//
//   bench-frames SHOW FRAMES [flat [PICTURE ROW]]
//
// Prints a line for each frame, its row and the milliseconds it took. All frames are drawn once
// before that, so that nothing is compiled or made ready in the frames that count. `flat` leaves
// only photos, words, logo, vignette and fades. With PICTURE, the frame at ROW is written there
// instead, as raw RGB from the bottom, 1280 by 720.

#include "benchmarks/FrameTimes.h"
#include "demo/Frame.h"

#include <epoxy/gl.h>

#include <cstdlib>
#include <cstring>

#include <unistd.h>

namespace
{
const int width = 1280, height = 720;

void WritePicture(const bench::cStage &stage, const char *path, double row)
{
    demo::DrawFrame(stage.GetShow(), row, row / demo::kRowsPerSecond);
    std::vector<unsigned char> pixels(size_t(width) * height * 3);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    bench::WritePixels(path, pixels);
}
} // namespace

int main(int count, char **arguments)
{
    if (count < 3 || chdir(arguments[1]) != 0) {
        std::fprintf(stderr, "bench-frames: needs the folder of a show and a number of frames\n");
        return 2;
    }
    bench::cStage stage(vyr::platform::ScreenWindowSystem(), width, height);
    if (count > 3 && std::strcmp(arguments[3], "flat") == 0)
        stage.FixToFlatLayers();
    if (count > 5)
        WritePicture(stage, arguments[4], std::atof(arguments[5]));
    else
        bench::PrintFrameTimes(std::atoi(arguments[2]), [&](double row) { stage.ShowFrame(row); });
}
