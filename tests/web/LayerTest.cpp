// What the engine and shows need of OpenGL, one rule a test. Compiled twice: over the driver of
// this machine, which is the measure, and over the layer in a browser, which has to do the same.

#include "platform/Window.h"

#include <epoxy/gl.h>

#include <GL/glu.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

namespace
{
const int kSide = 64; // pixels of the window

struct cPixel
{
    int mRed, mGreen, mBlue;
};

std::ostream &operator<<(std::ostream &out, const cPixel &pixel)
{
    return out << pixel.mRed << " " << pixel.mGreen << " " << pixel.mBlue;
}

// One step of 255 either way: where a driver rounds is its own.
bool operator==(const cPixel &a, const cPixel &b)
{
    return std::abs(a.mRed - b.mRed) <= 1 && std::abs(a.mGreen - b.mGreen) <= 1 &&
           std::abs(a.mBlue - b.mBlue) <= 1;
}

const cPixel kBlack{0, 0, 0}, kWhite{255, 255, 255}, kRed{255, 0, 0}, kGreen{0, 255, 0},
    kBlue{0, 0, 255};

/// A window, black, in which x and y go from -1 to 1 and every switch is off.
class Layer : public testing::Test
{
protected:
    Layer()
    {
        using namespace vyr::platform;
        UseWindowSystem(OffscreenWindowSystem());
        if (!IsWindowOpen()) {
            StartWindowSystem();
            OpenWindow(kSide, kSide, false);
        }
        for (GLenum capability : {GL_BLEND, GL_DEPTH_TEST, GL_CULL_FACE, GL_SCISSOR_TEST,
                                  GL_TEXTURE_2D, GL_TEXTURE_GEN_S, GL_TEXTURE_GEN_T})
            glDisable(capability);
        glUseProgram(0);
        for (GLenum mode : {GL_PROJECTION, GL_MODELVIEW}) {
            glMatrixMode(mode);
            glLoadIdentity();
        }
        glViewport(0, 0, kSide, kSide);
        glColor4f(1, 1, 1, 1);
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }
    ~Layer() override { EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR)); }

    // Of the window, or of the bound framebuffer; (0, 0) is bottom left.
    static cPixel At(int x, int y)
    {
        std::array<unsigned char, 4> rgba{};
        glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, rgba.data());
        return {rgba[0], rgba[1], rgba[2]};
    }
    static cPixel Center() { return At(kSide / 2, kSide / 2); }

    static void Quad(float left, float bottom, float right, float top, float z = 0)
    {
        glBegin(GL_QUADS);
        Corner(0, 0, left, bottom, z);
        Corner(1, 0, right, bottom, z);
        Corner(1, 1, right, top, z);
        Corner(0, 1, left, top, z);
        glEnd();
    }
    static void Corner(float s, float t, float x, float y, float z)
    {
        glTexCoord2f(s, t);
        glVertex3f(x, y, z);
    }
    static void FillWindow() { Quad(-1, -1, 1, 1); }

    static GLuint Texture()
    {
        GLuint texture = 0;
        glGenTextures(1, &texture);
        glBindTexture(GL_TEXTURE_2D, texture);
        for (GLenum filter : {GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER})
            glTexParameteri(GL_TEXTURE_2D, filter, GL_NEAREST);
        glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, float(GL_MODULATE));
        glEnable(GL_TEXTURE_2D);
        return texture;
    }
    static GLuint Texture(int width, int height, int internalFormat, GLenum format,
                          const std::vector<unsigned char> &pixels)
    {
        const GLuint texture = Texture();
        glTexImage2D(GL_TEXTURE_2D, 0, internalFormat, width, height, 0, format, GL_UNSIGNED_BYTE,
                     pixels.empty() ? nullptr : pixels.data());
        return texture;
    }

    static GLuint Shader(GLenum stage, const char *text)
    {
        const GLuint shader = glCreateShader(stage);
        glShaderSource(shader, 1, &text, nullptr);
        glCompileShader(shader);
        return shader;
    }
    static GLuint Program(const char *vertex, const char *fragment)
    {
        const GLuint program = glCreateProgram();
        if (vertex)
            glAttachShader(program, Shader(GL_VERTEX_SHADER, vertex));
        if (fragment)
            glAttachShader(program, Shader(GL_FRAGMENT_SHADER, fragment));
        glLinkProgram(program);
        GLint isLinked = 0;
        glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
        EXPECT_TRUE(isLinked);
        glUseProgram(program);
        return program;
    }
};

