#pragma once

#include "show/Show.h"

#include <set>
#include <string>
#include <utility>

namespace check
{
/// Notes every uniform that a show asks for and its program does not have, as long as this lives: a
/// name that was misspelt, or that the shader no longer uses. OpenGL ignores such calls silently. A
/// context must be current. One at a time.
class cUniformWatch
{
public:
    explicit cUniformWatch(const vyr::cShowDescription &show);
    ~cUniformWatch();
    cUniformWatch(const cUniformWatch &) = delete;
    cUniformWatch &operator=(const cUniformWatch &) = delete;

    /// The fragment shader's file, or "a shader", and the uniform's name.
    const std::set<std::pair<std::string, std::string>> &GetMisses() const { return mMisses; }

private:
    static int Ask(unsigned int program, const char *name);

    const vyr::cShowDescription &mShow;
    std::set<std::pair<std::string, std::string>> mMisses;
};
} // namespace check
