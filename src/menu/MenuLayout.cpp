#include "menu/MenuLayout.h"

#include <algorithm>

namespace veldan {
namespace {

constexpr CRect kFirstGroup{2, 2, 152, 32};
constexpr CRect kFirstRow{155, 17, 505, 67};
constexpr int kSeparatorLeft = 153;
constexpr int kStripLeft = 154;
constexpr int kStripRight = 506;
constexpr int kStripHeight = 16;

}  // namespace

CRect MenuLayout::Group(int number) {
    return kFirstGroup.Offset({0, number * kFirstGroup.Height()});
}

CRect MenuLayout::Row(int row) {
    return kFirstRow.Offset({0, row * kFirstRow.Height()});
}

CRect MenuLayout::ScrollUp() const {
    return {kStripLeft, 1, kStripRight, 1 + kStripHeight};
}

CRect MenuLayout::ScrollDown() const {
    const int bottom = Size().cy - 1;
    return {kStripLeft, bottom - kStripHeight, kStripRight, bottom};
}

CRect MenuLayout::Separator() const {
    return {kSeparatorLeft, 0, kSeparatorLeft + 1, Size().cy - 1};
}

int MenuLayout::SlideOf(const CRect& menu, const CRect& owner, const CRect& screen, int zDelta) {
    // Where the whole menu fits on the screen, it stays there; of a higher one, either end comes onto it.
    if (zDelta < 0) {
        const int highest = std::min(screen.top + menu.Height(), screen.bottom);
        const int limit = std::clamp(owner.bottom, highest, screen.bottom);
        return std::min(std::max(zDelta, limit - menu.bottom), 0);
    }
    const int lowest = std::max(screen.bottom - menu.Height(), screen.top);
    const int limit = std::clamp(owner.top, screen.top, lowest);
    return std::max(std::min(zDelta, limit - menu.top), 0);
}

}  // namespace veldan
