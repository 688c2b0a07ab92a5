// Immediate mode and client arrays: vertices are gathered here and drawn from one buffer.

#include "base/Assert.h"
#include "platform/web/ShaderText.h"
#include "platform/web/State.h"
#include "platform/web/WebGL.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace vyr::web
{
namespace
{
struct cVertex
{
    float mPosition[3] = {0, 0, 0};
    float mColor[4] = {1, 1, 1, 1};
    float mTexCoord[2] = {0, 0};
    float mNormal[3] = {0, 0, 1};
};

/// Floats of the caller's, `mSize` of them for each vertex.
struct cClientArray
{
    bool mIsOn = false;
    GLint mSize = 0;
    GLsizei mStride = 0; ///< bytes; 0: packed
    const char *mData = nullptr;

    void Copy(size_t index, float *to) const
    {
        if (!mIsOn || !mData)
            return;
        const size_t size = size_t(mSize) * sizeof(float);
        std::memcpy(to, mData + index * (mStride ? size_t(mStride) : size), size);
    }
};

struct cBuffers
{
    GLuint mVertices = 0, mIndices = 0, mQuadIndices = 0;
    GLsizei mQuads = 0; ///< that mQuadIndices has room for
};

cVertex latest; // colour, coordinate and normal that the next vertex takes
GLenum primitive = 0;
std::vector<cVertex> vertices;
cClientArray positions, colors, texCoords, normals;
cBuffers buffers;

void SetAttribute(eAttribute place, GLint size, size_t offset)
{
    glEnableVertexAttribArray(place);
    glVertexAttribPointer(place, size, GL_FLOAT, GL_FALSE, sizeof(cVertex),
                          reinterpret_cast<const void *>(offset));
}

// One vertex array for good, whose buffer is filled anew for each drawing.
void MakeBuffers()
{
    GLuint array = 0;
    glGenVertexArrays(1, &array);
    glBindVertexArray(array);
    glGenBuffers(1, &buffers.mVertices);
    glGenBuffers(1, &buffers.mIndices);
    glGenBuffers(1, &buffers.mQuadIndices);
    glBindBuffer(GL_ARRAY_BUFFER, buffers.mVertices);
    SetAttribute(POSITION, 3, offsetof(cVertex, mPosition));
    SetAttribute(COLOR, 4, offsetof(cVertex, mColor));
    SetAttribute(TEX_COORD, 2, offsetof(cVertex, mTexCoord));
    SetAttribute(NORMAL, 3, offsetof(cVertex, mNormal));
}

void Prepare()
{
    PrepareProgram(GetFixedPipeline());
    if (buffers.mVertices == 0)
        MakeBuffers();
    glBufferData(GL_ARRAY_BUFFER, std::ptrdiff_t(vertices.size() * sizeof(cVertex)),
                 vertices.data(), GL_STREAM_DRAW);
}

void UploadIndices(GLuint buffer, const std::vector<unsigned> &indices, GLenum usage)
{
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffer);
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, std::ptrdiff_t(indices.size() * sizeof(unsigned)),
                 indices.data(), usage);
}

// Two triangles a quad: 0 1 3, 1 2 3, as the software driver of the desktop cuts it.
void BindQuadIndices(GLsizei quads)
{
    if (quads <= buffers.mQuads) {
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffers.mQuadIndices);
        return;
    }
    buffers.mQuads = std::max(quads, 2 * buffers.mQuads);
    std::vector<unsigned> indices;
    for (unsigned first = 0; first < 4 * unsigned(buffers.mQuads); first += 4)
        for (unsigned corner : {0u, 1u, 3u, 1u, 2u, 3u})
            indices.push_back(first + corner);
    UploadIndices(buffers.mQuadIndices, indices, GL_STATIC_DRAW);
}

void DrawQuads()
{
    const GLsizei quads = GLsizei(vertices.size() / 4);
    BindQuadIndices(quads);
    glDrawElements(GL_TRIANGLES, 6 * quads, GL_UNSIGNED_INT, nullptr);
}

void DrawVertices(GLenum mode)
{
    if (vertices.empty())
        return;
    Prepare();
    if (mode == GL_QUADS)
        DrawQuads();
    else
        glDrawArrays(mode, 0, GLsizei(vertices.size()));
}

