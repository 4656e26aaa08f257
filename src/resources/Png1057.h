#pragma once

#include <cstddef>
#include <span>

namespace veldan {

/// The icon of the row that adds a profile: a PNG file of 35 by 35 pixels.
extern const std::span<const std::byte> kPng1057;

}  // namespace veldan
