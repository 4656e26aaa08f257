#include "platform/widgets/ToolTip.h"

#include "platform/draw/DC.h"
#include "platform/window/ClientDC.h"
#include "platform/window/Desktop.h"

#include <algorithm>

namespace veldan {

namespace {

constexpr UINT_PTR kTimer = 1;
constexpr CPoint kBesidePointer{0, 20};
constexpr CSize kMargin{6, 3};
constexpr COLORREF kBackground = RGB(255, 255, 225);
constexpr COLORREF kFrame = RGB(118, 118, 118);
constexpr COLORREF kText = RGB(0, 0, 0);

CFont TipFont() {
    return CFont(-11, kFontNormal, Underline::No, "MS Shell Dlg");
}

CSize TextSize(const CString& text) {
    CDC dc;
    CBitmap bitmap;
    dc.CreateCompatibleDC(nullptr);
    bitmap.CreateCompatibleBitmap(nullptr, 1, 1);
    dc.SelectObject(&bitmap);
    CFont font = TipFont();
    dc.SelectObject(&font);
    return dc.GetTextExtent(text);
}

bool IsPress(UINT message) {
    return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN ||
           message == WM_LBUTTONDBLCLK || message == WM_RBUTTONDBLCLK || message == WM_MBUTTONDBLCLK;
}

}  // namespace

CToolTipCtrl::CToolTipCtrl() = default;
CToolTipCtrl::~CToolTipCtrl() = default;

bool CToolTipCtrl::Create(CWnd* parent, UINT style) {
    return CreateEx(WS_EX_TRANSPARENT | WS_EX_NOACTIVATE, kPlainClass, {}, style | WS_POPUP, {0, 0, 1, 1},
                    parent != nullptr ? parent->GetSafeHwnd() : HWND(), 0);
}

bool CToolTipCtrl::AddTool(CWnd* window, const CString& text, const CRect& rect, UINT id) {
    if (window == nullptr || !window->GetSafeHwnd()) {
        return false;
    }
    m_arrTools.push_back({window->GetSafeHwnd(), id, rect, text});
    return true;
}

void CToolTipCtrl::UpdateTipText(const CString& text, CWnd* window, UINT id) {
    if (Tool* tool = FindTool(window != nullptr ? window->GetSafeHwnd() : HWND(), id)) {
        tool->text = text;
    }
}

CToolTipCtrl::Tool* CToolTipCtrl::FindTool(HWND window, UINT id) {
    const auto found =
        std::ranges::find_if(m_arrTools, [&](const Tool& t) { return t.window == window && t.id == id; });
    return found != m_arrTools.end() ? &*found : nullptr;
}

const CToolTipCtrl::Tool* CToolTipCtrl::ToolAt(const MSG& message) const {
    const CPoint point = signature::PointOf(message.lParam);
    const auto found = std::ranges::find_if(
        m_arrTools, [&](const Tool& t) { return t.window == message.hwnd && t.rect.Contains(point); });
    return found != m_arrTools.end() ? &*found : nullptr;
}

const MessageMap& CToolTipCtrl::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        OnMessage<TTM_ACTIVATE, &CToolTipCtrl::OnActivate>(),
        OnMessage<TTM_SETDELAYTIME, &CToolTipCtrl::OnSetDelayTime>(),
        OnMessage<TTM_RELAYEVENT, &CToolTipCtrl::OnRelayEvent>(),
        OnMessage<TTM_GETTOOLCOUNT, &CToolTipCtrl::OnGetToolCount>(),
        On<WM_TIMER, &CToolTipCtrl::OnTimer>(),
        On<WM_PAINT, &CToolTipCtrl::OnPaint>(),
    };
    static const MessageMap kMap{&CWnd::ClassMessageMap(), kEntries};
    return kMap;
}

LRESULT CToolTipCtrl::OnActivate(WPARAM wParam, LPARAM /*lParam*/) {
    m_bActive = wParam != 0;
    if (!m_bActive) {
        Dismiss();
    }
    return 0;
}

LRESULT CToolTipCtrl::OnSetDelayTime(WPARAM /*wParam*/, LPARAM lParam) {
    m_nDelay = static_cast<UINT>(std::max<LPARAM>(lParam, 0));
    return 0;
}

LRESULT CToolTipCtrl::OnGetToolCount(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    return static_cast<LRESULT>(m_arrTools.size());
}

LRESULT CToolTipCtrl::OnRelayEvent(WPARAM /*wParam*/, LPARAM lParam) {
    const MSG& message = *reinterpret_cast<const MSG*>(lParam);
    if (message.message == WM_MOUSEMOVE) {
        PointerMoved(message);
    } else if (message.message == WM_MOUSELEAVE) {
        Dismiss();
        m_bDismissed = false;
    } else if (IsPress(message.message)) {
        Dismiss();
        m_bDismissed = true;
    }
    return 0;
}

/// The wait starts anew with each move; a tip that shows stays while the pointer is over its tool.
void CToolTipCtrl::PointerMoved(const MSG& message) {
    const Tool* tool = ToolAt(message);
    if (!m_bActive || m_bDismissed || tool == nullptr) {
        Dismiss();
        return;
    }
    if (!IsWindowVisible() && message.pt != m_ptRest) {
        m_ptRest = message.pt;
        m_strText = tool->text;
        SetTimer(kTimer, m_nDelay);
    }
}

void CToolTipCtrl::Dismiss() {
    m_ptRest = {-1, -1};
    KillTimer(kTimer);
    ShowWindow(SW_HIDE);
}

void CToolTipCtrl::OnTimer(UINT_PTR /*id*/) {
    KillTimer(kTimer);
    ShowTip();
}

void CToolTipCtrl::ShowTip() {
    const CSize text = TextSize(m_strText);
    const CSize size{text.cx + 2 * kMargin.cx, text.cy + 2 * kMargin.cy};
    const CRect screen = Desktop::Get().GetDisplay().ScreenRect();
    CPoint at = m_ptRest + kBesidePointer;
    at.x = std::max(screen.left, std::min(at.x, screen.right - size.cx));
    if (at.y + size.cy > screen.bottom) {
        at.y = m_ptRest.y - size.cy;
    }
    SetWindowPos(&wndTop, at.x, at.y, size.cx, size.cy, SWP_NOACTIVATE | SWP_SHOWWINDOW);
    Invalidate();
}

void CToolTipCtrl::OnPaint() {
    CPaintDC dc(this);
    const CRect client = GetClientRect();
    dc.FillSolidRect(client, kFrame);
    dc.FillSolidRect(client.Inflate(-1, -1), kBackground);
    CFont font = TipFont();
    dc.SelectObject(&font);
    dc.SetTextColor(kText);
    dc.SetBkMode(TRANSPARENT);
    CRect text = client.Inflate(-kMargin.cx, -kMargin.cy);
    dc.DrawText(m_strText, text, DT_SINGLELINE | DT_VCENTER);
}

}  // namespace veldan
