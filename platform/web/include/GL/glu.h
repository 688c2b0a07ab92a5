#pragma once

/// Stands where the desktop's GL/glu.h stands, with the one call of it that the engine makes.

#include <epoxy/gl.h>

extern "C" {
/// Multiplies the current matrix by a perspective projection; `fovy` in degrees.
void gluPerspective(GLdouble fovy, GLdouble aspect, GLdouble near, GLdouble far);
}
