#include "controls/GPMemDC.h"

namespace veldan {

CGPMemDC::CGPMemDC(CDC& target, const CRect& rect) : m_pDC(&target), m_rect(rect), m_bMemDC(!target.IsPrinting()) {
    if (!m_bMemDC) {
        m_hDC = target.m_hDC;
        m_hAttribDC = target.m_hAttribDC;
        m_bPrinting = target.m_bPrinting;
        return;
    }
    CreateCompatibleDC(m_pDC);
    if (m_rect.IsNull()) {
        m_rect = m_pDC->GetClipBox();
    }
    m_bitmap.CreateCompatibleBitmap(m_pDC, m_rect.Width(), m_rect.Height());
    m_pOldBitmap = SelectObject(&m_bitmap);
    SetWindowOrg(m_rect.TopLeft());
}

CGPMemDC::~CGPMemDC() {
    if (!m_bMemDC) {
        // The handles are the target's.
        m_hDC = nullptr;
        m_hAttribDC = nullptr;
        return;
    }
    m_pDC->BitBlt(m_rect.left, m_rect.top, m_rect.Width(), m_rect.Height(), this, m_rect.left, m_rect.top, SRCCOPY);
    SelectObject(m_pOldBitmap);
}

}  // namespace veldan
