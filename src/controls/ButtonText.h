#pragma once

#include "platform/draw/DC.h"

#include <string_view>

namespace veldan {

/// Draws a text of a button over what is there, and leaves the context's settings as they were.
void DrawButtonText(CDC& dc, std::string_view text, CRect rect, CFont font, COLORREF colour, UINT format);

}  // namespace veldan
