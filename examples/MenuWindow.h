#pragma once

#include "platform/core/Geometry.h"

// The library's menu, seen from its host: a window like any other of the layer.

[[nodiscard]] bool IsMenuVisible();

/// Empty if there is no menu.
[[nodiscard]] veldan::CSize MenuSize();

/// The place for a menu that a button opens: below the button, or above it if there isn't enough room, and as far as
/// possible on the screen.
[[nodiscard]] veldan::CPoint MenuPlaceBeside(const veldan::CRect& button);
