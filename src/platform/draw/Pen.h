#pragma once

#include "platform/core/Types.h"

namespace veldan {

/// How lines are drawn: solid, in one colour. A plain value.
class CPen {
public:
    constexpr CPen() = default;
    constexpr CPen(int width, COLORREF colour) : m_nWidth(width < 1 ? 1 : width), m_crColour(colour) {}

    [[nodiscard]] constexpr int Width() const { return m_nWidth; }
    [[nodiscard]] constexpr COLORREF Colour() const { return m_crColour; }

private:
    int m_nWidth = 1;
    COLORREF m_crColour = 0;
};

}  // namespace veldan
