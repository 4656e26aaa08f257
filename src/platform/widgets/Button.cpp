#include "platform/widgets/Button.h"

#include "platform/core/Keys.h"
#include "platform/window/ClientDC.h"
#include "platform/window/Desktop.h"

#include <utility>

namespace veldan {

namespace {

constexpr UINT kTypeMask = 0x0f;

}  // namespace

constinit const WindowClass CButton::kWindowClass{"Button", CS_DBLCLKS};

CButton::CButton() = default;
CButton::~CButton() = default;

bool CButton::Create(const CString& text, UINT style, const CRect& rect, CWnd* parent, UINT id) {
    return parent != nullptr && CreateEx(0, kWindowClass, text, style | WS_CHILD, rect, parent->GetSafeHwnd(), id);
}

const MessageMap& CButton::ClassMessageMap() {
    return CWnd::ClassMessageMap();
}

const MessageMap& CButton::GetMessageMap() const {
    return ClassMessageMap();
}

LRESULT CButton::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND:
            return TRUE;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            BeginPress(signature::PointOf(lParam));
            return 0;
        case WM_MOUSEMOVE:
            TrackPress(signature::PointOf(lParam));
            return 0;
        case WM_LBUTTONUP:
            EndPress(GetClientRect().Contains(signature::PointOf(lParam)));
            return 0;
        case WM_KEYDOWN:
            if (wParam == VK_SPACE && !m_bHeld) {
                BeginHold();
            }
            return 0;
        case WM_KEYUP:
            if (wParam == VK_SPACE) {
                EndPress(true);
            }
            return 0;
        case WM_CAPTURECHANGED:
        case WM_KILLFOCUS:
            m_bHeld = false;
            Press(false);
            Invalidate();
            return 0;
        case WM_SETFOCUS:
        case WM_ENABLE:
            Invalidate();
            return 0;
        default:
            return CWnd::DefWindowProc(message, wParam, lParam);
    }
}

void CButton::Press(bool down) {
    if (m_bPressed != down) {
        m_bPressed = down;
        Invalidate();
    }
}

void CButton::BeginPress(CPoint point) {
    const HWND self = GetSafeHwnd();
    SetFocus();
    if (FromHandle(self) != this || !GetClientRect().Contains(point)) {
        return;
    }
    SetCapture();
    if (FromHandle(self) == this && Desktop::Get().Capture() == self) {
        BeginHold();
    }
}

/// Shown at once, so that a quick press is seen, too.
void CButton::BeginHold() {
    m_bHeld = true;
    Press(true);
    UpdateWindow();
}

void CButton::TrackPress(CPoint point) {
    if (m_bHeld) {
        Press(GetClientRect().Contains(point));
    }
}

/// The button is up and the pointer free before the parent hears of the click: its handler may do anything.
void CButton::EndPress(bool click) {
    if (!std::exchange(m_bHeld, false)) {
        return;
    }
    const HWND self = GetSafeHwnd();
    Press(false);
    if (Desktop::Get().Capture() == self) {
        ReleaseCapture();
    }
    if (!click || FromHandle(self) != this) {
        return;
    }
    Desktop& desktop = Desktop::Get();
    desktop.SendMessage(desktop.ParentOf(self), WM_COMMAND, GetDlgCtrlID() | BN_CLICKED << 16,
                        static_cast<LPARAM>(self.Value()));
}

void CButton::Paint() {
    Desktop& desktop = Desktop::Get();
    const HWND self = GetSafeHwnd();
    CPaintDC dc(this);
    if (FromHandle(self) != this || (GetStyle() & kTypeMask) != BS_OWNERDRAW) {
        return;
    }
    const HWND parent = desktop.ParentOf(self);
    desktop.SendMessage(parent, WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(static_cast<CDC*>(&dc)),
                        static_cast<LPARAM>(self.Value()));
    if (FromHandle(self) != this) {
        return;
    }
    DRAWITEMSTRUCT item;
    item.CtlType = ODT_BUTTON;
    item.itemAction = ODA_DRAWENTIRE;
    item.CtlID = GetDlgCtrlID();
    item.itemState = (m_bPressed ? ODS_SELECTED : 0U) | (IsWindowEnabled() ? 0U : ODS_DISABLED) |
                     (GetFocus() == this ? ODS_FOCUS : 0U);
    item.hwndItem = self;
    item.pDC = &dc;
    item.rcItem = GetClientRect();
    desktop.SendMessage(parent, WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

}  // namespace veldan
