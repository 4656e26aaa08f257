#pragma once

#include "platform/core/Types.h"

namespace veldan {

/// How areas are filled: with one opaque colour. A plain value, white to begin with.
class CBrush {
public:
    constexpr CBrush() = default;
    constexpr explicit CBrush(COLORREF colour) : m_crColour(colour) {}

    [[nodiscard]] constexpr COLORREF Colour() const { return m_crColour; }

private:
    COLORREF m_crColour = RGB(255, 255, 255);
};

}  // namespace veldan
