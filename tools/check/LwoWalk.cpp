#include "tools/check/LwoWalk.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace check
{
namespace
{
std::string Numbered(const char *what, size_t number)
{
    std::string text(what);
    return text.append(" ").append(std::to_string(number));
}

std::string Found(size_t number) { return ", found " + std::to_string(number); }

// What the engine opens of a clip's path; empty when it opens nothing.
std::string ImageOf(const std::string &path)
{
    size_t start = path.rfind("data/");
    if (start == std::string::npos)
        start = path.rfind("Data/");
    return start == std::string::npos ? "" : path.substr(start);
}

// The engine opens the named file, wherever it is; a viewer should know that.
bool StaysInFolder(const std::string &image)
{
    const std::string first = std::filesystem::path(image).lexically_normal().begin()->string();
    return first == "data" || first == "Data";
}
} // namespace

void cLwoWalk::Walk()
{
    cLwoCursor cursor(mBytes);
    if (!ReadForm(cursor))
        return;
    while (cursor.Left() > 0) {
        const std::string id = cursor.Id();
        const size_t size = cursor.U4();
        if (cursor.IsShort() || size > cursor.Left()) {
            Fault("chunk " + tools::Quote(id), "expected its " + std::to_string(size) +
                                                   " bytes, found the file's end after " +
                                                   std::to_string(cursor.Left()));
            return;
        }
        ReadChunk(id, cursor.Take(size));
        if (cursor.Left() > 0)
            cursor.Pad(size);
    }
    CheckWhole();
}

bool cLwoWalk::ReadForm(cLwoCursor &cursor)
{
    const std::string id = cursor.Id();
    const size_t size = cursor.U4();
    const std::string type = cursor.Id();
    if (id != "FORM" || type != "LWO2") {
        Fault("", "expected an LWO2 object (FORM, LWO2), found " + tools::Quote(id) + ", " +
                      tools::Quote(type));
        return false;
    }
    if (size + 8 != mBytes.size())
        Fault("FORM", "expected a size of " + std::to_string(mBytes.size() - 8) +
                          ", the file's less 8" + Found(size));
    return true;
}

void cLwoWalk::ReadChunk(const std::string &id, std::string_view body)
{
    if (id == "PNTS")
        ReadPoints(body);
    else if (id == "VMAP" || id == "VMAD")
        ReadMap(id, body);
    else if (id == "POLS")
        ReadPolygons(body);
    else if (id == "PTAG")
        ReadPolygonTags(body);
    else if (id == "TAGS")
        ReadSurfaceNames(body);
    else if (id == "SURF")
        ReadSurface(body);
    else if (id == "CLIP")
        ReadClip(body);
}

// Points and texture coordinates
// -------------------------------------------------------------------

void cLwoWalk::ReadPoints(std::string_view body)
{
    if (body.size() % 12 != 0)
        Fault("chunk PNTS", "expected 12 bytes a point" + Found(body.size()) + " bytes");
    cLwoCursor cursor(body);
    for (; cursor.Left() >= 12; mPointCount++)
        for (int i = 0; i < 3; i++)
            if (!std::isfinite(cursor.F4()))
                Fault(Numbered("point", mPointCount), "expected finite coordinates");
}

void cLwoWalk::ReadMap(const std::string &id, std::string_view body)
{
    cLwoCursor cursor(body);
    const bool isTexCoordMap = cursor.Id() == "TXUV";
    const bool isPlane = cursor.U2() == 2;
    cursor.S0();
    while (isTexCoordMap && isPlane && cursor.Left() > 0 && !cursor.IsShort())
        ReadMapEntry(id, cursor);
    CheckEnd("chunk " + id, cursor);
}

void cLwoWalk::ReadMapEntry(const std::string &id, cLwoCursor &cursor)
{
    const auto point = size_t(cursor.Index());
    if (point >= mPointCount + mSplitCount)
        Fault("chunk " + id, "expected a point of the list above" + Found(point));
    if (id == "VMAD") {
        const auto polygon = size_t(cursor.Index());
        if (polygon >= mPolygons.size())
            Fault("chunk VMAD", "expected a polygon of the list above" + Found(polygon));
        mSplitCount++;
    }
    cursor.Take(8);
}

// Polygons
// -----------------------------------------------------------------------------------------

void cLwoWalk::ReadPolygons(std::string_view body)
{
    cLwoCursor cursor(body);
    const std::string type = cursor.Id();
    if (type != "FACE") {
        Fault("chunk POLS", "expected polygons of type FACE, found " + tools::Quote(type) +
                                ": the engine reads no further");
        return;
    }
    while (cursor.Left() > 0)
        if (!ReadPolygon(cursor))
            return;
    CheckEnd("chunk POLS", cursor);
}

// False where the rest of the list can't be told from noise.
bool cLwoWalk::ReadPolygon(cLwoCursor &cursor)
{
    const std::string place = Numbered("polygon", mPolygons.size());
    const auto count = size_t(cursor.U2() & 0x3FF);
    std::vector<int> indices;
    for (size_t i = 0; i < count; i++)
        indices.push_back(cursor.U2());
    if (cursor.IsShort()) {
        Fault("chunk POLS", "expected it to end behind a polygon, found its end in " + place);
        return false;
    }
    for (int index : indices) {
        if (index >> 8 != 0xFF)
            continue;
        Fault(place, "expected indices of 2 bytes, found one of 4, which is read as two");
        return false;
    }
    if (count != 3)
        Fault(place, "expected a triangle" + Found(count) + " corners");
    mPolygons.push_back(indices);
    mHasSurface.push_back(false);
    return true;
}

void cLwoWalk::ReadPolygonTags(std::string_view body)
{
    cLwoCursor cursor(body);
    if (cursor.Id() != "SURF")
        return;
    while (cursor.Left() > 0 && !cursor.IsShort()) {
        const auto polygon = size_t(cursor.Index()), surface = size_t(cursor.U2());
        if (polygon >= mPolygons.size())
            Fault("chunk PTAG", "expected a polygon of the list above" + Found(polygon));
        else
            mHasSurface[polygon] = true;
        if (surface >= mSurfaces.size())
            Fault("chunk PTAG", "expected a surface of the list above" + Found(surface));
    }
    CheckEnd("chunk PTAG", cursor);
}

// Surfaces
// -----------------------------------------------------------------------------------------

void cLwoWalk::ReadSurfaceNames(std::string_view body)
{
    cLwoCursor cursor(body);
    while (cursor.Left() > 0 && !cursor.IsShort())
        mSurfaces.push_back(cursor.S0());
    CheckEnd("chunk TAGS", cursor);
}

void cLwoWalk::ReadSurface(std::string_view body)
{
    cLwoCursor cursor(body);
    const std::string name = cursor.S0();
    cursor.S0();
    if (std::find(mSurfaces.begin(), mSurfaces.end(), name) == mSurfaces.end())
        Fault("surface " + tools::Quote(name),
              "expected a surface of the list above (TAGS): it would change the last one");
    while (cursor.Left() > 0 && !cursor.IsShort())
        ReadSurfacePart(name, cursor);
    CheckEnd("surface " + tools::Quote(name), cursor);
}

void cLwoWalk::ReadSurfacePart(const std::string &surface, cLwoCursor &cursor)
{
    const std::string id = cursor.Id();
    const auto size = size_t(cursor.U2());
    const std::string_view body = cursor.Take(size);
    cursor.Pad(size);
    if (id == "COLR" && size != 14)
        Fault("surface " + tools::Quote(surface),
              "expected a COLR of 14 bytes, as which it is read" + Found(size));
    if (id == "BLOK")
        ReadBlock(surface, body);
}

// The engine looks for the four letters alone, and compares with the first clip alone.
void cLwoWalk::ReadBlock(const std::string &surface, std::string_view body)
{
    const size_t image = body.find("IMAG");
    if (image == std::string_view::npos)
        return;
    cLwoCursor cursor(body.substr(image));
    cursor.Take(6);
    const int clip = cursor.Index();
    const std::string place = "surface " + tools::Quote(surface);
    if (cursor.IsShort())
        Fault(place, "expected a clip behind IMAG, found the end of the block");
    else if (mClips.empty())
        Fault(place, "expected its clip above it, found no clip there");
    else if (clip != mClips[0])
        Fault(place, "expected the first clip (" + std::to_string(mClips[0]) + ")" +
                         Found(size_t(clip)) + ": only the first one is looked up");
}

void cLwoWalk::ReadClip(std::string_view body)
{
    cLwoCursor cursor(body);
    const int clip = int(cursor.U4());
    while (cursor.Left() > 0 && !cursor.IsShort()) {
        const std::string id = cursor.Id();
        const auto size = size_t(cursor.U2());
        cLwoCursor part(cursor.Take(size));
        cursor.Pad(size);
        if (id != "STIL")
            continue;
        ReadStill(part.S0());
        CheckEnd("chunk CLIP", part);
        mClips.push_back(clip);
    }
    CheckEnd("chunk CLIP", cursor);
}

void cLwoWalk::ReadStill(const std::string &path)
{
    const std::string image = ImageOf(path);
    std::error_code ignored;
    if (image.empty())
        Fault("chunk CLIP", "expected a path with data/ in it, found " + tools::Quote(path));
    else if (!StaysInFolder(image))
        Fault("chunk CLIP", "expected a path that stays in data/, found " + tools::Quote(image));
    else if (!std::filesystem::is_regular_file(image, ignored))
        Fault("chunk CLIP", "expected an image file, found none at " + image);
    else
        mImages.push_back(image);
}

// The whole
// ----------------------------------------------------------------------------------------

void cLwoWalk::CheckWhole()
{
    if (mPointCount == 0)
        Fault("", "expected points (PNTS), found none");
    if (mPolygons.empty()) {
        Fault("", "expected polygons (POLS), found none");
        return;
    }
    CheckIndices();
    const auto bare = size_t(std::count(mHasSurface.begin(), mHasSurface.end(), false));
    if (!mHasSurface[0])
        Fault("polygon 0", "expected a surface, whose texture is the whole object's, found none");
    else if (bare > 0)
        mFindings.Warn(mFile, "",
                       std::to_string(bare) + " polygons without a surface are drawn red");
}

void cLwoWalk::CheckIndices()
{
    for (size_t i = 0; i < mPolygons.size(); i++)
        for (int index : mPolygons[i])
            if (size_t(index) >= mPointCount)
                Fault(Numbered("polygon", i), "expected an index below " +
                                                  std::to_string(mPointCount) +
                                                  Found(size_t(index)));
}

void cLwoWalk::CheckEnd(const std::string &place, const cLwoCursor &cursor)
{
    if (cursor.IsShort())
        Fault(place, "expected its counts to come out at its end, found too few bytes");
}

void cLwoWalk::Fault(const std::string &place, const std::string &what)
{
    mFindings.Fault(mFile, place, what);
}
} // namespace check
