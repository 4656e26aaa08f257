#pragma once

#include "platform/core/Geometry.h"
#include "platform/core/Types.h"
#include "platform/draw/Bitmap.h"
#include "platform/draw/Brush.h"
#include "platform/draw/Font.h"
#include "platform/draw/Pen.h"
#include "platform/draw/Surface.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace veldan {

/// An object selected into a device context: a copy to draw with, and the pointer to return at the next selection.
template <class T>
struct Selected {
    T* pObject = nullptr;
    T value;
};

/// Limits a coordinate or length so that the few sums made with it can't overflow; no surface is that large.
constexpr int Near(int coordinate) {
    constexpr int kFarthest = 1 << 27;
    return std::clamp(coordinate, -kFarthest, kFarthest);
}

struct DeviceContext {
    std::shared_ptr<Surface> surface;  ///< If null, nothing is drawn.
    CPoint origin;                     ///< Logical (0, 0) on the surface if `windowOrg` is (0, 0).
    std::vector<CRect> clip;           ///< What may be drawn on, in surface coordinates: inside it, without overlap.
    CRect drawn;                       ///< Around everything that was drawn on, in surface coordinates.
    bool isMemory = false;             ///< Whether bitmaps can be selected.

    CPoint windowOrg;
    CPoint current;
    Selected<CBitmap> bitmap;
    Selected<CFont> font;
    Selected<CPen> pen;
    Selected<CBrush> brush;
    COLORREF textColour = RGB(0, 0, 0);
    COLORREF backgroundColour = RGB(255, 255, 255);
    int backgroundMode = 2;
    int stretchMode = 3;

    [[nodiscard]] CPoint ToSurface(CPoint logical) const;
    [[nodiscard]] CRect ToSurface(const CRect& logical) const;
    [[nodiscard]] CPoint Shift() const { return origin - windowOrg; }

    /// The rectangle around all clip rectangles.
    [[nodiscard]] CRect ClipBounds() const;

    /// Calls `draw` with each part of the rectangle that may be drawn on, in surface coordinates.
    template <class Draw>
    void ForEachPart(const CRect& area, Draw draw) {
        for (const CRect& rect : clip) {
            const CRect part = rect.Intersect(area);
            if (!part.IsEmpty()) {
                drawn = drawn.Around(part);
                draw(part);
            }
        }
    }

    /// Records that an area, in surface coordinates, was drawn on as far as allowed.
    void Note(const CRect& area) {
        ForEachPart(area, [](const CRect&) {});
    }

    /// Fills an area given in surface coordinates.
    void Fill(const CRect& area, COLORREF colour);
};

/// The pixel value of an opaque colour.
constexpr std::uint32_t PixelOf(COLORREF colour) {
    return 0xff000000U | GetRValue(colour) << 16 | GetGValue(colour) << 8 | GetBValue(colour);
}

}  // namespace veldan
