#pragma once

#include "engine/3DObject.h"

#include <cstdint>
#include <cstdio>
#include <map>
#include <optional>
#include <string>

namespace vyr
{
/// Reads the chunks of an LWO2 object into a mesh, and carries along what makes each of them cost
/// no more for all that came before it. docs/formats.md describes what is read.
///
/// Chunks come in file order, and later ones rely on earlier ones: surfaces (TAGS) before what
/// refers to them (PTAG, SURF), polygons before PTAG and VMAD, points before VMAP and VMAD, images
/// (CLIP) before the surfaces that show them. A function here that returns false has met a
/// malformed file.
class cLWO2Reader
{
public:
    enum class eChunk
    {
        Consumed,
        Skip, ///< the caller skips it, starting at the size field
        Malformed
    };

    /// Reads from where `file` stands into `object`, which may hold something already. While the
    /// reader lives, nobody else changes the object's polygons and surfaces.
    cLWO2Reader(std::FILE *file, c3DObject &object) : mFile(file), mObject(object) {}

    /// All chunks up to the position `end`, or to the file's end where that comes first.
    bool ReadChunks(int end);

    /// Whether all polygons that were read find their vertices, now that all is read.
    bool AreIndicesInRange() const;

    /// The chunk whose `tag` has just been read.
    eChunk ReadChunk(const std::string &tag);

private:
    bool SkipChunk();
    bool ReadKnownChunk(const std::string &tag, uint32_t size);

    // LWO2Geometry.cpp: points, polygons, texture coordinates
    bool ReadPoints(uint32_t size);
    bool ReadMapHeader(int &remaining, bool &isTexCoordMap);
    bool ReadTexCoord(float (&texCoord)[2], int &remaining);
    bool ReadVertexMap(int remaining);
    bool ReadDiscontinuousMap(int remaining);
    bool SplitVertex(int &remaining);
    eChunk ReadPolygons(int remaining);
    bool ReadPolygon(int &remaining);

    // LWO2Surfaces.cpp: which polygon has which surface, and what that looks like
    bool ReadSurfaceNames(int remaining);
    bool HasPolygonWithSurface();
    bool ReadPolygonTags(int remaining);
    bool ReadSurface(int remaining);
    c3DObject::cSurface *FindSurface(const std::string &name);
    bool ReadSurfacePart(int &remaining, c3DObject::cSurface &surface);
    bool ReadColor(cColor &color);
    bool ReadBlock(int size, c3DObject::cSurface &surface);

    // LWO2Images.cpp
    bool ReadClip(int remaining);
    bool ReadClipPart(int &remaining, int clip);

    std::FILE *mFile;
    c3DObject &mObject;
    int mLargestIndex = -1;                        // that a polygon was read with
    std::optional<bool> mHasPolygonWithSurface;    // not known before somebody asks
    std::map<std::string, size_t> mSurfacesByName; // of equal names the first
    size_t mNamedCount = 0;                        // so many surfaces are in the map
};
} // namespace vyr