// Matrices --------------------------------------------------------------------------------------

TEST_F(Layer, QuadLiesBetweenItsCorners)
{
    Quad(-0.5f, -0.5f, 0.5f, 0.5f);
    EXPECT_EQ(Center(), kWhite);
    EXPECT_EQ(At(17, 17), kWhite);
    EXPECT_EQ(At(14, 32), kBlack);
    EXPECT_EQ(At(32, 50), kBlack);
}

TEST_F(Layer, OrthoCountsPixelsFromTheTopLeft)
{
    glMatrixMode(GL_PROJECTION);
    glOrtho(0, kSide, kSide, 0, -1, 1);
    Quad(0, 0, 8, 4);
    EXPECT_EQ(At(2, kSide - 2), kWhite);
    EXPECT_EQ(At(2, kSide - 7), kBlack);
    EXPECT_EQ(At(10, kSide - 2), kBlack);
}

// Calls multiply from the right: what is called last is done first.
TEST_F(Layer, TranslationIsOfWhatWasScaled)
{
    glTranslatef(0.5f, 0.5f, 0);
    glScalef(0.25f, 0.25f, 1);
    FillWindow();
    EXPECT_EQ(At(48, 48), kWhite);
    EXPECT_EQ(At(41, 41), kWhite);
    EXPECT_EQ(At(38, 48), kBlack);
    EXPECT_EQ(Center(), kBlack);
}

TEST_F(Layer, RotationTurnsCounterclockwise)
{
    glRotatef(90, 0, 0, 2); // the axis need not have length 1
    Quad(0.5f, -0.1f, 1, 0.1f);
    EXPECT_EQ(At(32, 56), kWhite); // from the right to the top
    EXPECT_EQ(At(56, 32), kBlack);
}

TEST_F(Layer, RotationAboutXBringsTheTopForward)
{
    glEnable(GL_CULL_FACE);
    glRotatef(120, 1, 0, 0); // its back is seen
    FillWindow();
    EXPECT_EQ(Center(), kBlack);
    glRotatef(-120, 1, 0, 0);
    FillWindow();
    EXPECT_EQ(Center(), kWhite);
}

TEST_F(Layer, PopBringsBackWhatWasPushed)
{
    glPushMatrix();
    glScalef(0.1f, 0.1f, 1);
    glPopMatrix();
    FillWindow();
    EXPECT_EQ(At(2, 2), kWhite);
}

TEST_F(Layer, StacksAreSeparate)
{
    glTranslatef(0.5f, 0, 0);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glScalef(0.5f, 0.5f, 1);
    Quad(-0.2f, -0.2f, 0.2f, 0.2f); // moved, then halved: about 0.25
    EXPECT_EQ(At(40, 32), kWhite);
    glPopMatrix();
    Quad(-0.2f, -0.2f, 0.2f, 0.2f); // moved alone
    EXPECT_EQ(At(48, 32), kWhite);
}

TEST_F(Layer, APushOrPopTooManyChangesNothing)
{
    glPopMatrix();
    for (int i = 0; i < 40; i++)
        glPushMatrix();
    FillWindow();
    EXPECT_EQ(Center(), kWhite);
    for (int i = 0; i < 50; i++)
        glPopMatrix();
    while (glGetError() != GL_NO_ERROR) // the desktop's driver notes them
        continue;
}