cVertex FetchVertex(size_t index)
{
    cVertex vertex = latest;
    vertex.mPosition[2] = 0; // where the array has two
    vertex.mColor[3] = colors.mIsOn ? 1 : vertex.mColor[3];
    positions.Copy(index, vertex.mPosition);
    colors.Copy(index, vertex.mColor);
    texCoords.Copy(index, vertex.mTexCoord);
    normals.Copy(index, vertex.mNormal);
    return vertex;
}

void FetchVertices(size_t first, size_t count)
{
    vertices.resize(count);
    for (size_t i = 0; i < count; i++)
        vertices[i] = FetchVertex(first + i);
}

cClientArray &FindArray(GLenum array)
{
    switch (array) {
    case GL_VERTEX_ARRAY:
        return positions;
    case GL_COLOR_ARRAY:
        return colors;
    case GL_TEXTURE_COORD_ARRAY:
        return texCoords;
    default:
        VYR_ASSERT("OpenGL", array == GL_NORMAL_ARRAY && "glEnableClientState(): No such array.");
        return normals;
    }
}

void SetArray(cClientArray &array, GLint size, GLenum type, GLsizei stride, const void *data)
{
    VYR_ASSERT("OpenGL", type == GL_FLOAT && "A client array in a browser: Not of floats.");
    array.mSize = size;
    array.mStride = stride;
    array.mData = static_cast<const char *>(data);
}
} // namespace
} // namespace vyr::web

using namespace vyr::web;

void glBegin(GLenum mode)
{
    primitive = mode;
    vertices.clear();
}

void glEnd() { DrawVertices(primitive); }

void glVertex2f(GLfloat x, GLfloat y) { glVertex3f(x, y, 0); }

void glVertex3f(GLfloat x, GLfloat y, GLfloat z)
{
    cVertex &vertex = vertices.emplace_back(latest);
    vertex.mPosition[0] = x;
    vertex.mPosition[1] = y;
    vertex.mPosition[2] = z;
}

void glTexCoord2f(GLfloat s, GLfloat t)
{
    latest.mTexCoord[0] = s;
    latest.mTexCoord[1] = t;
}

void glNormal3f(GLfloat x, GLfloat y, GLfloat z)
{
    latest.mNormal[0] = x;
    latest.mNormal[1] = y;
    latest.mNormal[2] = z;
}

void glColor3f(GLfloat red, GLfloat green, GLfloat blue) { glColor4f(red, green, blue, 1); }

void glColor4f(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha)
{
    latest.mColor[0] = red;
    latest.mColor[1] = green;
    latest.mColor[2] = blue;
    latest.mColor[3] = alpha;
}

void glEnableClientState(GLenum array) { FindArray(array).mIsOn = true; }

void glDisableClientState(GLenum array) { FindArray(array).mIsOn = false; }

void glVertexPointer(GLint size, GLenum type, GLsizei stride, const void *data)
{
    VYR_ASSERT("OpenGL", (size == 2 || size == 3) && "glVertexPointer(): Neither 2 nor 3 floats.");
    SetArray(positions, size, type, stride, data);
}

void glColorPointer(GLint size, GLenum type, GLsizei stride, const void *data)
{
    VYR_ASSERT("OpenGL", (size == 3 || size == 4) && "glColorPointer(): Neither 3 nor 4 floats.");
    SetArray(colors, size, type, stride, data);
}

void glTexCoordPointer(GLint size, GLenum type, GLsizei stride, const void *data)
{
    VYR_ASSERT("OpenGL", size == 2 && "glTexCoordPointer(): Not 2 floats.");
    SetArray(texCoords, size, type, stride, data);
}

void glNormalPointer(GLenum type, GLsizei stride, const void *data)
{
    SetArray(normals, 3, type, stride, data);
}

void vyr_glDrawArrays(GLenum mode, GLint first, GLsizei count)
{
    FetchVertices(size_t(first), size_t(std::max(count, 0)));
    DrawVertices(mode);
}

void vyr_glDrawElements(GLenum mode, GLsizei count, GLenum type, const void *indices)
{
    VYR_ASSERT("OpenGL", type == GL_UNSIGNED_INT && mode != GL_QUADS &&
                             "glDrawElements(): Quads, or indices that are no GL_UNSIGNED_INT.");
    if (count <= 0)
        return;
    const auto *begin = static_cast<const unsigned *>(indices);
    const std::vector<unsigned> copy(begin, begin + count);
    FetchVertices(0, size_t(*std::max_element(copy.begin(), copy.end())) + 1);
    Prepare();
    UploadIndices(buffers.mIndices, copy, GL_STREAM_DRAW);
    glDrawElements(mode, count, GL_UNSIGNED_INT, nullptr);
}
