#include "platform/draw/Bitmap.h"

#include "platform/draw/Bmp.h"
#include "platform/resource/Resource.h"

#include <cstdint>

namespace veldan {
namespace {

constexpr int kLongestSide = 32767;
constexpr std::int64_t kMostPixels = 64 * 1024 * 1024;

}  // namespace

bool CBitmap::CreateCompatibleBitmap(const CDC* /*pDC*/, int width, int height) {
    DeleteObject();
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

bool CBitmap::CreateMonochromeBitmap(int width, int height) {
    m_bMonochrome = CreateCompatibleBitmap(nullptr, width, height);
    return m_bMonochrome;
}

bool CBitmap::LoadBitmap(UINT id) {
    DeleteObject();
    const std::span<const std::byte> data = FindResource(id, "BITMAP");
    m_surface = DecodeBmp({reinterpret_cast<const char*>(data.data()), data.size()});
    return m_surface != nullptr;
}

CSize CBitmap::GetSize() const {
    return m_surface ? m_surface->Bounds().Size() : CSize{};
}

}  // namespace veldan