// At distance 2, a vertical field of 90 degrees is 2 units high either way.
TEST_F(Layer, PerspectiveShrinksWithDistance)
{
    glMatrixMode(GL_PROJECTION);
    gluPerspective(90, 1, 0.1, 100);
    Quad(-1, -1, 1, 1, -2);
    EXPECT_EQ(At(18, 32), kWhite);
    EXPECT_EQ(At(14, 32), kBlack);
}

// The engine's first projection is mirrored on purpose: left is larger than right.
TEST_F(Layer, FrustumMayBeMirrored)
{
    glMatrixMode(GL_PROJECTION);
    glFrustum(0.5, -0.5, -0.5, 0.5, 1.0, 100);
    Quad(0.1f, -0.4f, 0.4f, 0.4f, -1.5f);
    EXPECT_EQ(At(20, 32), kWhite);
    EXPECT_EQ(At(44, 32), kBlack);
}

// Colours and textures --------------------------------------------------------------------------

TEST_F(Layer, ColourIsThatBeforeTheVertex)
{
    glBegin(GL_TRIANGLES);
    glColor3f(1, 0, 0);
    glVertex2f(-3, -1);
    glVertex2f(3, -1);
    glVertex2f(0, 5);
    glEnd();
    EXPECT_EQ(Center(), kRed);
    FillWindow(); // and stays
    EXPECT_EQ(At(1, 1), kRed);
}

TEST_F(Layer, ColourIsClampedBeforeItIsMixed)
{
    glColor4f(4, 0.5f, -1, 1);
    Texture(1, 1, 4, GL_RGBA, {128, 255, 255, 255});
    FillWindow();
    EXPECT_EQ(Center(), (cPixel{128, 128, 0}));
}

TEST_F(Layer, AlphaBlends)
{
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1, 1, 1, 0.25f);
    FillWindow();
    EXPECT_EQ(Center(), (cPixel{64, 64, 64}));
}

TEST_F(Layer, TextureIsMultipliedByTheColour)
{
    Texture(1, 1, 4, GL_RGBA, {255, 128, 64, 255});
    glColor4f(1, 0.5f, 1, 1);
    FillWindow();
    EXPECT_EQ(Center(), (cPixel{255, 64, 64}));
    glDisable(GL_TEXTURE_2D);
    FillWindow();
    EXPECT_EQ(Center(), (cPixel{255, 128, 255}));
}

// The first row of the data is at t = 0, which is the bottom here.
TEST_F(Layer, FirstRowIsAtCoordinateZero)
{
    Texture(1, 2, 4, GL_RGBA, {255, 0, 0, 255, 0, 0, 255, 255});
    FillWindow();
    EXPECT_EQ(At(32, 10), kRed);
    EXPECT_EQ(At(32, 54), kBlue);
}

// 3 by 2 pixels of three bytes: rows begin at multiples of four bytes.
TEST_F(Layer, RowsOfThreeBytesArePadded)
{
    Texture(3, 2, 3, GL_RGB, {255, 0, 0,   0,   255, 0, 0, 0,   255, 9, 9, 9, //
                              0,   0, 255, 255, 0,   0, 0, 255, 0});
    FillWindow();
    EXPECT_EQ(At(10, 10), kRed);
    EXPECT_EQ(At(54, 10), kBlue);
    EXPECT_EQ(At(10, 54), kBlue);
    EXPECT_EQ(At(54, 54), kGreen);
}

TEST_F(Layer, BlueMayComeFirst)
{
    Texture(1, 1, 4, GL_BGRA, {255, 128, 0, 255});
    FillWindow();
    EXPECT_EQ(Center(), (cPixel{0, 128, 255}));
}

// What the internal format leaves out: 1 is brightness, 2 brightness and alpha, 3 colour.
TEST_F(Layer, InternalFormatKeepsSoManyComponents)
{
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    const std::vector<unsigned char> pixel = {200, 100, 50, 128};
    const cPixel wanted[] = {{200, 200, 200}, {100, 100, 100}, {200, 100, 50}, {100, 50, 25}};
    for (int components = 1; components <= 4; components++) {
        glClear(GL_COLOR_BUFFER_BIT);
        Texture(1, 1, components, GL_RGBA, pixel);
        FillWindow();
        EXPECT_EQ(Center(), wanted[components - 1]) << components;
    }
}

