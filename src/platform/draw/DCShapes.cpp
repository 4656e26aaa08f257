#include "platform/draw/DC.h"
#include "platform/draw/DCInternal.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace veldan {
namespace {

// Copies a block of pixels to a place on the same or another surface. Both lie inside of their surfaces.
void CopyBlock(Surface& target, const CRect& area, const Surface& source, CPoint from) {
    const int height = area.Height();
    // Within one surface rows are taken in an order in which none is overwritten before it was copied.
    const bool upwards = &target == &source && area.top > from.y;
    for (int i = 0; i < height; ++i) {
        const int row = upwards ? height - 1 - i : i;
        const std::uint32_t* first = source.Row(from.y + row) + from.x;
        std::uint32_t* to = target.Row(area.top + row) + area.left;
        if (to <= first) {
            std::copy(first, first + area.Width(), to);
        } else {
            std::copy_backward(first, first + area.Width(), to + area.Width());
        }
    }
}

// How far a row of a rounded rectangle begins inside of its left side: `distance` rows below the top side, with corners
// of half the ellipse's size.
int CornerInset(int distance, double radiusX, double radiusY) {
    const double fromCentre = radiusY - (distance + 0.5);
    if (fromCentre <= 0) {
        return 0;
    }
    const double reach = std::sqrt(std::max(0.0, 1 - fromCentre * fromCentre / (radiusY * radiusY)));
    return static_cast<int>(std::lround(radiusX * (1 - reach)));
}

void FillRounded(DeviceContext& context, const CRect& rect, double radiusX, double radiusY, COLORREF colour) {
    const CRect bounds = context.ClipBounds();
    for (int y = std::max(rect.top, bounds.top); y < std::min(rect.bottom, bounds.bottom); ++y) {
        const int inset = CornerInset(std::min(y - rect.top, rect.bottom - 1 - y), radiusX, radiusY);
        context.Fill({rect.left + inset, y, rect.right - inset, y + 1}, colour);
    }
}

// Fills the path of a thin line with the pen, which stands out evenly on all sides, or by one more below and to the
// right.
void FillWithPen(DeviceContext& context, const CRect& path) {
    const int width = context.pen.value.Width();
    const int before = (width - 1) / 2;
    const int after = width / 2;
    if (!path.IsEmpty()) {
        context.Fill({path.left - before, path.top - before, path.right + after, path.bottom + after},
                     context.pen.value.Colour());
    }
}

}  // namespace

bool CDC::BitBlt(int x, int y, int width, int height, const CDC* pSource, int xSource, int ySource, UINT operation) {
    if (!m_hDC || !m_hDC->surface || !pSource || !pSource->m_hDC || !pSource->m_hDC->surface || operation != SRCCOPY) {
        return false;
    }
    Surface& target = *m_hDC->surface;
    Surface& source = *pSource->m_hDC->surface;
    const CPoint at = m_hDC->ToSurface(CPoint{x, y});
    const CRect area = CRect::FromSize(at, {Near(width), Near(height)});
    const CPoint shift = pSource->m_hDC->ToSurface(CPoint{xSource, ySource}) - at;
    const CRect readable = area.Intersect(source.Bounds().Offset(-shift));
    source.BeginPixels();
    target.BeginPixels();
    m_hDC->ForEachPart(readable, [&](const CRect& part) { CopyBlock(target, part, source, part.TopLeft() + shift); });
    target.EndPixels();
    return true;
}

void CDC::FillSolidRect(const CRect& rect, COLORREF colour) {
    if (m_hDC) {
        m_hDC->Fill(m_hDC->ToSurface(rect), colour);
    }
}

void CDC::FrameRect(const CRect& rect, const CBrush& brush) {
    if (rect.IsEmpty()) {
        return;
    }
    const COLORREF colour = brush.Colour();
    FillSolidRect({rect.left, rect.top, rect.right, rect.top + 1}, colour);
    FillSolidRect({rect.left, rect.bottom - 1, rect.right, rect.bottom}, colour);
    FillSolidRect({rect.left, rect.top, rect.left + 1, rect.bottom}, colour);
    FillSolidRect({rect.right - 1, rect.top, rect.right, rect.bottom}, colour);
}

CPoint CDC::MoveTo(CPoint point) {
    return m_hDC ? std::exchange(m_hDC->current, point) : CPoint();
}

bool CDC::LineTo(CPoint point) {
    if (!m_hDC) {
        return false;
    }
    const CPoint from = m_hDC->ToSurface(MoveTo(point));
    const CPoint to = m_hDC->ToSurface(point);
    const CPoint way = to - from;
    if (way.x == 0 || way.y == 0) {
        // Straight lines are rectangles; the start belongs to them and the end does not, whichever comes first.
        const CPoint back{way.x < 0 ? 1 : 0, way.y < 0 ? 1 : 0};
        const CPoint first = CPoint{std::min(from.x, to.x), std::min(from.y, to.y)} + back;
        const CSize size{way.y == 0 ? std::abs(way.x) : 1, way.x == 0 ? std::abs(way.y) : 1};
        FillWithPen(*m_hDC, CRect::FromSize(first, way == CPoint{} ? CSize{} : size));
        return true;
    }
    const double steps = std::max(std::abs(way.x), std::abs(way.y));
    for (double i = 0; i < steps; ++i) {
        const CPoint step{static_cast<int>(std::lround(i * way.x / steps)),
                          static_cast<int>(std::lround(i * way.y / steps))};
        FillWithPen(*m_hDC, CRect::FromSize(from + step, {1, 1}));
    }
    return true;
}

bool CDC::RoundRect(const CRect& rect, CSize corner) {
    if (!m_hDC) {
        return false;
    }
    const CRect outer = m_hDC->ToSurface(rect);
    const int pen = m_hDC->pen.value.Width();
    // An ellipse can't be larger than the rectangle that it rounds.
    const double radiusX = std::clamp(corner.cx, 0, std::max(outer.Width(), 0)) / 2.0;
    const double radiusY = std::clamp(corner.cy, 0, std::max(outer.Height(), 0)) / 2.0;
    FillRounded(*m_hDC, outer, radiusX, radiusY, m_hDC->pen.value.Colour());
    FillRounded(*m_hDC, outer.Inflate(-pen, -pen), std::max(radiusX - pen, 0.0), std::max(radiusY - pen, 0.0),
                m_hDC->brush.value.Colour());
    return true;
}

}  // namespace veldan
