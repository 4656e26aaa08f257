#include "platform/draw/Bitmap.h"

#include <cstdint>

namespace veldan {
namespace {

constexpr int kLongestSide = 32767;
constexpr std::int64_t kMostPixels = 64 * 1024 * 1024;

}  // namespace

bool CBitmap::CreateCompatibleBitmap(const CDC* /*pDC*/, int width, int height) {
    m_surface.reset();
    if (width < 0 || height < 0 || width > kLongestSide || height > kLongestSide ||
        std::int64_t{width} * height > kMostPixels) {
        return false;
    }
    auto surface = std::make_shared<Surface>(width, height);
    if (surface->Width() != width) {
        return false;
    }
    m_surface = std::move(surface);
    return true;
}

CSize CBitmap::GetSize() const {
    return m_surface ? m_surface->Bounds().Size() : CSize{};
}

}  // namespace veldan
