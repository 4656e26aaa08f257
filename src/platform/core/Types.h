#pragma once

#include <cstdint>

namespace veldan {

using BOOL = std::int32_t;
using BYTE = std::uint8_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using UINT_PTR = std::uintptr_t;

/// Message arguments are as wide as a pointer, because lParam may contain one.
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;

/// A colour as 0x00BBGGRR: the low byte is red.
using COLORREF = std::uint32_t;

constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xff) | (green & 0xff) << 8 | (blue & 0xff) << 16;
}
constexpr unsigned GetRValue(COLORREF colour) {
    return colour & 0xff;
}
constexpr unsigned GetGValue(COLORREF colour) {
    return colour >> 8 & 0xff;
}
constexpr unsigned GetBValue(COLORREF colour) {
    return colour >> 16 & 0xff;
}

/// The low and the high 16 bits of a message argument, as signed numbers because coordinates may be negative.
constexpr int SignedLoWord(std::intptr_t value) {
    return static_cast<std::int16_t>(value & 0xffff);
}
constexpr int SignedHiWord(std::intptr_t value) {
    return static_cast<std::int16_t>(value >> 16 & 0xffff);
}
constexpr UINT LoWord(std::uintptr_t value) {
    return value & 0xffff;
}
constexpr UINT HiWord(std::uintptr_t value) {
    return value >> 16 & 0xffff;
}
constexpr LPARAM MakeLParam(int low, int high) {
    return static_cast<LPARAM>((static_cast<std::uint32_t>(high) & 0xffffU) << 16 |
                               (static_cast<std::uint32_t>(low) & 0xffffU));
}

}  // namespace veldan
