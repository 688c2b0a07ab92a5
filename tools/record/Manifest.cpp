#include "tools/record/Manifest.h"

#include "tools/record/Failure.h"

#include <cerrno>
#include <cstring>

namespace record
{
cTextFile::cTextFile(const std::string &path)
    : mOutput(path), mFile(std::fopen(mOutput.GetTemporaryPath().c_str(), "w"), std::fclose)
{
    if (!mFile)
        throw cFailure(path + ": can't be written: " + std::strerror(errno));
}

void cTextFile::WriteLine(const std::string &line)
{
    if (std::fprintf(mFile.get(), "%s\n", line.c_str()) < 0)
        throw cFailure(mOutput.GetPath() + ": can't be written: " + std::strerror(errno));
}

void cTextFile::Commit()
{
    const bool isWhole = std::ferror(mFile.get()) == 0;
    const bool isClosed = std::fclose(mFile.release()) == 0;
    if (!isWhole || !isClosed)
        throw cFailure(mOutput.GetPath() + ": can't be written: " + std::strerror(errno));
    mOutput.Commit();
}

cManifest::cManifest(const std::string &path, const std::string &remark) : mFile(path)
{
    mFile.WriteLine("# " + remark);
    mFile.WriteLine("# frame, row, XXH3-128 of the pixels (RGBA, rows top first)");
}

void cManifest::Take(const cDrawnFrame &frame)
{
    char line[96];
    std::snprintf(line, sizeof line, "%lld %.6f %s", static_cast<long long>(frame.mFrame),
                  frame.mRow, HashPixels(frame.mPicture).c_str());
    mFile.WriteLine(line);
}

void cManifest::Finish(const std::string &remark)
{
    if (!remark.empty())
        mFile.WriteLine("# " + remark);
    mFile.Commit();
}
} // namespace record
