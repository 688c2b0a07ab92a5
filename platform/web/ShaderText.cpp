#include "platform/web/ShaderText.h"

namespace vyr::web
{
namespace
{
// All that a shader may name is there in each: what it does not use costs nothing, and two stages
// always fit each other.
const char *const commonPrelude = R"(#version 300 es
precision highp float;
precision highp int;
uniform mat4 vyr_ModelViewMatrix, vyr_ProjectionMatrix, vyr_ModelViewProjectionMatrix;
uniform mat3 vyr_NormalMatrix;
vec4 vyr_texture2D(sampler2D s, vec2 p) { return texture(s, p); }
#define texture2D vyr_texture2D
#define gl_ModelViewMatrix vyr_ModelViewMatrix
#define gl_ProjectionMatrix vyr_ProjectionMatrix
#define gl_ModelViewProjectionMatrix vyr_ModelViewProjectionMatrix
#define gl_NormalMatrix vyr_NormalMatrix
#define gl_TexCoord vyr_TexCoord
)";

const char *const vertexPrelude = R"(layout(location = 0) in vec4 vyr_Vertex;
layout(location = 1) in vec4 vyr_Color;
layout(location = 2) in vec4 vyr_MultiTexCoord0;
layout(location = 3) in vec3 vyr_Normal;
out vec4 vyr_FrontColor, vyr_TexCoord[1];
#define attribute in
#define varying out
#define gl_Vertex vyr_Vertex
#define gl_Color vyr_Color
#define gl_MultiTexCoord0 vyr_MultiTexCoord0
#define gl_Normal vyr_Normal
#define gl_FrontColor vyr_FrontColor
#define ftransform() (vyr_ModelViewProjectionMatrix * vyr_Vertex)
#line 1
)";

const char *const fragmentPrelude = R"(in vec4 vyr_FrontColor, vyr_TexCoord[1];
out vec4 vyr_FragColor;
vec4 vyr_texture2D(sampler2D s, vec2 p, float bias) { return texture(s, p, bias); }
#define varying in
#define gl_Color vyr_FrontColor
#define gl_FragColor vyr_FragColor
#line 1
)";

// The version that counts is the prelude's; the line stays, so that the others keep their numbers.
std::string WithoutVersion(const std::string &text)
{
    const size_t place = text.find("#version");
    return place == std::string::npos ? text : std::string(text).insert(place, "//");
}
} // namespace

const char *const kFixedVertexShader = R"(
void main()
{
    gl_FrontColor = clamp(gl_Color, 0.0, 1.0);
    gl_TexCoord[0] = gl_MultiTexCoord0;
    gl_Position = ftransform();
}
)";

const char *const kSphereMapVertexShader = R"(
void main()
{
    vec3 eye = normalize((gl_ModelViewMatrix * gl_Vertex).xyz);
    vec3 r = reflect(eye, gl_NormalMatrix * gl_Normal);
    float m = 2.0 * sqrt(r.x * r.x + r.y * r.y + (r.z + 1.0) * (r.z + 1.0));
    gl_FrontColor = clamp(gl_Color, 0.0, 1.0);
    gl_TexCoord[0] = vec4(r.xy / m + 0.5, 0.0, 1.0);
    gl_Position = ftransform();
}
)";

const char *const kFixedFragmentShader = R"(
void main()
{
    gl_FragColor = gl_Color;
}
)";

const char *const kTexturedFragmentShader = R"(
uniform sampler2D image;

void main()
{
    gl_FragColor = gl_Color * texture2D(image, gl_TexCoord[0].xy);
}
)";

std::string TranslateVertexShader(const std::string &text)
{
    return std::string(commonPrelude) + vertexPrelude + WithoutVersion(text);
}

std::string TranslateFragmentShader(const std::string &text)
{
    return std::string(commonPrelude) + fragmentPrelude + WithoutVersion(text);
}
} // namespace vyr::web
