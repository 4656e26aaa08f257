#include "platform/display/memory/MemoryDisplay.h"

#include <algorithm>

namespace veldan {

namespace {

constexpr std::uint32_t kOpaque = 0xff000000;
constexpr std::uint32_t kBackground = 0xff5a6068;
constexpr std::uint32_t kForeignWindow = 0xffb8bcc2;

}  // namespace

std::uint32_t MemoryDisplay::PixelOf(const Window& window, CPoint screen) {
    if (window.foreign) {
        return kForeignWindow;
    }
    const CPoint point = screen - window.rect.TopLeft();
    return window.pixels ? window.pixels->At(point.x, point.y) | kOpaque : kOpaque;
}

std::uint32_t MemoryDisplay::PixelAt(CPoint screen) const {
    const auto found = std::ranges::find_if(
        m_windows, [&](const Window& window) { return IsOnScreen(window) && window.rect.Contains(screen); });
    return found != m_windows.end() ? PixelOf(*found, screen) : kBackground;
}

std::unique_ptr<Surface> MemoryDisplay::Picture() const {
    auto picture = std::make_unique<Surface>(m_screen.cx, m_screen.cy);
    // Without memory the picture has no pixels.
    for (int y = 0; y < picture->Height(); ++y) {
        std::fill_n(picture->Row(y), picture->Width(), kBackground);
    }
    for (auto window = m_windows.rbegin(); window != m_windows.rend(); ++window) {
        const CRect shown = IsOnScreen(*window) ? window->rect.Intersect(picture->Bounds()) : CRect();
        for (int y = shown.top; y < shown.bottom; ++y) {
            for (int x = shown.left; x < shown.right; ++x) {
                picture->Row(y)[x] = PixelOf(*window, {x, y});
            }
        }
    }
    return picture;
}

}  // namespace veldan
