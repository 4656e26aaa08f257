#include "platform/draw/Region.h"

#include <cairo.h>

#include <utility>

namespace veldan {
namespace {

cairo_rectangle_int_t ToCairo(const CRect& rect) {
    return {rect.left, rect.top, rect.Width(), rect.Height()};
}

CRect FromCairo(const cairo_rectangle_int_t& rect) {
    return {rect.x, rect.y, rect.x + rect.width, rect.y + rect.height};
}

}  // namespace

Region::Region() = default;

Region::Region(const CRect& rect) {
    Add(rect);
}

Region::Region(const Region& other) : m_region(other.m_region ? cairo_region_copy(other.m_region) : nullptr) {}

Region::Region(Region&& other) noexcept : m_region(std::exchange(other.m_region, nullptr)) {}

Region& Region::operator=(const Region& other) {
    Region copy(other);
    std::swap(m_region, copy.m_region);
    return *this;
}

Region& Region::operator=(Region&& other) noexcept {
    std::swap(m_region, other.m_region);
    return *this;
}

Region::~Region() {
    cairo_region_destroy(m_region);
}

bool Region::IsEmpty() const {
    return !m_region || cairo_region_is_empty(m_region);
}

CRect Region::Bounds() const {
    if (IsEmpty()) {
        return {};
    }
    cairo_rectangle_int_t bounds;
    cairo_region_get_extents(m_region, &bounds);
    return FromCairo(bounds);
}

bool Region::Contains(CPoint point) const {
    return m_region && cairo_region_contains_point(m_region, point.x, point.y);
}

bool Region::Intersects(const CRect& rect) const {
    if (!m_region || rect.IsEmpty()) {
        return false;
    }
    const cairo_rectangle_int_t area = ToCairo(rect);
    return cairo_region_contains_rectangle(m_region, &area) != CAIRO_REGION_OVERLAP_OUT;
}

std::vector<CRect> Region::Rects() const {
    std::vector<CRect> rects(static_cast<std::size_t>(m_region ? cairo_region_num_rectangles(m_region) : 0));
    for (std::size_t i = 0; i < rects.size(); ++i) {
        cairo_rectangle_int_t rect;
        cairo_region_get_rectangle(m_region, static_cast<int>(i), &rect);
        rects[i] = FromCairo(rect);
    }
    return rects;
}

bool Region::operator==(const Region& other) const {
    return IsEmpty() || other.IsEmpty() ? IsEmpty() == other.IsEmpty() : cairo_region_equal(m_region, other.m_region);
}

Region& Region::Add(const CRect& rect) {
    if (rect.IsEmpty()) {
        return *this;
    }
    const cairo_rectangle_int_t area = ToCairo(rect);
    if (m_region) {
        cairo_region_union_rectangle(m_region, &area);
    } else {
        m_region = cairo_region_create_rectangle(&area);
    }
    return *this;
}

Region& Region::Add(const Region& other) {
    if (!m_region) {
        return *this = other;
    }
    if (other.m_region) {
        cairo_region_union(m_region, other.m_region);
    }
    return *this;
}

Region& Region::Intersect(const CRect& rect) {
    if (rect.IsEmpty()) {
        Clear();
    } else if (m_region) {
        const cairo_rectangle_int_t area = ToCairo(rect);
        cairo_region_intersect_rectangle(m_region, &area);
    }
    return *this;
}

Region& Region::Intersect(const Region& other) {
    if (!other.m_region) {
        Clear();
    } else if (m_region) {
        cairo_region_intersect(m_region, other.m_region);
    }
    return *this;
}

Region& Region::Subtract(const CRect& rect) {
    if (m_region && !rect.IsEmpty()) {
        const cairo_rectangle_int_t area = ToCairo(rect);
        cairo_region_subtract_rectangle(m_region, &area);
    }
    return *this;
}

Region& Region::Subtract(const Region& other) {
    if (m_region && other.m_region) {
        cairo_region_subtract(m_region, other.m_region);
    }
    return *this;
}

Region& Region::Translate(CPoint by) {
    if (m_region) {
        cairo_region_translate(m_region, by.x, by.y);
    }
    return *this;
}

void Region::Clear() {
    cairo_region_destroy(std::exchange(m_region, nullptr));
}

}  // namespace veldan
