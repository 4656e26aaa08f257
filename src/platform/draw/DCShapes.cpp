#include "platform/draw/DC.h"
#include "platform/draw/DCInternal.h"
#include "platform/draw/ShapesInternal.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace veldan {
namespace {

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

RowOfRounded RowOfRoundRect(const CRect& rect, CSize corner, int y) {
    const double radiusX = std::clamp(corner.cx, 0, std::max(rect.Width(), 0)) / 2.0;
    const double radiusY = std::clamp(corner.cy, 0, std::max(rect.Height(), 0)) / 2.0;
    const double fromCentre = radiusY - (std::min(y - rect.top, rect.bottom - 1 - y) + 0.5);
    int inset = 0;
    if (fromCentre > 0) {
        const double reach = std::sqrt(std::max(0.0, 1 - fromCentre * fromCentre / (radiusY * radiusY)));
        inset = static_cast<int>(std::lround(radiusX * (1 - reach)));
    }
    return {rect.left + inset, rect.right - inset};
}

void CDC::FillSolidRect(const CRect& rect, COLORREF colour) {
    if (m_hDC) {
        m_hDC->Fill(m_hDC->ToSurface(rect), colour);
    }
}

void CDC::FillRect(const CRect& rect, const CBrush& brush) {
    if (!brush.IsHollow()) {
        FillSolidRect(rect, brush.Colour());
    }
}

void CDC::FrameRect(const CRect& rect, const CBrush& brush) {
    if (rect.IsEmpty() || brush.IsHollow()) {
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
        // Straight lines are rectangles; they include the start and exclude the end, in either direction.
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
    const CRect inner = outer.Inflate(-pen, -pen);
    const CSize innerCorner{std::max(std::min(corner.cx, outer.Width()) - 2 * pen, 0),
                            std::max(std::min(corner.cy, outer.Height()) - 2 * pen, 0)};
    const COLORREF outline = m_hDC->pen.value.Colour();
    const CBrush& brush = m_hDC->brush.value;
    const CRect bounds = m_hDC->ClipBounds();
    for (int y = std::max(outer.top, bounds.top); y < std::min(outer.bottom, bounds.bottom); ++y) {
        const RowOfRounded row = RowOfRoundRect(outer, corner, y);
        const bool isWithin = y >= inner.top && y < inner.bottom;
        const RowOfRounded inside =
            isWithin ? RowOfRoundRect(inner, innerCorner, y) : RowOfRounded{row.right, row.right};
        m_hDC->Fill({row.left, y, std::min(inside.left, row.right), y + 1}, outline);
        m_hDC->Fill({std::max(inside.right, inside.left), y, row.right, y + 1}, outline);
        if (!brush.IsHollow()) {
            m_hDC->Fill({inside.left, y, inside.right, y + 1}, brush.Colour());
        }
    }
    return true;
}

void CDC::DrawFocusRect(const CRect& rect) {
    if (!m_hDC || !m_hDC->surface || rect.IsEmpty()) {
        return;
    }
    Surface& surface = *m_hDC->surface;
    const CRect frame = m_hDC->ToSurface(rect);
    const CRect sides[] = {{frame.left, frame.top, frame.right, frame.top + 1},
                           {frame.left, frame.bottom - 1, frame.right, frame.bottom},
                           {frame.left, frame.top + 1, frame.left + 1, frame.bottom - 1},
                           {frame.right - 1, frame.top + 1, frame.right, frame.bottom - 1}};
    surface.BeginPixels();
    for (std::size_t i = 0; i < std::size(sides); ++i) {
        // A rectangle one pixel high or wide has one side only.
        if ((i == 1 && frame.Height() == 1) || (i == 3 && frame.Width() == 1)) {
            continue;
        }
        m_hDC->ForEachPart(sides[i], [&](const CRect& part) {
            for (int y = part.top; y < part.bottom; ++y) {
                for (int x = part.left; x < part.right; ++x) {
                    surface.Row(y)[x] ^= ((x - frame.left + y - frame.top) & 1) == 0 ? 0x00ffffffU : 0;
                }
            }
        });
    }
    surface.EndPixels();
}

}  // namespace veldan
