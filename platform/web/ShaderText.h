#pragma once

#include <string>

namespace vyr::web
{
/// GLSL 1.10 as GLSL ES 3.00: the built-in variables of the fixed pipeline become variables of
/// ours, at these attribute places. Numbers of lines in the driver's messages stay those of `text`.
std::string TranslateVertexShader(const std::string &text);
std::string TranslateFragmentShader(const std::string &text);

enum eAttribute : unsigned
{
    POSITION,
    COLOR,
    TEX_COORD,
    NORMAL
};

/// What takes the place of a stage that a program lacks, in GLSL 1.10.
extern const char *const kFixedVertexShader;
extern const char *const kSphereMapVertexShader;  ///< coordinates from the normal, as GL_SPHERE_MAP
extern const char *const kFixedFragmentShader;    ///< the colour alone
extern const char *const kTexturedFragmentShader; ///< the colour times the texture
} // namespace vyr::web
