#pragma once

#include <memory>
#include <string_view>

namespace veldan {

class Surface;

/// Decodes a PNG file of the kind that icons are: 8 bits a channel, colours with alpha, not interlaced, its data
/// in one chunk and within 1 MiB unpacked. Gives the pixels as they stand in the file, with straight alpha. Null for
/// every other file and for every damaged one: whether that is a picture is for the full decoder to say, which takes
/// more than twice as long for an icon.
[[nodiscard]] std::unique_ptr<Surface> DecodePlainPng(std::string_view bytes);

}  // namespace veldan
