#pragma once

#include "platform/draw/ColorMatrix.h"

#include <cstddef>
#include <cstdint>

/// Loops over rows of premultiplied 32-bit pixels, optimised in every kind of build.
namespace veldan {

void FillPixels(std::uint32_t* target, std::size_t count, std::uint32_t pixel);

/// Blends premultiplied pixels over others.
void BlendPixels(std::uint32_t* target, const std::uint32_t* source, std::size_t count);

/// Blends an opaque pixel over others, according to a mask.
void BlendMask(std::uint32_t* target, const std::uint8_t* mask, std::size_t count, std::uint32_t pixel);

/// Converts straight alpha to premultiplied alpha.
void PremultiplyPixels(std::uint32_t* pixels, std::size_t count);

/// Converts premultiplied alpha to straight alpha, with rounded colours.
void UnpremultiplyPixels(std::uint32_t* pixels, std::size_t count);

void TransformPixels(std::uint32_t* pixels, std::size_t count, const ColorMatrix& matrix);

}  // namespace veldan
