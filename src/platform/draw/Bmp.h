#pragma once

#include "platform/core/Export.h"

#include <memory>
#include <string_view>

namespace veldan {

class Surface;

/// Decodes a BMP file into opaque pixels: uncompressed, 1, 4, 8, 24 or 32 bits a pixel, rows from the bottom up or from
/// the top down. The fourth byte of 32 bits is not an alpha. Null for anything else, for sides beyond 8,192 and for a
/// file that doesn't hold all of its rows.
[[nodiscard]] VELDAN_PLATFORM_API std::unique_ptr<Surface> DecodeBmp(std::string_view bytes);

}  // namespace veldan
