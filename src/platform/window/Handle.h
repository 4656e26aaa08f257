#pragma once

#include <cstdint>

namespace veldan {

/// Names a window. A handle is never used again after its window is gone, so an old one finds nothing instead of a
/// stranger.
struct HWND {
    std::uint32_t slot = 0;
    std::uint32_t generation = 0;  // 0 in the null handle only

    constexpr explicit operator bool() const { return generation != 0; }
    constexpr bool operator==(const HWND&) const = default;

    /// The handle as one number, 0 for the null handle; travels in message arguments and names top-levels on a display.
    [[nodiscard]] constexpr std::uint64_t Value() const { return std::uint64_t{generation} << 32 | slot; }
    [[nodiscard]] static constexpr HWND FromValue(std::uint64_t value) {
        return {static_cast<std::uint32_t>(value), static_cast<std::uint32_t>(value >> 32)};
    }
};

}  // namespace veldan
