#pragma once

#include "platform/core/Export.h"

#include <array>

namespace veldan {

class Surface;

/// A change of colours: the row vector (red, green, blue, alpha, 1), each from 0 to 1, times this table, so that row 4
/// is added. Rows first: matrix[row][column].
using ColorMatrix = std::array<std::array<float, 5>, 5>;

/// Applies the matrix to every pixel. The colours are taken without their premultiplied alpha, and the results are held
/// within 0 and 1; what is fully transparent afterwards stays without colour.
VELDAN_PLATFORM_API void ApplyColorMatrix(Surface& surface, const ColorMatrix& matrix);

}  // namespace veldan
