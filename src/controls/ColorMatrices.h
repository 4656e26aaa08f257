#pragma once

#include "platform/draw/ColorMatrix.h"

namespace veldan {

// How states are derived from one picture: each colour keeps its alpha and is scaled or mixed, then shifted.

inline constexpr ColorMatrix BrightenMatrix = {{
    {1.05F, 0, 0, 0, 0},
    {0, 1.05F, 0, 0, 0},
    {0, 0, 1.05F, 0, 0},
    {0, 0, 0, 1, 0},
    {0.15F, 0.15F, 0.15F, 0, 1},
}};

/// Scales up as BrightenMatrix does, and shifts down.
inline constexpr ColorMatrix DarkenMatrix = {{
    {1.05F, 0, 0, 0, 0},
    {0, 1.05F, 0, 0, 0},
    {0, 0, 1.05F, 0, 0},
    {0, 0, 0, 1, 0},
    {-0.15F, -0.15F, -0.15F, 0, 1},
}};

inline constexpr ColorMatrix GrayMatrix = {{
    {0.3F, 0.3F, 0.3F, 0, 0},
    {0.59F, 0.59F, 0.59F, 0, 0},
    {0.11F, 0.11F, 0.11F, 0, 0},
    {0, 0, 0, 1, 0},
    {0, 0, 0, 0, 1},
}};

}  // namespace veldan
