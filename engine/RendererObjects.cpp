#include "engine/Renderer.h"

#include "base/Assert.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <epoxy/gl.h>

namespace vyr
{
namespace
{
const double normalLength = 0.1; // of a line that shows a normal, in the object's units

void BindTexture(int texture) { tSingleton<cTextureManager>::GetSingleton().BindTexture(texture); }

int ChooseTexture(const c3DObject::cRenderObject &object, int replacement)
{
    return replacement != -1 ? replacement : object.mTexture;
}

float AlongNormal(float position, float normal)
{
    return float(double(position) + normalLength * double(normal));
}
} // namespace

void cRenderer::RenderObject(c3DObject::cRenderObject *object, RENDERMODE mode, int texture)
{
    VYR_ASSERT("Renderer", object);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, object->mPositions);
    glEnableClientState(GL_COLOR_ARRAY);
    glColorPointer(4, GL_FLOAT, 0, object->mColors);
    glEnableClientState(GL_NORMAL_ARRAY);
    glNormalPointer(GL_FLOAT, 0, object->mNormals);

    switch (mode) {
    case RENDERMODE_TEXTURED:
        DrawTextured(*object, texture);
        break;
    case RENDERMODE_SPHEREMAP:
        DrawSphereMapped(*object, texture);
        break;
    case RENDERMODE_NORMALS:
        DrawNormals(*object);
        break;
    case RENDERMODE_WIREFRAME:
        DrawWireframe(*object);
        break;
    }

    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
}

// contract: three indices a polygon, whatever the polygons are: objects are expected to be
// triangulated, and a larger polygon shifts every triangle after it.
void cRenderer::DrawTriangles(const c3DObject::cRenderObject &object)
{
    glDrawElements(GL_TRIANGLES, object.mPolygonCount * 3, GL_UNSIGNED_INT, object.mIndices);
}

void cRenderer::DrawTextured(const c3DObject::cRenderObject &object, int texture)
{
    // The object's own texture decides, even where another one replaces it: without one of its own
    // it has no coordinates worth using.
    if (object.mTexture != -1) {
        glDisable(GL_TEXTURE_GEN_S);
        glDisable(GL_TEXTURE_GEN_T);
        glEnable(GL_TEXTURE_2D);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(2, GL_FLOAT, 0, object.mTexCoords);
        BindTexture(ChooseTexture(object, texture));
    } else {
        glDisable(GL_TEXTURE_2D);
    }
    DrawTriangles(object);
}

void cRenderer::DrawSphereMapped(const c3DObject::cRenderObject &object, int texture)
{
    if (object.mTexture == -1)
        return;
    glEnable(GL_TEXTURE_2D);
    BindTexture(ChooseTexture(object, texture));
    glTexGeni(GL_S, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
    glTexGeni(GL_T, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
    glEnable(GL_TEXTURE_GEN_S);
    glEnable(GL_TEXTURE_GEN_T);
    DrawTriangles(object);
    glDisable(GL_TEXTURE_GEN_S);
    glDisable(GL_TEXTURE_GEN_T);
}

void cRenderer::DrawNormals(const c3DObject::cRenderObject &object)
{
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND); // contract: stays on, as do the smooth lines
    glLineWidth(1.0f);
    glEnable(GL_LINE_SMOOTH);
    glBegin(GL_LINES);
    for (int i = 0; i < object.mVertexCount; i++) {
        const float *p = object.mPositions + 3 * size_t(i);
        const float *n = object.mNormals + 3 * size_t(i);
        glVertex3f(p[0], p[1], p[2]);
        glVertex3f(AlongNormal(p[0], n[0]), AlongNormal(p[1], n[1]), AlongNormal(p[2], n[2]));
    }
    glEnd();
}

void cRenderer::DrawWireframe(const c3DObject::cRenderObject &object)
{
    glDisable(GL_TEXTURE_2D);
    glColor3f(1.0f, 1.0f, 1.0f); // the colour array takes precedence for the lines themselves
    glDrawElements(GL_LINES, 2 * object.mIndexCount, GL_UNSIGNED_INT, object.mLineIndices);
}
} // namespace vyr
