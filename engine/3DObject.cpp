#include "engine/3DObject.h"

namespace vyr
{
void c3DObject::CalculateNormals()
{
    cVertex *vertices = mVertices.data(); // a local: stored floats might else be the vector's own
    for (cPolygon &polygon : mPolygons) {
        if (polygon.mIndices.size() < 3)
            continue;
        const cVector3 p0 = vertices[size_t(polygon.mIndices[0])].mPosition;
        const cVector3 p1 = vertices[size_t(polygon.mIndices[1])].mPosition;
        const cVector3 p2 = vertices[size_t(polygon.mIndices[2])].mPosition;
        const cVector3 normal = (p1 - p0).Cross(p2 - p0);
        polygon.mNormal = normal;
        polygon.mNormal.Normalise();
        // Not normalised: its length is twice the area, so that large faces count more.
        for (int index : polygon.mIndices)
            vertices[size_t(index)].mNormal += normal;
    }
    for (cVertex &vertex : mVertices)
        vertex.mNormal.Normalise();
}

void c3DObject::BackupVertices() { mBackupVertices = mVertices; }

c3DObject::cRenderObject *c3DObject::CreateRenderObject()
{
    auto *object = new cRenderObject(mVertices, mPolygons);
    if (!mFile.empty())
        object->NoteFile(mFile);
    return object;
}
} // namespace vyr