TEST_F(Layer, BrightnessOfThreeBytesIsTheFirst)
{
    Texture(1, 1, 1, GL_RGB, {200, 100, 50, 0});
    FillWindow();
    EXPECT_EQ(Center(), (cPixel{200, 200, 200}));
}

TEST_F(Layer, OddSizesRepeat)
{
    Texture(3, 1, 4, GL_RGBA, {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255});
    for (GLenum wrap : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T})
        glTexParameterf(GL_TEXTURE_2D, wrap, float(GL_REPEAT));
    glBegin(GL_QUADS);
    Corner(-1, -1, -1, -1, 0);
    Corner(1, -1, 1, -1, 0);
    Corner(1, 1, 1, 1, 0);
    Corner(-1, 1, -1, 1, 0);
    glEnd();
    EXPECT_EQ(At(5, 32), kRed);
    EXPECT_EQ(At(37, 32), kRed);
    EXPECT_EQ(At(60, 32), kBlue);
}

// A normal towards the eye shows the middle of the picture, one to the right its right.
TEST_F(Layer, SphereMapFollowsTheNormal)
{
    Texture(2, 1, 4, GL_RGBA, {255, 0, 0, 255, 0, 0, 255, 255});
    for (GLenum coordinate : {GL_S, GL_T})
        glTexGeni(coordinate, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
    glEnable(GL_TEXTURE_GEN_S);
    glEnable(GL_TEXTURE_GEN_T);
    glTranslatef(0, 0, -0.5f);
    for (const auto &[x, wanted] : {std::pair(0.6f, kBlue), std::pair(-0.6f, kRed)}) {
        glNormal3f(x, 0, 0.8f);
        FillWindow();
        EXPECT_EQ(Center(), wanted) << x;
    }
    glDisable(GL_TEXTURE_GEN_S); // both are needed
    glNormal3f(0.6f, 0, 0.8f);
    FillWindow();
    EXPECT_EQ(At(10, 32), kRed);
    EXPECT_EQ(At(54, 32), kBlue);
}

// Arrays ----------------------------------------------------------------------------------------

class Arrays : public Layer
{
protected:
    ~Arrays() override
    {
        for (GLenum array :
             {GL_VERTEX_ARRAY, GL_COLOR_ARRAY, GL_NORMAL_ARRAY, GL_TEXTURE_COORD_ARRAY})
            glDisableClientState(array);
    }
    void UseCorners()
    {
        glEnableClientState(GL_VERTEX_ARRAY);
        glVertexPointer(3, GL_FLOAT, 0, mCorners.data());
    }
    const std::vector<float> mCorners = {-1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0};
    const std::vector<int> mIndices = {0, 1, 2, 0, 2, 3};
};

TEST_F(Arrays, IndicesChooseVertices)
{
    UseCorners();
    glColor4f(0, 1, 0, 1); // the current colour, as no array has any
    glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, mIndices.data());
    EXPECT_EQ(At(50, 10), kGreen);
    EXPECT_EQ(At(10, 50), kBlack);
    glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_INT, mIndices.data());
    EXPECT_EQ(At(10, 50), kGreen);
}

TEST_F(Arrays, ColoursOfTheArrayGoBeforeTheCurrentOne)
{
    const std::vector<float> colors = {1, 0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1};
    UseCorners();
    glEnableClientState(GL_COLOR_ARRAY);
    glColorPointer(4, GL_FLOAT, 0, colors.data());
    glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_INT, mIndices.data());
    EXPECT_EQ(Center(), kRed);
}

