#pragma once

#include <cstdint>
#include <vector>

namespace veldan {

/// The picture of a frame whose host has set none, in several sizes, as window managers expect it: for each size width,
/// height and the pixels, 0xAARRGGBB without premultiplied alpha.
[[nodiscard]] std::vector<std::uint32_t> MakeDefaultIcon();

}  // namespace veldan
