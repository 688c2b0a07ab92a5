#pragma once

#include "tools/check/Findings.h"
#include "tools/check/LwoCursor.h"

#include <string>
#include <string_view>
#include <vector>

namespace check
{
/// Goes through an LWO2 file chunk by chunk and names the place of everything that the engine reads
/// otherwise than it was meant, or does not read at all. Builds nothing.
class cLwoWalk
{
public:
    cLwoWalk(const std::string &file, std::string_view bytes, cFindings &findings)
        : mFile(file), mBytes(bytes), mFindings(findings)
    {}

    void Walk();
    /// The files that the clips name, as the engine opens them.
    const std::vector<std::string> &Images() const { return mImages; }

private:
    bool ReadForm(cLwoCursor &cursor);
    void ReadChunk(const std::string &id, std::string_view body);
    void ReadPoints(std::string_view body);
    void ReadMap(const std::string &id, std::string_view body);
    void ReadMapEntry(const std::string &id, cLwoCursor &cursor);
    void ReadPolygons(std::string_view body);
    bool ReadPolygon(cLwoCursor &cursor);
    void ReadPolygonTags(std::string_view body);
    void ReadSurfaceNames(std::string_view body);
    void ReadSurface(std::string_view body);
    void ReadSurfacePart(const std::string &surface, cLwoCursor &cursor);
    void ReadBlock(const std::string &surface, std::string_view body);
    void ReadClip(std::string_view body);
    void ReadStill(const std::string &path);
    void CheckWhole();
    void CheckIndices();
    void CheckEnd(const std::string &place, const cLwoCursor &cursor);
    void Fault(const std::string &place, const std::string &what);

    const std::string mFile;
    const std::string_view mBytes;
    cFindings &mFindings;
    size_t mPointCount = 0, mSplitCount = 0; // points, and copies of them that VMAD makes
    std::vector<std::vector<int>> mPolygons;
    std::vector<bool> mHasSurface; // of each polygon
    std::vector<std::string> mSurfaces;
    std::vector<int> mClips;
    std::vector<std::string> mImages;
};
} // namespace check
