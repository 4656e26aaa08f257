#pragma once

#include "platform/core/Export.h"
#include "platform/core/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

struct _cairo_surface;

namespace veldan {

/// A rectangle of 32-bit pixels, 0xAARRGGBB with premultiplied alpha, in rows from top to bottom without gaps. A new
/// surface consists of zeros (transparent black). Sides may be 0; negative ones count as 0, and both are 0 if memory is
/// short. Shared by the device contexts and bitmaps that use it.
class VELDAN_PLATFORM_API Surface {
public:
    Surface(int width, int height);
    /// Uses existing memory for the pixels and shares its ownership.
    Surface(int width, int height, std::shared_ptr<std::uint32_t[]> pixels);
    /// With undefined pixels, which the caller sets at once.
    [[nodiscard]] static std::shared_ptr<Surface> MakeUnset(CSize size);
    ~Surface();
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    [[nodiscard]] int Width() const { return m_width; }
    [[nodiscard]] int Height() const { return m_height; }
    [[nodiscard]] CRect Bounds() const { return {0, 0, m_width, m_height}; }

    /// Row y of the pixels, 0 <= y < Height().
    [[nodiscard]] std::uint32_t* Row(int y) {
        return m_pixels.get() + static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width);
    }
    [[nodiscard]] const std::uint32_t* Row(int y) const {
        return m_pixels.get() + static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width);
    }
    /// The pixel at a point; 0 outside the surface.
    [[nodiscard]] std::uint32_t At(int x, int y) const { return Bounds().Contains({x, y}) ? Row(y)[x] : 0; }

    /// The same pixels for the drawing library, created at the first call and owned by the surface. Code that accesses
    /// the rows directly after that calls BeginPixels before and EndPixels afterwards.
    [[nodiscard]] _cairo_surface* Cairo();
    void BeginPixels();
    void EndPixels();

private:
    int m_width;
    int m_height;
    std::shared_ptr<std::uint32_t[]> m_pixels;
    _cairo_surface* m_cairo = nullptr;
};

}  // namespace veldan