TEST_F(Arrays, StrideSkipsWhatLiesBetween)
{
    std::vector<float> interleaved; // x, y, then red, green, blue
    for (size_t i = 0; i < 4; i++)
        interleaved.insert(interleaved.end(), {mCorners[3 * i], mCorners[3 * i + 1], 0, 0, 1});
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(2, GL_FLOAT, 20, interleaved.data());
    glEnableClientState(GL_COLOR_ARRAY);
    glColorPointer(3, GL_FLOAT, 20, interleaved.data() + 2);
    glDrawArrays(GL_TRIANGLE_FAN, 0, 4);
    EXPECT_EQ(Center(), kBlue);
}

TEST_F(Arrays, CoordinatesShowTheTexture)
{
    const std::vector<float> coordinates = {0, 0, 1, 0, 1, 1, 0, 1};
    Texture(2, 1, 4, GL_RGBA, {255, 0, 0, 255, 0, 0, 255, 255});
    UseCorners();
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, 0, coordinates.data());
    glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_INT, mIndices.data());
    EXPECT_EQ(At(10, 32), kRed);
    EXPECT_EQ(At(54, 32), kBlue);
}

// What is drawn is what the arrays hold at the call, not what they held before.
TEST_F(Arrays, AreReadAtEachCall)
{
    std::vector<float> corners = mCorners;
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, corners.data());
    glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_INT, mIndices.data());
    for (float &x : corners)
        x *= 0.25f;
    glColor4f(1, 0, 0, 1);
    glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_INT, mIndices.data());
    EXPECT_EQ(Center(), kRed);
    EXPECT_EQ(At(4, 4), kWhite);
}

TEST_F(Arrays, MayHaveMoreThan65536Vertices)
{
    const int first = 70000;
    std::vector<float> corners(size_t(first) * 3, 9.0f);
    corners.insert(corners.end(), mCorners.begin(), mCorners.end());
    std::vector<int> indices = mIndices;
    for (int &index : indices)
        index += first;
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, corners.data());
    glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_INT, indices.data());
    EXPECT_EQ(At(10, 50), kWhite);
}

TEST_F(Arrays, NoIndicesDrawNothing)
{
    UseCorners();
    glDrawElements(GL_TRIANGLES, 0, GL_UNSIGNED_INT, mIndices.data());
    glBegin(GL_QUADS);
    glEnd();
    EXPECT_EQ(Center(), kBlack);
}

TEST_F(Arrays, LinesAreDrawn)
{
    const std::vector<int> line = {0, 2};
    UseCorners();
    glDrawElements(GL_LINES, 2, GL_UNSIGNED_INT, line.data());
    EXPECT_EQ(Center(), kWhite);
    EXPECT_EQ(At(10, 50), kBlack);
}

// Programs --------------------------------------------------------------------------------------

const char *const kVertexShader = R"(#version 110
varying vec2 place;

void main()
{
    place = gl_MultiTexCoord0.xy;
    gl_FrontColor = gl_Color;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
)";

TEST_F(Layer, ProgramTakesVertexColourCoordinateAndMatrices)
{
    Program(kVertexShader, R"(#version 110
uniform float blue;
varying vec2 place;

void main()
{
    gl_FragColor = vec4(gl_Color.r, place.x, blue, 1.0);
}
)");
    glColor4f(0.5f, 1, 1, 1);
    FillWindow();
    EXPECT_EQ(Center(), (cPixel{128, 128, 0}));
    glScalef(0.1f, 0.1f, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    FillWindow();
    EXPECT_EQ(At(10, 10), kBlack);
}

TEST_F(Layer, UniformsBelongToTheProgramInUse)
{
    const char *const shader =
        "uniform vec3 colour; void main() { gl_FragColor = vec4(colour, 1.0); }";
    const GLuint red = Program(nullptr, shader), blue = Program(nullptr, shader);
    glUseProgram(red);
    glUniform3f(glGetUniformLocation(red, "colour"), 1, 0, 0);
    glUseProgram(blue);
    glUniform3f(glGetUniformLocation(blue, "colour"), 0, 0, 1);
    FillWindow();
    EXPECT_EQ(Center(), kBlue);
    glUseProgram(red);
    FillWindow();
    EXPECT_EQ(Center(), kRed);
}

// The fixed pipeline in between must not take the program's place for good.
TEST_F(Layer, ProgramZeroIsTheFixedPipeline)
{
    const GLuint program =
        Program(nullptr, "uniform float r; void main() { gl_FragColor = vec4(r, 0.0, 0.0, 1.0); }");
    GLint current = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &current);
    EXPECT_EQ(current, GLint(program));
    glUseProgram(0);
    FillWindow();
    EXPECT_EQ(Center(), kWhite);
    glGetIntegerv(GL_CURRENT_PROGRAM, &current);
    EXPECT_EQ(current, 0);
    glUseProgram(program);
    glUniform1f(glGetUniformLocation(program, "r"), 1);
    FillWindow();
    EXPECT_EQ(Center(), kRed);
}

