#pragma once

#include "platform/core/Export.h"
#include "platform/core/Geometry.h"

#include <span>
#include <vector>

struct _cairo_region;

namespace veldan {

/// A set of pixels made of rectangles; a value type. The default is the empty region.
class VELDAN_PLATFORM_API Region {
public:
    Region();
    explicit Region(const CRect& rect);
    Region(const Region& other);
    Region(Region&& other) noexcept;
    Region& operator=(const Region& other);
    Region& operator=(Region&& other) noexcept;
    ~Region();

    /// A rectangle with rounded corners; `corner` is the size of the ellipse that rounds them, as CDC::RoundRect fills
    /// it.
    [[nodiscard]] static Region RoundRect(const CRect& rect, CSize corner);
    /// The pixels whose centres lie inside of a closed outline an odd number of times. Empty for fewer than three
    /// points, for more than kMaxPoints, and outside of the coordinates of 16 bits.
    [[nodiscard]] static Region Polygon(std::span<const CPoint> points);
    static constexpr std::size_t kMaxPoints = 1024;

    [[nodiscard]] bool IsEmpty() const;
    [[nodiscard]] CRect Bounds() const;
    [[nodiscard]] bool Contains(CPoint point) const;
    [[nodiscard]] bool Intersects(const CRect& rect) const;
    /// The rectangles of the region without overlap, from top to bottom and left to right.
    [[nodiscard]] std::vector<CRect> Rects() const;
    bool operator==(const Region& other) const;

    Region& Add(const CRect& rect);
    Region& Add(const Region& other);
    Region& Intersect(const CRect& rect);
    Region& Intersect(const Region& other);
    Region& Subtract(const CRect& rect);
    Region& Subtract(const Region& other);
    Region& Translate(CPoint by);
    void Clear();

private:
    _cairo_region* m_region = nullptr;  // null means empty
};

}  // namespace veldan
