#pragma once

#include "platform/core/Types.h"

inline constexpr veldan::COLORREF kPaper = veldan::RGB(246, 244, 242);
inline constexpr veldan::COLORREF kRule = veldan::RGB(221, 215, 210);
inline constexpr veldan::COLORREF kInk = veldan::RGB(44, 36, 32);
inline constexpr veldan::COLORREF kFaintInk = veldan::RGB(122, 108, 100);
inline constexpr veldan::COLORREF kAccent = veldan::RGB(111, 50, 23);
inline constexpr veldan::COLORREF kHotAccent = veldan::RGB(146, 64, 26);
inline constexpr veldan::COLORREF kPressedAccent = veldan::RGB(84, 36, 15);
inline constexpr veldan::COLORREF kOnAccent = veldan::RGB(255, 248, 240);
