#include "tests/support/OffscreenTest.h"
#include "tests/support/TestFiles.h"

#include <epoxy/gl.h>

namespace
{
const char vertexSource[] = "void main() { gl_Position = ftransform(); }\n";
const char greenSource[] = "void main() { gl_FragColor = vec4(0.0, 1.0, 0.0, 1.0); }"; // no newline

class Shaders : public test::cOffscreenTest
{
protected:
    Shaders() : cOffscreenTest(64, 36)
    {
        test::WriteFile("a.vs", vertexSource);
        test::WriteFile("a.fs", greenSource);
    }

    // What CreateShader prints; the program stays in mProgram.
    std::string Create(const std::string &vertex, const std::string &fragment, bool plain = true)
    {
        testing::internal::CaptureStdout();
        mProgram = mRenderer.CreateShader(vertex, fragment, plain);
        return testing::internal::GetCapturedStdout();
    }

    int CurrentProgram() const
    {
        GLint program = 0;
        glGetIntegerv(GL_CURRENT_PROGRAM, &program);
        return program;
    }

    int AttachedShaders() const
    {
        GLint count = 0;
        glGetProgramiv(mProgram, GL_ATTACHED_SHADERS, &count);
        return count;
    }

    test::tPixel DrawnPixel()
    {
        mRenderer.DrawFullscreenQuad({0, 0, 0}, {0, 1}, {1, 0});
        return ReadPixel(32, 18);
    }

    test::cTemporaryFolder mFolder;
    unsigned int mProgram = 0;
};

const test::tPixel green = {0, 255, 0, 255};

TEST_F(Shaders, ProgramDrawsAndIsCurrent)
{
    EXPECT_EQ(Create("a.vs", "a.fs"), "");
    EXPECT_EQ(CurrentProgram(), int(mProgram));
    EXPECT_EQ(AttachedShaders(), 2);
    EXPECT_EQ(DrawnPixel(), green);
}

TEST_F(Shaders, EmptyPathLeavesItsStageOut)
{
    EXPECT_EQ(Create("", "a.fs"), "");
    EXPECT_EQ(AttachedShaders(), 1);
    EXPECT_EQ(DrawnPixel(), green);
    Create("", "");
    EXPECT_EQ(AttachedShaders(), 0);
    EXPECT_EQ(CurrentProgram(), int(mProgram));
}

// OpenGL refuses to make a program current that does not link; nobody asks it.
TEST_F(Shaders, BrokenStageIsReportedUnderItsHeadingAndStillGivesAProgram)
{
    test::WriteFile("broken", "this is no shader\n");
    EXPECT_EQ(Create("broken", "a.fs").find("VertexShader Info Log: \n"), 0u);
    EXPECT_NE(mProgram, 0u);
    EXPECT_EQ(AttachedShaders(), 2);
    const std::string text = Create("a.vs", "broken");
    EXPECT_EQ(text.find("FragmentShader Info Log: \n"), 0u);
    EXPECT_NE(text.find("error"), std::string::npos);
    ExpectOpenGLError(GL_INVALID_OPERATION);
}

// Samplers of two kinds on one unit link, and fail the validation.
TEST_F(Shaders, ProgramThatDoesNotValidateIsReportedUnderItsHeading)
{
    test::WriteFile("samplers.fs", "uniform sampler2D a;\nuniform samplerCube b;\n"
                                   "void main() { gl_FragColor = texture2D(a, vec2(0.5)) + "
                                   "textureCube(b, vec3(1.0)); }\n");
    EXPECT_EQ(Create("a.vs", "samplers.fs").find("Prog Info Log: \n"), 0u);
}

TEST_F(Shaders, MissingFileCountsAsAnEmptyOne)
{
    const std::string text = Create("a.vs", "nowhere.fs");
    test::WriteFile("empty.fs", "");
    EXPECT_EQ(text, Create("a.vs", "empty.fs"));
    EXPECT_NE(text, "");
    EXPECT_EQ(Create("a.vs", "."), text); // a folder has no text either
    ExpectOpenGLError(GL_INVALID_OPERATION);
}

TEST_F(Shaders, WarningsAreShownToo)
{
    test::WriteFile("warns.fs", "#version 110\n#extension GL_no_such_extension : warn\n"
                                "void main() { gl_FragColor = vec4(0.0, 1.0, 0.0, 1.0); }");
    EXPECT_EQ(Create("a.vs", "warns.fs").find("FragmentShader Info Log: \n"), 0u);
    EXPECT_EQ(DrawnPixel(), green);
}

TEST_F(Shaders, PathOf199CharactersWorks)
{
    const std::string name(199, 'n');
    test::WriteFile(name, greenSource);
    EXPECT_EQ(Create("a.vs", name), "");
    EXPECT_EQ(DrawnPixel(), green);
}

TEST_F(Shaders, ResourcesResolveAgainstTheWorkingFolder)
{
    EXPECT_EQ(Create("a.vs", "a.fs", false), "");
    EXPECT_EQ(DrawnPixel(), green);
    const std::string missing = Create("a.vs", "nowhere", true);
    test::WriteFile(std::string(200, 'n'), greenSource);
    EXPECT_EQ(Create("a.vs", std::string(200, 'n'), false), missing) << "longer than a resource's";
    ExpectOpenGLError(GL_INVALID_OPERATION);
    test::WriteFile(std::string(199, 'n'), greenSource);
    EXPECT_EQ(Create("a.vs", std::string(199, 'n'), false), "");
    EXPECT_EQ(DrawnPixel(), green);
}
} // namespace
