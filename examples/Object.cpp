// One object, drawn in the four ways there are.
//
// See: four ducks turning. Top left filled and textured, top right with its texture as a mirrored
// environment, bottom left the normals of its vertices, bottom right the outlines of its polygons.
// Change: the file, the distance (z), the axis and speed of the turning, the mode of a corner.
//
// An LWO2 file is read into a mesh, and the mesh flattened into a render object, once. Where it
// appears is the modelview matrix of OpenGL: x to the right, y up, the eye at the origin looking
// along -z. The projection is the renderer's own between its 2D calls.

#include "examples/Example.h"

#include <epoxy/gl.h>

namespace
{
vyr::c3DObject::cRenderObject *object;

void Load() { object = LoadObject("data/oh1.lwo"); }

void DrawAt(float x, float y, double seconds, vyr::cRenderer::RENDERMODE mode)
{
    glLoadIdentity();
    glTranslatef(x, y, -4);
    glRotatef(float(40 * seconds), 0, 1, 0);
    Renderer().RenderObject(object, mode, -1);
}

void Draw(double seconds)
{
    glEnable(GL_DEPTH_TEST); // 2D drawing leaves it off
    DrawAt(-1.4f, 0.95f, seconds, vyr::cRenderer::RENDERMODE_TEXTURED);
    DrawAt(1.4f, 0.95f, seconds, vyr::cRenderer::RENDERMODE_SPHEREMAP);
    glColor4f(0.5f, 0.8f, 0.7f, 0.6f); // of the normals; the other modes have the object's colours
    DrawAt(-1.4f, -0.95f, seconds, vyr::cRenderer::RENDERMODE_NORMALS);
    DrawAt(1.4f, -0.95f, seconds, vyr::cRenderer::RENDERMODE_WIREFRAME);
}
} // namespace

const cExample kExample = {"An object in four modes", Load, Draw, WindowSeconds};
