#pragma once

#include <string>

namespace vyr
{
/// What a program was made of; an empty path: without that stage.
struct cShaderFiles
{
    std::string mVertex, mFragment;
};

/// Remembers it, for RefreshShaders.
void NoteShaderFiles(unsigned int program, const cShaderFiles &files);

/// The whole file; empty when there is none, or when what opens under the name has no size (a
/// folder).
std::string ReadShaderSource(const std::string &path);
} // namespace vyr
