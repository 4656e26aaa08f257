#include "platform/draw/Region.h"
#include "platform/draw/ShapesInternal.h"

#include <algorithm>
#include <cmath>

namespace veldan {

Region Region::RoundRect(const CRect& rect, CSize corner) {
    Region region;
    for (int y = rect.top; y < rect.bottom; ++y) {
        const RowOfRounded row = RowOfRoundRect(rect, corner, y);
        region.Add(CRect{row.left, y, row.right, y + 1});
    }
    return region;
}

Region Region::Polygon(std::span<const CPoint> points) {
    const auto isNear = [](CPoint point) { return std::abs(point.x) < 32768 && std::abs(point.y) < 32768; };
    if (points.size() < 3 || points.size() > kMaxPoints || !std::ranges::all_of(points, isNear)) {
        return {};
    }
    const auto [top, bottom] = std::ranges::minmax(points, {}, &CPoint::y);
    Region region;
    std::vector<double> crossings;
    for (int y = top.y; y < bottom.y; ++y) {
        crossings.clear();
        const double middle = y + 0.5;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const CPoint from = points[i];
            const CPoint to = points[(i + 1) % points.size()];
            if ((from.y <= y) != (to.y <= y)) {
                crossings.push_back(from.x + (middle - from.y) * (to.x - from.x) / (to.y - from.y));
            }
        }
        std::ranges::sort(crossings);
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            region.Add(CRect{static_cast<int>(std::ceil(crossings[i] - 0.5)), y,
                             static_cast<int>(std::ceil(crossings[i + 1] - 0.5)), y + 1});
        }
    }
    return region;
}

}  // namespace veldan
