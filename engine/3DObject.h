#pragma once

#include "engine/Color.h"
#include "engine/Vector3.h"

#include <cstdio>
#include <string>
#include <vector>

namespace vyr
{
/// A mesh as its LWO2 file describes it, and the arrays that it is drawn from.
class c3DObject
{
public:
    /// One vertex.
    struct cVertex
    {
        cVector3 mPosition;
        cVector3 mNormal;        ///< smoothed; zero until CalculateNormals
        float mReserved[4] = {}; ///< travels with the vertex; nothing reads or writes it
        float mTexCoord[2] = {}; ///< u, v
    };

    /// One surface: what a polygon looks like.
    struct cSurface
    {
        std::string mName;
        cColor mColor{1.0f, 1.0f, 1.0f, 1.0f};
        int mTexture = -1; ///< texture id, -1 for none
    };

    /// One polygon.
    struct cPolygon
    {
        std::vector<int> mIndices;    ///< into mVertices
        cSurface *mSurface = nullptr; ///< an element of mSurfaces, which therefore must not grow
        cVector3 mNormal;             ///< unit length; zero until CalculateNormals
    };

    /// One still image of a clip.
    struct cTexture
    {
        int mClipIndex = 0;
        int mTexture = -1; ///< texture id, -1 for none
    };

    /// The mesh flattened for OpenGL's vertex arrays: tightly packed, positions, normals, colours
    /// and texture coordinates apart. It keeps no reference to the mesh that it was made from. Its
    /// outline and texture coordinates outlive it (they are not freed): render objects live as long
    /// as the show.
    class cRenderObject
    {
    public:
        /// Every index must lie in `vertices`. A polygon without a surface is opaque red.
        cRenderObject(const std::vector<cVertex> &vertices, const std::vector<cPolygon> &polygons);
        ~cRenderObject();
        cRenderObject(const cRenderObject &) = delete;
        cRenderObject &operator=(const cRenderObject &) = delete;

        float *mPositions = nullptr; ///< x, y, z a vertex
        int *mIndices = nullptr;     ///< of all polygons, one after the other
        int *mLineIndices = nullptr; ///< each polygon's closed outline as pairs: 2 * mIndexCount
        int mIndexCount = 0;
        float *mColors = nullptr;  ///< r, g, b, a a vertex; unset where no polygon uses the vertex
        float *mNormals = nullptr; ///< x, y, z a vertex
        float *mTexCoords = nullptr; ///< s, t a vertex; t runs down, v ran up
        int mVertexCount = 0;
        int mPolygonCount = 0;
        int mTexture = -1; ///< of the first polygon's surface; -1 without

    private:
        friend class c3DObject;
        void Exchange(cRenderObject &other);
        void NoteFile(const std::string &file);
        static std::vector<cRenderObject *> MadeFrom(const std::string &file);
        void CopyVertices(const std::vector<cVertex> &vertices);
        void FlattenPolygons(const std::vector<cPolygon> &polygons);
    };

    /// Reads an LWO2 object from `filename` (under 200 characters, relative to the working
    /// directory), with the textures that it names and all normals. The caller owns the result.
    /// Null when there is no such file, it is no LWO2 object, or it is malformed. The texture
    /// manager must exist. docs/formats.md describes the part of the format that is read.
    static c3DObject *CreateFromLWO2(const std::string &filename);

    /// The file `filename` has changed: every render object made from it since is drawn from what
    /// the file holds now, at the same address; meshes stay as they were read. False, and nothing
    /// changes, when it can't be read as CreateFromLWO2 does.
    static bool Refresh(const std::string &filename);

    /// Reads the chunk whose 4-byte `tag` has just been read. True when all of the chunk, its size
    /// field included, was consumed; false when the caller must skip it, starting at the size
    /// field. A malformed chunk gives false too.
    static bool HandleTag(const std::string &tag, std::FILE *file, c3DObject *object);

    /// Appends a zero-terminated string, padded to an even length, to `text`; the number of bytes
    /// consumed, or 0 when the file ends first.
    static int ReadString(std::string &text, std::FILE *file);

    /// Sets every polygon's normal from its first three vertices, and adds it, weighted by the
    /// area, to those of its vertices, which are then brought to length 1. Polygons of fewer than
    /// three vertices have none.
    void CalculateNormals();

    /// Keeps a copy of the vertices, so that an animation can put them back.
    void BackupVertices();

    /// The arrays to draw this mesh from; the caller owns them. A refresh of the mesh's file
    /// changes them.
    cRenderObject *CreateRenderObject();

    std::vector<cVertex> mVertices;
    std::vector<cVertex> mBackupVertices;
    std::vector<cPolygon> mPolygons;
    std::vector<cSurface> mSurfaces;
    std::vector<cTexture> mClips;
    std::string mFile; ///< that it was read from; empty: none
};
} // namespace vyr
