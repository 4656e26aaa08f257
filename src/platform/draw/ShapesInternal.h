#pragma once

#include "platform/core/Geometry.h"

namespace veldan {

/// What a row of a rounded rectangle covers; nothing where right isn't beyond left.
struct RowOfRounded {
    int left = 0;
    int right = 0;
};

/// `y` lies between the rectangle's top and bottom. An ellipse can't be larger than the rectangle that it rounds.
[[nodiscard]] RowOfRounded RowOfRoundRect(const CRect& rect, CSize corner, int y);

}  // namespace veldan
