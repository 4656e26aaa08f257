#pragma once

#include "platform/core/Types.h"

namespace veldan {

/// Numbers of the colours that controls share.
inline constexpr int COLOR_WINDOW = 5;
inline constexpr int COLOR_WINDOWTEXT = 8;
inline constexpr int COLOR_HIGHLIGHT = 13;
inline constexpr int COLOR_HIGHLIGHTTEXT = 14;
inline constexpr int COLOR_BTNFACE = 15;
inline constexpr int COLOR_GRAYTEXT = 17;
inline constexpr int COLOR_BTNTEXT = 18;
inline constexpr int COLOR_INFOTEXT = 23;
inline constexpr int COLOR_INFOBK = 24;

/// The colour with a number, the same on every desktop; black for a number that isn't there. The highlight is that of
/// the menu's rows.
[[nodiscard]] constexpr COLORREF GetSysColor(int number) {
    switch (number) {
        case COLOR_WINDOW:
        case COLOR_HIGHLIGHTTEXT:
            return RGB(255, 255, 255);
        case COLOR_HIGHLIGHT:
            return RGB(179, 65, 15);
        case COLOR_BTNFACE:
            return RGB(240, 240, 240);
        case COLOR_GRAYTEXT:
            return RGB(109, 109, 109);
        case COLOR_INFOBK:
            return RGB(255, 255, 225);
        default:
            return RGB(0, 0, 0);
    }
}

}  // namespace veldan
