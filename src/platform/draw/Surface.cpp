#include "platform/draw/Surface.h"

#include <cairo.h>

#include <algorithm>
#include <new>
#include <utility>

namespace veldan {

Surface::Surface(int width, int height) : m_width(std::max(width, 0)), m_height(std::max(height, 0)) {
    const auto count = static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height);
    m_pixels.reset(new (std::nothrow) std::uint32_t[count]());
    if (!m_pixels) {
        m_width = 0;
        m_height = 0;
    }
}

Surface::Surface(int width, int height, std::shared_ptr<std::uint32_t[]> pixels)
    : m_width(width), m_height(height), m_pixels(std::move(pixels)) {}

std::shared_ptr<Surface> Surface::MakeUnset(CSize size) {
    const auto count = static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy);
    std::shared_ptr<std::uint32_t[]> pixels(new (std::nothrow) std::uint32_t[count]);
    return pixels ? std::make_shared<Surface>(size.cx, size.cy, std::move(pixels)) : std::make_shared<Surface>(0, 0);
}

Surface::~Surface() {
    if (m_cairo) {
        // There may still be references, which must not access the pixels any more.
        cairo_surface_finish(m_cairo);
        cairo_surface_destroy(m_cairo);
    }
}

_cairo_surface* Surface::Cairo() {
    if (!m_cairo) {
        m_cairo = cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(m_pixels.get()),
                                                      CAIRO_FORMAT_ARGB32, m_width, m_height, m_width * 4);
    }
    return m_cairo;
}

void Surface::BeginPixels() {
    if (m_cairo) {
        cairo_surface_flush(m_cairo);
    }
}

void Surface::EndPixels() {
    if (m_cairo) {
        cairo_surface_mark_dirty(m_cairo);
    }
}

}  // namespace veldan
