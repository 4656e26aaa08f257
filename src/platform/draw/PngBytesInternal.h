#pragma once

#include <cstdint>
#include <string_view>

namespace veldan {

/// The number of four bytes at a place in a PNG file, the highest first.
[[nodiscard]] constexpr std::uint32_t PngNumberAt(std::string_view bytes, std::size_t offset) {
    std::uint32_t number = 0;
    for (const char byte : bytes.substr(offset, 4)) {
        number = number << 8 | static_cast<unsigned char>(byte);
    }
    return number;
}

}  // namespace veldan
