#pragma once

#include "platform/core/Types.h"

namespace veldan {

/// How areas are filled: with one opaque colour, or not at all. A plain value, white to begin with.
class CBrush {
public:
    constexpr CBrush() = default;
    constexpr explicit CBrush(COLORREF colour) : m_crColour(colour) {}

    /// A brush that fills nothing.
    [[nodiscard]] static constexpr CBrush Hollow() {
        CBrush brush;
        brush.m_bHollow = true;
        return brush;
    }

    [[nodiscard]] constexpr COLORREF Colour() const { return m_crColour; }
    [[nodiscard]] constexpr bool IsHollow() const { return m_bHollow; }

private:
    COLORREF m_crColour = RGB(255, 255, 255);
    bool m_bHollow = false;
};

}  // namespace veldan
