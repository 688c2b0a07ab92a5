#include "platform/web/Matrix.h"

#include "base/Assert.h"

#include <GL/glu.h>

#include <cmath>
#include <numbers>

namespace vyr::web
{
namespace
{
class cMatrixStack
{
public:
    tMatrix &Top() { return mMatrices[mDepth]; }

    // A push too many and a pop too many change nothing, as in OpenGL.
    void Push()
    {
        if (mDepth + 1 == mMatrices.size())
            return;
        mMatrices[mDepth + 1] = mMatrices[mDepth];
        mDepth++;
    }
    void Pop() { mDepth -= mDepth > 0; }

private:
    std::array<tMatrix, 32> mMatrices{kIdentity};
    std::size_t mDepth = 0;
};

struct cStacks
{
    cMatrixStack mModelView, mProjection;
    cMatrixStack *mCurrent = &mModelView;
};

cStacks stacks;

tMatrix &Current() { return stacks.mCurrent->Top(); }

void Multiply(const tMatrix &matrix) { Current() = Current() * matrix; }

tMatrix Scaling(float x, float y, float z)
{
    tMatrix matrix{};
    matrix[0] = x;
    matrix[5] = y;
    matrix[10] = z;
    matrix[15] = 1;
    return matrix;
}

tMatrix Translation(float x, float y, float z)
{
    tMatrix matrix = kIdentity;
    matrix[12] = x;
    matrix[13] = y;
    matrix[14] = z;
    return matrix;
}

// About an axis of length 1.
tMatrix Rotation(float radians, float x, float y, float z)
{
    const float c = std::cos(radians), s = std::sin(radians), k = 1 - c;
    return {x * x * k + c,
            y * x * k + z * s,
            z * x * k - y * s,
            0,
            x * y * k - z * s,
            y * y * k + c,
            z * y * k + x * s,
            0,
            x * z * k + y * s,
            y * z * k - x * s,
            z * z * k + c,
            0,
            0,
            0,
            0,
            1};
}
} // namespace

tMatrix operator*(const tMatrix &a, const tMatrix &b)
{
    tMatrix product{};
    for (std::size_t column = 0; column < 4; column++)
        for (std::size_t row = 0; row < 4; row++)
            for (std::size_t k = 0; k < 4; k++)
                product[4 * column + row] += a[4 * k + row] * b[4 * column + k];
    return product;
}

std::array<float, 9> NormalMatrix(const tMatrix &m)
{
    std::array<float, 9> cofactors = {
        m[5] * m[10] - m[9] * m[6], m[8] * m[6] - m[4] * m[10], m[4] * m[9] - m[8] * m[5],
        m[9] * m[2] - m[1] * m[10], m[0] * m[10] - m[8] * m[2], m[8] * m[1] - m[0] * m[9],
        m[1] * m[6] - m[5] * m[2],  m[4] * m[2] - m[0] * m[6],  m[0] * m[5] - m[4] * m[1]};
    const float determinant = m[0] * cofactors[0] + m[1] * cofactors[1] + m[2] * cofactors[2];
    for (float &cofactor : cofactors)
        cofactor /= determinant;
    return cofactors;
}

const tMatrix &ModelView() { return stacks.mModelView.Top(); }

const tMatrix &Projection() { return stacks.mProjection.Top(); }

void ResetMatrices()
{
    stacks.mModelView = stacks.mProjection = cMatrixStack();
    stacks.mCurrent = &stacks.mModelView;
}
} // namespace vyr::web

using namespace vyr::web;

void glMatrixMode(GLenum mode)
{
    VYR_ASSERT("OpenGL", (mode == GL_MODELVIEW || mode == GL_PROJECTION) &&
                             "glMatrixMode(): Neither GL_MODELVIEW nor GL_PROJECTION.");
    stacks.mCurrent = mode == GL_PROJECTION ? &stacks.mProjection : &stacks.mModelView;
}

void glLoadIdentity() { Current() = kIdentity; }

void glPushMatrix() { stacks.mCurrent->Push(); }

void glPopMatrix() { stacks.mCurrent->Pop(); }

void glFrustum(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble near,
               GLdouble far)
{
    tMatrix matrix = Scaling(float(2 * near / (right - left)), float(2 * near / (top - bottom)),
                             float(-(far + near) / (far - near)));
    matrix[8] = float((right + left) / (right - left));
    matrix[9] = float((top + bottom) / (top - bottom));
    matrix[11] = -1;
    matrix[14] = float(-2 * far * near / (far - near));
    matrix[15] = 0;
    Multiply(matrix);
}

void glOrtho(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble near,
             GLdouble far)
{
    tMatrix matrix =
        Scaling(float(2 / (right - left)), float(2 / (top - bottom)), float(-2 / (far - near)));
    matrix[12] = float(-(right + left) / (right - left));
    matrix[13] = float(-(top + bottom) / (top - bottom));
    matrix[14] = float(-(far + near) / (far - near));
    Multiply(matrix);
}

void gluPerspective(GLdouble fovy, GLdouble aspect, GLdouble near, GLdouble far)
{
    const double top = near * std::tan(fovy / 2 * std::numbers::pi / 180);
    glFrustum(-top * aspect, top * aspect, -top, top, near, far);
}

void glTranslatef(GLfloat x, GLfloat y, GLfloat z) { Multiply(Translation(x, y, z)); }

void glScalef(GLfloat x, GLfloat y, GLfloat z) { Multiply(Scaling(x, y, z)); }

void glRotatef(GLfloat degrees, GLfloat x, GLfloat y, GLfloat z)
{
    const float length = std::sqrt(x * x + y * y + z * z);
    if (length > 0)
        Multiply(
            Rotation(degrees * float(std::numbers::pi / 180), x / length, y / length, z / length));
}
