#pragma once

#include <algorithm>

namespace veldan {

struct CPoint {
    int x = 0;
    int y = 0;

    constexpr bool operator==(const CPoint&) const = default;
    constexpr CPoint operator+(CPoint other) const { return {x + other.x, y + other.y}; }
    constexpr CPoint operator-(CPoint other) const { return {x - other.x, y - other.y}; }
    constexpr CPoint operator-() const { return {-x, -y}; }
};

struct CSize {
    int cx = 0;
    int cy = 0;

    constexpr bool operator==(const CSize&) const = default;
};

/// A rectangle of pixels; `right` and `bottom` are outside it. It may be empty or have negative sides.
struct CRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    constexpr bool operator==(const CRect&) const = default;

    static constexpr CRect FromSize(CPoint at, CSize size) { return {at.x, at.y, at.x + size.cx, at.y + size.cy}; }

    [[nodiscard]] constexpr int Width() const { return right - left; }
    [[nodiscard]] constexpr int Height() const { return bottom - top; }
    [[nodiscard]] constexpr CPoint TopLeft() const { return {left, top}; }
    [[nodiscard]] constexpr CSize Size() const { return {Width(), Height()}; }
    [[nodiscard]] constexpr bool IsEmpty() const { return right <= left || bottom <= top; }
    [[nodiscard]] constexpr bool IsNull() const { return *this == CRect{}; }
    [[nodiscard]] constexpr bool Contains(CPoint p) const {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    [[nodiscard]] constexpr CRect Offset(CPoint by) const {
        return {left + by.x, top + by.y, right + by.x, bottom + by.y};
    }
    /// Moves every side outwards, or inwards for negative numbers, which may give negative sides.
    [[nodiscard]] constexpr CRect Inflate(int dx, int dy) const {
        return {left - dx, top - dy, right + dx, bottom + dy};
    }
    [[nodiscard]] constexpr CRect Intersect(const CRect& other) const {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }
    /// The smallest rectangle that contains both; an empty one counts for nothing.
    [[nodiscard]] constexpr CRect Around(const CRect& other) const {
        if (IsEmpty() || other.IsEmpty()) {
            return IsEmpty() ? other : *this;
        }
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }
    [[nodiscard]] constexpr bool Intersects(const CRect& other) const { return !Intersect(other).IsEmpty(); }
};

}  // namespace veldan