TEST_F(Layer, FragmentShaderAloneGetsColourAndCoordinate)
{
    Program(nullptr,
            "void main() { gl_FragColor = vec4(gl_TexCoord[0].x, gl_Color.g, 0.0, 1.0); }");
    glColor4f(0, 0.5f, 0, 1);
    FillWindow();
    EXPECT_EQ(At(63, 32), (cPixel{253, 128, 0}));
    EXPECT_EQ(At(0, 32), (cPixel{2, 128, 0}));
}

TEST_F(Layer, VertexShaderAloneMovesWhatIsTextured)
{
    Program("void main() { gl_FrontColor = gl_Color; gl_TexCoord[0] = gl_MultiTexCoord0;"
            " gl_Position = ftransform() * vec4(0.5, 0.5, 1.0, 1.0); }",
            nullptr);
    Texture(1, 1, 4, GL_RGBA, {0, 255, 0, 255});
    FillWindow();
    EXPECT_EQ(Center(), kGreen);
    EXPECT_EQ(At(4, 4), kBlack);
}

TEST_F(Layer, ShaderSamplesTextures)
{
    Program(kVertexShader, R"(uniform sampler2D texture;
varying vec2 place;
void main() { gl_FragColor = texture2D(texture, place); }
)");
    Texture(2, 1, 4, GL_RGBA, {255, 0, 0, 255, 0, 0, 255, 255});
    FillWindow();
    EXPECT_EQ(At(10, 32), kRed);
    EXPECT_EQ(At(54, 32), kBlue);
}

TEST_F(Layer, ShaderTurnsNormals)
{
    Program("varying vec3 normal; void main() { normal = gl_NormalMatrix * gl_Normal;"
            " gl_Position = gl_ProjectionMatrix * gl_ModelViewMatrix * gl_Vertex; }",
            "varying vec3 normal; void main() { gl_FragColor = vec4(abs(normal), 1.0); }");
    glRotatef(90, 0, 0, 1);
    glScalef(1, 2, 1); // normals go the other way: a half
    glNormal3f(0, 1, 0);
    FillWindow();
    EXPECT_EQ(Center(), (cPixel{128, 0, 0}));
}

TEST_F(Layer, LoopsMayEndWhereAUniformSays)
{
    const GLuint program = Program(nullptr, R"(uniform float count;
void main()
{
    float sum = 0.0;
    for (float i = 0.0; i < count; i += 1.0)
        sum += 0.25;
    gl_FragColor = vec4(sum, 0.0, 0.0, 1.0);
}
)");
    glUniform1f(glGetUniformLocation(program, "count"), 2);
    FillWindow();
    EXPECT_EQ(Center(), (cPixel{128, 0, 0}));
}

TEST_F(Layer, AShaderThatCompilesHasNoLog)
{
    const GLuint shader = Shader(GL_VERTEX_SHADER, kVertexShader);
    GLint length = -1;
    glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &length);
    EXPECT_EQ(length, 0);
}

