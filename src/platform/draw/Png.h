#pragma once

#include "platform/core/Export.h"
#include "platform/core/Geometry.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace veldan {

class Surface;

/// The size of the picture, if the bytes have the outer form of a PNG file that can be decoded: signature, header with
/// its checksum, complete chunks up to the last one, and no more pixels than such a file can contain.
[[nodiscard]] VELDAN_PLATFORM_API std::optional<CSize> ReadPngSize(std::string_view bytes);

/// Decodes a PNG file into premultiplied pixels; null if it is damaged or too large.
[[nodiscard]] VELDAN_PLATFORM_API std::unique_ptr<Surface> DecodePng(std::string_view bytes);

enum class PngAlpha { Keep, Ignore };

/// Encodes the surface as a PNG file; empty on failure. PngAlpha::Ignore writes every pixel as opaque, as a screen
/// shows it.
[[nodiscard]] VELDAN_PLATFORM_API std::string EncodePng(const Surface& surface, PngAlpha alpha);

}  // namespace veldan
