#pragma once

#include <cstddef>
#include <span>

namespace veldan {

// PNG files of the library's own.

/// The icon of the row that adds a profile, 35 by 35 pixels.
extern const std::span<const std::byte> kPng1057;
/// That of a profile whose icon isn't there, 35 by 35.
extern const std::span<const std::byte> kPng1058;
/// That of such a group, 16 by 16.
extern const std::span<const std::byte> kPng1059;

}  // namespace veldan