// The fault is in the third line, whatever stands before it for the driver.
TEST_F(Layer, AFaultIsReportedWithItsLine)
{
    const GLuint shader = Shader(GL_FRAGMENT_SHADER, "#version 110\nvoid main() {\nthere is; }\n");
    GLint length = 0;
    glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &length);
    ASSERT_GT(length, 0);
    std::string log(size_t(length), '\0');
    glGetShaderInfoLog(shader, length, nullptr, log.data());
    EXPECT_NE(log.find("0:3"), std::string::npos) << log;
}

// Targets and the rest --------------------------------------------------------------------------

TEST_F(Layer, FramebufferDrawsIntoItsTexture)
{
    const GLuint texture = Texture(kSide, kSide, int(GL_RGBA8), GL_RGBA, {});
    GLuint framebuffer = 0;
    glGenFramebuffersEXT(1, &framebuffer);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, framebuffer);
    glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_TEXTURE_2D, texture,
                              0);
    ASSERT_EQ(glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT), GLenum(GL_FRAMEBUFFER_COMPLETE_EXT));
    glDisable(GL_TEXTURE_2D);
    glColor4f(0, 0, 1, 1);
    FillWindow();
    EXPECT_EQ(Center(), kBlue);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    EXPECT_EQ(Center(), kBlack);
    glEnable(GL_TEXTURE_2D);
    glColor4f(1, 1, 1, 1);
    FillWindow();
    EXPECT_EQ(Center(), kBlue);
    glDeleteFramebuffersEXT(1, &framebuffer);
}

TEST_F(Layer, FramebufferMayTestDepthInATexture)
{
    const GLuint color = Texture(kSide, kSide, int(GL_RGBA8), GL_RGBA, {}), depth = Texture();
    glTexImage2D(GL_TEXTURE_2D, 0, GL_DEPTH_COMPONENT24, kSide, kSide, 0, GL_DEPTH_COMPONENT,
                 GL_UNSIGNED_BYTE, nullptr);
    GLuint framebuffer = 0;
    glGenFramebuffersEXT(1, &framebuffer);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, framebuffer);
    glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_TEXTURE_2D, color,
                              0);
    glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, GL_DEPTH_ATTACHMENT_EXT, GL_TEXTURE_2D, depth, 0);
    ASSERT_EQ(glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT), GLenum(GL_FRAMEBUFFER_COMPLETE_EXT));
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glClearDepth(1.0);
    glClear(GL_DEPTH_BUFFER_BIT);
    glColor4f(1, 0, 0, 1);
    Quad(-1, -1, 1, 1, -0.5f); // nearer: z grows away from the eye without a projection
    glColor4f(0, 0, 1, 1);
    Quad(-1, -1, 1, 1, 0.5f);
    EXPECT_EQ(Center(), kRed);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    glDeleteFramebuffersEXT(1, &framebuffer);
}

TEST_F(Layer, SwitchesAreRemembered)
{
    for (GLenum capability : {GL_TEXTURE_2D, GL_TEXTURE_GEN_S, GL_BLEND, GL_SCISSOR_TEST}) {
        EXPECT_FALSE(glIsEnabled(capability)) << capability;
        glEnable(capability);
        EXPECT_TRUE(glIsEnabled(capability)) << capability;
        glDisable(capability);
    }
    EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
}

TEST_F(Layer, ScissorCutsAndMasksLeaveOut)
{
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 32, kSide);
    glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_TRUE);
    FillWindow();
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    EXPECT_EQ(At(10, 10), kGreen);
    EXPECT_EQ(At(50, 10), kBlack);
}

TEST_F(Layer, FrontsTurnCounterclockwise)
{
    glEnable(GL_CULL_FACE);
    glFrontFace(GL_CCW);
    FillWindow();
    EXPECT_EQ(Center(), kWhite);
    glClear(GL_COLOR_BUFFER_BIT);
    Quad(1, -1, -1, 1); // mirrored
    EXPECT_EQ(Center(), kBlack);
}
} // namespace
