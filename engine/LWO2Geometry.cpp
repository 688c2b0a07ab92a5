#include "engine/LWO2Numbers.h"
#include "engine/LWO2Reader.h"

#include <algorithm>
#include <utility>

namespace vyr
{
using namespace lwo2;

namespace
{
const int maximumCorners = 0x3FF;

const size_t pointBytes = 12;
const size_t triangleBytes = 8;     // most polygons are triangles
const size_t splitVertexBytes = 12; // with short indices

// A chunk may state any size, so memory is asked for ahead only as far as the file goes. Below this
// it is not worth a look at the file's length.
const size_t worthReserving = 4096;

size_t CountBytesLeft(std::FILE *file)
{
    const long here = std::ftell(file);
    if (here < 0 || std::fseek(file, 0, SEEK_END) != 0)
        return 0;
    const long end = std::ftell(file);
    std::fseek(file, here, SEEK_SET);
    return size_t(std::max(end - here, 0L));
}

// Room for `size` bytes of records of `recordBytes` each, which `file` is about to give. At least
// twice what there was: many small chunks would else move the list once for each.
template <typename T>
void ReserveMore(std::vector<T> &list, std::FILE *file, size_t size, size_t recordBytes)
{
    if (size < worthReserving)
        return;
    const size_t needed = list.size() + std::min(size, CountBytesLeft(file)) / recordBytes;
    if (needed > list.capacity())
        list.reserve(std::max(needed, 2 * list.capacity()));
}

template <typename T>
bool IsIndexOf(const std::vector<T> &list, int index)
{
    return index >= 0 && size_t(index) < list.size();
}

bool ReadPosition(std::FILE *file, cVector3 &position)
{
    return ReadFloat(file, position.x) && ReadFloat(file, position.y) &&
           ReadFloat(file, position.z);
}
} // namespace

bool cLWO2Reader::ReadPoints(uint32_t size)
{
    ReserveMore(mObject.mVertices, mFile, size, pointBytes);
    for (size_t i = 0; i < size / pointBytes; i++) {
        c3DObject::cVertex vertex;
        if (!ReadPosition(mFile, vertex.mPosition))
            return false;
        mObject.mVertices.push_back(vertex);
    }
    return Skip(mFile, int(size & 1)); // other bytes after the last whole point are not skipped
}

// Texture coordinates -----------------------------------------------------------------------------

bool cLWO2Reader::ReadTexCoord(float (&texCoord)[2], int &remaining)
{
    remaining -= 8;
    return ReadFloat(mFile, texCoord[0]) && ReadFloat(mFile, texCoord[1]);
}

// The common head of VMAP and VMAD; of all maps only two-dimensional texture coordinates are read.
bool cLWO2Reader::ReadMapHeader(int &remaining, bool &isTexCoordMap)
{
    std::string type, name;
    int dimension = 0;
    if (!ReadId(mFile, type) || !ReadU2(mFile, dimension))
        return false;
    const int nameLength = c3DObject::ReadString(name, mFile);
    remaining -= 6 + nameLength;
    isTexCoordMap = type == "TXUV" && dimension == 2;
    return nameLength > 0 && remaining >= 0;
}

bool cLWO2Reader::ReadVertexMap(int remaining)
{
    bool isTexCoordMap = false;
    if (!ReadMapHeader(remaining, isTexCoordMap))
        return false;
    if (!isTexCoordMap)
        return SkipToEven(mFile, remaining);
    while (remaining > 0) {
        int index = 0;
        if (!ReadIndex(mFile, index, remaining) || !IsIndexOf(mObject.mVertices, index))
            return false;
        if (!ReadTexCoord(mObject.mVertices[size_t(index)].mTexCoord, remaining))
            return false;
    }
    return remaining == 0;
}

// One polygon sees one of its vertices with a texture coordinate of its own: it gets a copy of it.
bool cLWO2Reader::SplitVertex(int &remaining)
{
    int index = 0, polygonIndex = 0;
    if (!ReadIndex(mFile, index, remaining) || !ReadIndex(mFile, polygonIndex, remaining))
        return false;
    if (!IsIndexOf(mObject.mVertices, index) || !IsIndexOf(mObject.mPolygons, polygonIndex))
        return false;
    c3DObject::cVertex vertex = mObject.mVertices[size_t(index)];
    if (!ReadTexCoord(vertex.mTexCoord, remaining))
        return false;
    mObject.mVertices.push_back(vertex);
    const int copy = int(mObject.mVertices.size()) - 1;
    std::vector<int> &indices = mObject.mPolygons[size_t(polygonIndex)].mIndices;
    std::replace(indices.begin(), indices.end(), index, copy);
    return true;
}

bool cLWO2Reader::ReadDiscontinuousMap(int remaining)
{
    bool isTexCoordMap = false;
    if (!ReadMapHeader(remaining, isTexCoordMap))
        return false;
    if (!isTexCoordMap)
        return SkipToEven(mFile, remaining);
    ReserveMore(mObject.mVertices, mFile, size_t(remaining), splitVertexBytes);
    while (remaining > 0)
        if (!SplitVertex(remaining))
            return false;
    return remaining == 0;
}

// Polygons ----------------------------------------------------------------------------------------

bool cLWO2Reader::ReadPolygon(int &remaining)
{
    int header = 0;
    if (!ReadU2(mFile, header))
        return false;
    const size_t count = size_t(header & maximumCorners); // the six bits above are flags
    int indices[maximumCorners];
    for (size_t i = 0; i < count; i++) {
        if (!ReadU2(mFile, indices[i])) // contract: two bytes, unlike every other index
            return false;
        mLargestIndex = std::max(mLargestIndex, indices[i]);
    }
    remaining -= 2 + 2 * int(count);
    mObject.mPolygons.emplace_back().mIndices.assign(indices, indices + count);
    return true;
}

cLWO2Reader::eChunk cLWO2Reader::ReadPolygons(int remaining)
{
    std::string type;
    if (!ReadId(mFile, type))
        return eChunk::Malformed;
    remaining -= 4;
    if (type != "FACE") {
        // contract: only faces are known. The caller takes the type for a size, which ends the file
        // here.
        return std::fseek(mFile, -4, SEEK_CUR) == 0 ? eChunk::Skip : eChunk::Malformed;
    }
    if (remaining > 0)
        ReserveMore(mObject.mPolygons, mFile, size_t(remaining), triangleBytes);
    while (remaining > 0)
        if (!ReadPolygon(remaining))
            return eChunk::Malformed;
    return remaining == 0 ? eChunk::Consumed : eChunk::Malformed;
}
} // namespace vyr
