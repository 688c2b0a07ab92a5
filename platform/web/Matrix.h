#pragma once

#include <array>

namespace vyr::web
{
/// Four by four, columns first, as OpenGL takes them.
using tMatrix = std::array<float, 16>;

inline constexpr tMatrix kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

tMatrix operator*(const tMatrix &a, const tMatrix &b);

/// The inverse transpose of the upper left three by three of `matrix`: what normals are turned by.
/// Columns first. Not finite where `matrix` can't be inverted.
std::array<float, 9> NormalMatrix(const tMatrix &matrix);

/// The tops of the two stacks.
const tMatrix &ModelView();
const tMatrix &Projection();

/// Both stacks as at the beginning: one identity each, the modelview's current. A new context
/// begins so.
void ResetMatrices();
} // namespace vyr::web
