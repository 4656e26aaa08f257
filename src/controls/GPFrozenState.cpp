#include "controls/GPFrozenState.h"

#include "platform/draw/Region.h"
#include "platform/draw/Surface.h"

#include <utility>

namespace veldan {

void CGPFrozenState::Keep(const CDC& picture, std::shared_ptr<const CDC> pBackground,
                          std::span<const CRect, kMostBoxes> boxes) {
    m_pContent = std::make_unique<Content>();
    m_pContent->pBackground = std::move(pBackground);
    for (std::size_t i = 0; i < kMostBoxes; ++i) {
        const CRect& rect = boxes[i];
        if (!rect.IsEmpty()) {
            Box& box = m_pContent->boxes[i];
            box.rect = rect;
            box.dc.Attach(CreateSurfaceDC(Surface::MakeUnset(rect.Size()), {}, Region(rect.Offset(-rect.TopLeft()))));
            box.dc.BitBlt(0, 0, rect.Width(), rect.Height(), &picture, rect.left, rect.top, SRCCOPY);
        }
    }
}

CSize CGPFrozenState::GetSize() const {
    return m_pContent ? m_pContent->pBackground->GetClipBox().Size() : CSize();
}

std::size_t CGPFrozenState::GetBytes() const {
    std::size_t pixels = 0;
    for (std::size_t i = 0; m_pContent && i < kMostBoxes; ++i) {
        const CRect& rect = m_pContent->boxes[i].rect;
        pixels += static_cast<std::size_t>(rect.Width()) * static_cast<std::size_t>(rect.Height());
    }
    return sizeof(std::uint32_t) * pixels;
}

void CGPFrozenState::Paint(CDC& dc, CPoint at) const {
    if (!m_pContent) {
        return;
    }
    const CSize size = GetSize();
    dc.BitBlt(at.x, at.y, size.cx, size.cy, m_pContent->pBackground.get(), 0, 0, SRCCOPY);
    for (const Box& box : m_pContent->boxes) {
        dc.BitBlt(at.x + box.rect.left, at.y + box.rect.top, box.rect.Width(), box.rect.Height(), &box.dc, 0, 0,
                  SRCCOPY);
    }
}

}  // namespace veldan
