#pragma once

#include "platform/core/Export.h"

#include <array>

namespace veldan {

class Surface;

/// A transformation of colours: the row vector (red, green, blue, alpha, 1), each from 0 to 1, is multiplied by this
/// matrix, so row 4 is added. The first index is the row: matrix[row][column].
using ColorMatrix = std::array<std::array<float, 5>, 5>;

/// Applies the matrix to every pixel. It works on colours without premultiplied alpha, and results are clamped to the
/// range from 0 to 1. Pixels that become fully transparent have no colour.
VELDAN_PLATFORM_API void ApplyColorMatrix(Surface& surface, const ColorMatrix& matrix);

}  // namespace veldan
