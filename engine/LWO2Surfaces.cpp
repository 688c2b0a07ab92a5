#include "engine/LWO2Numbers.h"
#include "engine/LWO2Reader.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace vyr
{
using namespace lwo2;

namespace
{
bool IndexInBlock(std::string_view block, size_t offset, int &index)
{
    const auto byte = [&](size_t i) { return int(static_cast<unsigned char>(block[offset + i])); };
    if (offset + 2 > block.size())
        return false;
    index = byte(0) << 8 | byte(1);
    if (byte(0) != 0xFF)
        return true;
    if (offset + 4 > block.size())
        return false;
    index = byte(1) << 16 | byte(2) << 8 | byte(3);
    return true;
}
} // namespace

// Which polygon has which
// ---------------------------------------------------------------------------

bool cLWO2Reader::HasPolygonWithSurface()
{
    if (!mHasPolygonWithSurface)
        mHasPolygonWithSurface = std::any_of(
            mObject.mPolygons.begin(), mObject.mPolygons.end(),
            [](const c3DObject::cPolygon &polygon) { return polygon.mSurface != nullptr; });
    return *mHasPolygonWithSurface;
}

bool cLWO2Reader::ReadSurfaceNames(int remaining)
{
    if (remaining != 0 && HasPolygonWithSurface())
        return false; // the list would grow under polygons that point into it
    while (remaining > 0) {
        c3DObject::cSurface surface;
        const int length = c3DObject::ReadString(surface.mName, mFile);
        if (length == 0)
            return false;
        remaining -= length;
        mObject.mSurfaces.push_back(std::move(surface));
    }
    return remaining == 0;
}

bool cLWO2Reader::ReadPolygonTags(int remaining)
{
    std::string type;
    if (!ReadId(mFile, type))
        return false;
    remaining -= 4;
    if (type != "SURF")
        return SkipToEven(mFile, remaining);
    while (remaining > 0) {
        int polygon = 0, tag = 0;
        if (!ReadIndex(mFile, polygon, remaining) || !ReadU2(mFile, tag))
            return false;
        remaining -= 2;
        if (size_t(polygon) >= mObject.mPolygons.size() || size_t(tag) >= mObject.mSurfaces.size())
            return false;
        mObject.mPolygons[size_t(polygon)].mSurface = &mObject.mSurfaces[size_t(tag)];
        mHasPolygonWithSurface = true;
    }
    return remaining == 0;
}

// What a surface looks like -----------------------------------------------------------------------

// The first surface of that name, else the last one; null when there is none at all.
c3DObject::cSurface *cLWO2Reader::FindSurface(const std::string &name)
{
    std::vector<c3DObject::cSurface> &surfaces = mObject.mSurfaces;
    for (; mNamedCount < surfaces.size(); mNamedCount++)
        mSurfacesByName.try_emplace(surfaces[mNamedCount].mName, mNamedCount);
    const auto found = mSurfacesByName.find(name);
    if (found != mSurfacesByName.end())
        return &surfaces[found->second];
    return surfaces.empty() ? nullptr : &surfaces.back();
}

bool cLWO2Reader::ReadColor(cColor &color)
{
    color.a = 1.0f;
    const int envelopeLength = 2;
    return ReadFloat(mFile, color.r) && ReadFloat(mFile, color.g) && ReadFloat(mFile, color.b) &&
           Skip(mFile, envelopeLength);
}

// Of a block only the image matters. It is compared with the first clip alone: textured surfaces
// refer to the first clip, and one that refers to another stays untextured.
bool cLWO2Reader::ReadBlock(int size, c3DObject::cSurface &surface)
{
    std::string block(static_cast<size_t>(size), '\0');
    if (std::fread(block.data(), 1, block.size(), mFile) != block.size())
        return false;
    const size_t image = block.find("IMAG");
    if (image == std::string::npos)
        return true;
    int clip = 0;
    if (!IndexInBlock(block, image + 6, clip)) // after the name and its size
        return false;
    if (!mObject.mClips.empty() && mObject.mClips[0].mClipIndex == clip)
        surface.mTexture = mObject.mClips[0].mTexture;
    return true;
}

bool cLWO2Reader::ReadSurfacePart(int &remaining, c3DObject::cSurface &surface)
{
    std::string id;
    int size = 0;
    if (!ReadId(mFile, id) || !ReadU2(mFile, size))
        return false;
    const int colorLength = 14; // whatever the stated size
    remaining -= 6 + (id == "COLR" ? colorLength : size) + (size & 1);
    const bool isRead = id == "COLR"   ? ReadColor(surface.mColor)
                        : id == "BLOK" ? ReadBlock(size, surface)
                                       : Skip(mFile, size);
    return isRead && Skip(mFile, size & 1);
}

bool cLWO2Reader::ReadSurface(int remaining)
{
    std::string name, source;
    const int nameLength = c3DObject::ReadString(name, mFile);
    const int sourceLength = nameLength > 0 ? c3DObject::ReadString(source, mFile) : 0;
    c3DObject::cSurface *surface = FindSurface(name);
    if (sourceLength == 0 || !surface || sourceLength > remaining)
        return false;
    remaining -= sourceLength;
    remaining -= nameLength;
    while (remaining > 0)
        if (!ReadSurfacePart(remaining, *surface))
            return false;
    return remaining == 0;
}
} // namespace vyr
