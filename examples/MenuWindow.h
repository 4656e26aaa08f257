#pragma once

#include "platform/core/Geometry.h"

// The library's menu, seen from its host: a window like any other of the layer.

[[nodiscard]] bool IsMenuVisible();

/// Empty where there is no menu.
[[nodiscard]] veldan::CSize MenuSize();

/// Where the menu goes that a button opens: below it, above it where there isn't enough room, and in any case on the
/// screen as far as it fits.
[[nodiscard]] veldan::CPoint MenuPlaceBeside(const veldan::CRect& button);
