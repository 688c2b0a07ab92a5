#pragma once

namespace vyr::web
{
/// What the fixed pipeline does where no program is in use.
enum eFixedPipeline
{
    PLAIN,        ///< the colour
    TEXTURED,     ///< times the texture
    SPHERE_MAPPED ///< times the texture, by coordinates made of the normal
};

/// Makes the program current that draws next, the one in use or that of `fixed`, and gives it the
/// matrices.
void PrepareProgram(eFixedPipeline fixed);

unsigned GetUsedProgram(); ///< by glUseProgram; 0: the fixed pipeline
} // namespace vyr::web
