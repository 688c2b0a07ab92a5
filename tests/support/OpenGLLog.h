#pragma once

#include <string>
#include <vector>

namespace test
{
/// While it lives, the OpenGL calls by which layers are placed, coloured and switched are written
/// down, a line each ("glTranslatef 0 0 -5"), and still made. One at a time.
class cOpenGLLog
{
public:
    cOpenGLLog();
    ~cOpenGLLog();
    cOpenGLLog(const cOpenGLLog &) = delete;
    cOpenGLLog &operator=(const cOpenGLLog &) = delete;

    const std::vector<std::string> &Lines() const;
    /// The lines that begin with `call`.
    std::vector<std::string> LinesOf(const std::string &call) const;
};
} // namespace test
