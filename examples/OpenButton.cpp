#include "OpenButton.h"

#include "Colours.h"

#include "platform/draw/DC.h"

using namespace veldan;

const MessageMap& OpenButton::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        On<WM_MOUSEMOVE, &OpenButton::OnMouseMove>(),
        On<WM_MOUSELEAVE, &OpenButton::OnMouseLeave>(),
    };
    static const MessageMap kMap{&CButton::ClassMessageMap(), kEntries};
    return kMap;
}

void OpenButton::OnMouseMove(UINT /*flags*/, CPoint /*point*/) {
    if (!m_bHot) {
        m_bHot = TrackMouseEvent(TME_LEAVE, 0);
        Invalidate();
    }
    Default();
}

LRESULT OpenButton::OnMouseLeave(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    m_bHot = false;
    Invalidate();
    return 0;
}

void OpenButton::DrawItem(DRAWITEMSTRUCT* lpDrawItemStruct) {
    CDC& dc = *lpDrawItemStruct->pDC;
    CRect rect = lpDrawItemStruct->rcItem;
    const bool pressed = (lpDrawItemStruct->itemState & ODS_SELECTED) != 0;
    const COLORREF colour = pressed ? kPressedAccent : m_bHot ? kHotAccent : kAccent;
    dc.FillSolidRect(rect, kPaper);
    CBrush brush(colour);
    CPen pen(1, colour);
    dc.SelectObject(&brush);
    dc.SelectObject(&pen);
    dc.RoundRect(rect, {10, 10});
    dc.SetBkMode(TRANSPARENT);
    CFont font(17, kFontBold);
    dc.SelectObject(&font);
    dc.SetTextColor(kOnAccent);
    dc.DrawText(GetWindowText(), rect, DT_CENTER | DT_SINGLELINE | DT_VCENTER);
}
