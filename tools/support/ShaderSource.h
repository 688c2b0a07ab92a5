#pragma once

#include "show/Show.h"

#include <string>

namespace tools
{
/// The files that a program's shaders were made of; "a shader" where it is none of the show's.
struct cShaderFiles
{
    std::string mVertex, mFragment;
};

/// Compares the sources that the driver keeps with the shaders of the show's list of files, in the
/// working directory. A context must be current.
cShaderFiles FindShaderFiles(unsigned int program, const vyr::cShowDescription &show);
} // namespace tools
