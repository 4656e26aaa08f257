#pragma once

#include "platform/draw/DC.h"
#include "platform/draw/Surface.h"

#include <algorithm>
#include <cstdint>

namespace veldan {

/// A bitmap in a memory device context, with ways to look at its pixels.
struct Canvas {
    Canvas(int width, int height) {
        dc.CreateCompatibleDC(nullptr);
        bitmap.CreateCompatibleBitmap(&dc, width, height);
        dc.SelectObject(&bitmap);
    }

    [[nodiscard]] std::uint32_t At(int x, int y) const { return bitmap.GetSurface()->At(x, y); }

    /// Calls `test` with each pixel's coordinates and counts for how many it is true.
    template <class Test>
    [[nodiscard]] int Count(Test test) const {
        int count = 0;
        for (int y = 0; y < bitmap.GetSize().cy; ++y) {
            for (int x = 0; x < bitmap.GetSize().cx; ++x) {
                count += test(x, y) ? 1 : 0;
            }
        }
        return count;
    }

    /// Whether each pixel has the value that `pixel` returns for its coordinates.
    template <class Pixel>
    [[nodiscard]] bool Shows(Pixel pixel) const {
        return Count([&](int x, int y) { return At(x, y) != pixel(x, y); }) == 0;
    }

    [[nodiscard]] int CountInk(const CRect& area) const {
        return Count([&](int x, int y) { return area.Contains({x, y}) && At(x, y) != 0; });
    }

    /// The smallest rectangle around all pixels for which `test` is true.
    template <class Test>
    [[nodiscard]] CRect Around(Test test) const {
        CRect result{bitmap.GetSize().cx, bitmap.GetSize().cy, 0, 0};
        const int found = Count([&](int x, int y) {
            if (!test(x, y)) {
                return false;
            }
            result = {std::min(result.left, x), std::min(result.top, y), std::max(result.right, x + 1),
                      std::max(result.bottom, y + 1)};
            return true;
        });
        return found ? result : CRect();
    }

    CBitmap bitmap;
    CDC dc;
};

inline constexpr std::uint32_t kRedPixel = 0xffff0000;
inline constexpr std::uint32_t kBluePixel = 0xff0000ff;
inline constexpr COLORREF kRed = RGB(255, 0, 0);
inline constexpr COLORREF kBlue = RGB(0, 0, 255);

}  // namespace veldan
