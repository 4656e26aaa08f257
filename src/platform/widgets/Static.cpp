#include "platform/widgets/Static.h"

#include "platform/draw/Font.h"
#include "platform/window/ClientDC.h"
#include "platform/window/Desktop.h"

namespace veldan {

namespace {

constexpr UINT kTypeMask = 0x1f;

constexpr COLORREF kDisabledText = RGB(0x6d, 0x6d, 0x6d);

}  // namespace

constinit const WindowClass CStatic::kWindowClass{"Static", CS_POINTERTHROUGH};

CStatic::CStatic() = default;
CStatic::~CStatic() = default;

bool CStatic::Create(const CString& text, UINT style, const CRect& rect, CWnd* parent, UINT id) {
    return parent != nullptr && CreateEx(0, kWindowClass, text, style | WS_CHILD, rect, parent->GetSafeHwnd(), id);
}

const MessageMap& CStatic::ClassMessageMap() {
    return CWnd::ClassMessageMap();
}

const MessageMap& CStatic::GetMessageMap() const {
    return ClassMessageMap();
}

LRESULT CStatic::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND:
            return TRUE;
        case WM_ENABLE:
            Invalidate();
            return 0;
        default:
            return CWnd::DefWindowProc(message, wParam, lParam);
    }
}

void CStatic::Paint() {
    const HWND self = GetSafeHwnd();
    CPaintDC dc(this);
    if (FromHandle(self) != this) {
        return;
    }
    Desktop& desktop = Desktop::Get();
    dc.SetBkMode(TRANSPARENT);
    const auto* const brush = reinterpret_cast<HBRUSH>(
        desktop.SendMessage(desktop.ParentOf(self), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(static_cast<CDC*>(&dc)),
                            static_cast<LPARAM>(self.Value())));
    if (FromHandle(self) != this) {
        return;
    }
    if (brush != nullptr) {
        dc.FillRect(GetClientRect(), *brush);
    } else {
        DrawParentBackground(dc);
    }
    if (FromHandle(self) == this) {
        DrawLabel(dc);
    }
}

/// Lets the parent draw its background here, so that the label shows no ground of its own.
void CStatic::DrawParentBackground(CDC& dc) {
    Desktop& desktop = Desktop::Get();
    const WindowRecord* record = desktop.Find(GetSafeHwnd());
    dc.SetWindowOrg(record->rect.TopLeft());
    desktop.SendMessage(record->parent, WM_ERASEBKGND, reinterpret_cast<WPARAM>(&dc));
    dc.SetWindowOrg({});
}

void CStatic::DrawLabel(CDC& dc) {
    if (!IsWindowEnabled()) {
        dc.SetTextColor(kDisabledText);
    }
    CFont font = GetFont() != nullptr ? *GetFont() : *GetSystemFont();
    dc.SelectObject(&font);
    CRect rect = GetClientRect();
    dc.DrawText(GetWindowText(), rect, DT_WORDBREAK | ((GetStyle() & kTypeMask) == SS_CENTER ? DT_CENTER : DT_LEFT));
}

}  // namespace veldan
