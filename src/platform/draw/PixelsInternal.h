#pragma once

#include "platform/draw/ColorMatrix.h"

#include <cstddef>
#include <cstdint>

/// Loops over rows of premultiplied 32-bit pixels. Built for speed in every kind of build.
namespace veldan {

void FillPixels(std::uint32_t* target, std::size_t count, std::uint32_t pixel);

/// Draws premultiplied pixels over others.
void BlendPixels(std::uint32_t* target, const std::uint32_t* source, std::size_t count);

/// Draws an opaque pixel over others, as much of it as the mask says.
void BlendMask(std::uint32_t* target, const std::uint8_t* mask, std::size_t count, std::uint32_t pixel);

/// Turns straight alpha into premultiplied alpha.
void PremultiplyPixels(std::uint32_t* pixels, std::size_t count);

/// The way back, with the true colours rounded.
void UnpremultiplyPixels(std::uint32_t* pixels, std::size_t count);

void TransformPixels(std::uint32_t* pixels, std::size_t count, const ColorMatrix& matrix);

}  // namespace veldan
