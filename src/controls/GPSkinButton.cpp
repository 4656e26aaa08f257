#include "controls/GPSkinButton.h"

#include "platform/window/Desktop.h"

namespace veldan {

CGPSkinButton::CGPSkinButton(UINT hoverTime) : m_nHoverTime(hoverTime) {}

CGPSkinButton::~CGPSkinButton() = default;

const MessageMap& CGPSkinButton::ClassMessageMap() {
    static constexpr MessageMapEntry kEntries[] = {
        On<WM_MOUSEMOVE, &CGPSkinButton::OnMouseMove>(),   On<WM_ERASEBKGND, &CGPSkinButton::OnEraseBkgnd>(),
        On<WM_SETCURSOR, &CGPSkinButton::OnSetCursor>(),   On<WM_MOUSELEAVE, &CGPSkinButton::OnMouseLeave>(),
        On<WM_MOUSEHOVER, &CGPSkinButton::OnMouseHover>(),
    };
    static const MessageMap kMap{&CButton::ClassMessageMap(), kEntries};
    return kMap;
}

const MessageMap& CGPSkinButton::GetMessageMap() const {
    return ClassMessageMap();
}

void CGPSkinButton::PreSubclassWindow() {
    ModifyStyle(0, BS_OWNERDRAW);
    SetOpaque();
}

bool CGPSkinButton::PreTranslateMessage(MSG& message) {
    if (message.message == WM_LBUTTONDBLCLK) {
        message.message = WM_LBUTTONDOWN;
    }
    if (m_pToolTip && m_pToolTip->GetSafeHwnd()) {
        m_pToolTip->SendMessage(TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&message));
    }
    return CButton::PreTranslateMessage(message);
}

void CGPSkinButton::OnMouseMove(UINT /*flags*/, CPoint /*point*/) {
    if (!m_bTracking) {
        m_bTracking = TrackMouseEvent(TME_HOVER | TME_LEAVE, m_nHoverTime);
    }
    Default();
}

BOOL CGPSkinButton::OnEraseBkgnd(CDC* /*pDC*/) {
    return TRUE;
}

BOOL CGPSkinButton::OnSetCursor(CWnd* /*pWnd*/, UINT /*hitTest*/, UINT /*message*/) {
    if (!m_hCursor) {
        return static_cast<BOOL>(Default());
    }
    Desktop::Get().SetCursor(*m_hCursor);
    return TRUE;
}

LRESULT CGPSkinButton::OnMouseHover(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    m_bHover = TRUE;
    Invalidate();
    return 0;
}

LRESULT CGPSkinButton::OnMouseLeave(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    m_bHover = FALSE;
    m_bTracking = FALSE;
    Invalidate();
    return 0;
}

void HidePopupOnFocusLoss(const CWnd& button) {
    CWnd* popup = button.GetParent();
    // A hidden one isn't worth the question where the pointer is.
    if (popup && popup->IsWindowVisible() && !popup->GetWindowRect().Contains(Desktop::Get().CursorPos())) {
        popup->ShowWindow(SW_HIDE);
    }
}

}  // namespace veldan
