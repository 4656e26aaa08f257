#include "controls/GPResourceImage.h"

#include "platform/resource/Resource.h"

#include <utility>

namespace veldan {

CSize CGPImageHolder::GetSize() const {
    return m_pBitmap ? CSize{m_pBitmap->GetWidth(), m_pBitmap->GetHeight()} : CSize();
}

bool CGPResourceImage::Load(UINT id, const char* type) {
    Empty();
    const std::span<const std::byte> data = FindResource(id, type);
    if (data.empty()) {
        return false;
    }
    m_pBitmap = Image::FromBytes(data);
    // A resource is decoded at once, so that the answer is about the whole picture.
    if (!m_pBitmap->Pixels()) {
        Empty();
    }
    return m_pBitmap != nullptr;
}

bool CGPResourceImage::LoadBytes(CString bytes, int mostPixels) {
    Empty();
    m_pBitmap = Image::FromBytes(std::move(bytes), mostPixels);
    return m_pBitmap->GetLastStatus() == DrawStatus::Ok;
}

bool CGPResourceImage::LoadFile(const CString& path, int mostPixels) {
    Empty();
    m_pBitmap = Image::FromFile(path, mostPixels);
    return m_pBitmap->GetLastStatus() == DrawStatus::Ok;
}

}  // namespace veldan
