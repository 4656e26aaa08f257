#include "controls/ButtonRules.h"

#include "platform/window/Desktop.h"

namespace veldan {

void TakeDoubleClickAsPress(MSG& message) {
    if (message.message == WM_LBUTTONDBLCLK) {
        message.message = WM_LBUTTONDOWN;
    }
}

void RelayToToolTip(CToolTipCtrl* pToolTip, MSG& message) {
    if (pToolTip && pToolTip->GetSafeHwnd()) {
        pToolTip->SendMessage(TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&message));
    }
}

void HidePopupOnFocusLoss(const CWnd& button) {
    CWnd* popup = button.GetParent();
    // A hidden one isn't worth the question where the pointer is.
    if (popup && popup->IsWindowVisible() && !popup->GetWindowRect().Contains(Desktop::Get().CursorPos())) {
        popup->ShowWindow(SW_HIDE);
    }
}

}  // namespace veldan
