// A short recording with everything that its threads share. The thread sanitizer's run makes it
// too: there a race ends the program with a status of its own.

#include "tests/record/RecordRun.h"

namespace
{
using namespace record_test;

using RecordingThreads = cRecordTest;

TEST_F(RecordingThreads, DrawReadBackHashMeasureAndEncodeSideBySide)
{
    const test::cProcessResult result =
        Record(kSmall + tWords{"--from", "1260", "--to", "1280", "-o", "a.mp4", "--manifest",
                               "manifest.txt", "--flash-report", "flashes.txt"});
    EXPECT_EQ(result.mStatus, 0);
    EXPECT_EQ(result.mErrors, "");
    EXPECT_EQ(ManifestLines(Folder() / "manifest.txt").size(), 34u);
}

// The thread that writes stops the one that draws.
TEST_F(RecordingThreads, StopWhenTheEncoderIsGone)
{
    std::filesystem::remove(Folder() / "show/data/waiting.mp3");
    const test::cProcessResult result =
        Record(kSmall + tWords{"--from", "1260", "--to", "3000", "-o", "b.mp4"});
    EXPECT_EQ(result.mStatus, 1);
    EXPECT_NE(result.mErrors.find("waiting.mp3"), std::string::npos) << result.mErrors;
    EXPECT_FALSE(Exists("b.mp4"));
}
} // namespace
