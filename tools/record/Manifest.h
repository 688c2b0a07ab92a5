#pragma once

#include "tools/record/FrameWriter.h"
#include "tools/record/OutputFile.h"

#include <cstdio>
#include <memory>
#include <string>

namespace record
{
/// A text file that is written line by line and takes its name when it is complete.
class cTextFile
{
public:
    explicit cTextFile(const std::string &path); ///< throws cFailure
    void WriteLine(const std::string &line);
    void Commit(); ///< throws cFailure when a line could not be written

private:
    cOutputFile mOutput;
    std::unique_ptr<FILE, int (*)(FILE *)> mFile;
};

/// One line a frame: its number, its row, the hash of its pixels (HashPixels). Lines that begin
/// with # are remarks; all others depend on the frames alone, so that the manifests of pieces, one
/// after the other, are the manifest of the whole.
class cManifest : public cFrameSink
{
public:
    /// `remark` stands in the first line. Throws cFailure.
    cManifest(const std::string &path, const std::string &remark);
    void Take(const cDrawnFrame &frame) override;
    void Finish(const std::string &remark = {}); ///< throws cFailure

private:
    cTextFile mFile;
};
} // namespace record
