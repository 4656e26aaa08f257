#include "platform/window/Wnd.h"

#include "platform/draw/Font.h"
#include "platform/window/Desktop.h"

namespace veldan {

constinit const WindowClass CWnd::kPlainClass{"Window"};
const CWnd CWnd::wndTop;
const CWnd CWnd::wndBottom;

CWnd::CWnd() = default;

CWnd::~CWnd() {
    if (!m_hWnd) {
        return;
    }
    // Handlers of derived classes no longer run from here: their part of the object is gone.
    const HWND window = m_hWnd;
    Desktop& desktop = Desktop::Get();
    desktop.DestroyWindow(window);
    desktop.DetachObject(window);
}

bool CWnd::CreateEx(UINT exStyle, const WindowClass& windowClass, const CString& text, UINT style, const CRect& rect,
                    HWND owner, UINT id) {
    if (m_hWnd) {
        return false;
    }
    const CREATESTRUCT create{style, exStyle, id, rect, owner, text.c_str()};
    return static_cast<bool>(Desktop::Get().CreateWindow(*this, windowClass, create));
}

bool CWnd::DestroyWindow() {
    return m_hWnd && Desktop::Get().DestroyWindow(m_hWnd);
}

bool CWnd::SubclassWindow(HWND hWnd) {
    if (m_hWnd || !Desktop::Get().ReplaceObject(hWnd, *this)) {
        return false;
    }
    PreSubclassWindow();
    return FromHandle(hWnd) == this;
}

bool CWnd::SubclassDlgItem(UINT id, const CWnd* parent) {
    return parent != nullptr && SubclassWindow(Desktop::Get().ChildWithId(parent->GetSafeHwnd(), id));
}

CWnd* CWnd::FromHandle(HWND hWnd) {
    return hWnd ? Desktop::Get().ObjectOf(hWnd) : nullptr;
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_hWnd ? Desktop::Get().SendMessage(m_hWnd, message, wParam, lParam) : 0;
}

bool CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_hWnd && Desktop::Get().PostMessage(m_hWnd, message, wParam, lParam);
}

CWnd* CWnd::GetParent() const {
    return m_hWnd ? FromHandle(Desktop::Get().ParentOf(m_hWnd)) : nullptr;
}

CWnd* CWnd::GetDlgItem(UINT id) const {
    return m_hWnd ? FromHandle(Desktop::Get().ChildWithId(m_hWnd, id)) : nullptr;
}

UINT CWnd::GetDlgCtrlID() const {
    const WindowRecord* record = m_hWnd ? Desktop::Get().Find(m_hWnd) : nullptr;
    return record != nullptr ? record->id : 0;
}

CRect CWnd::GetWindowRect() const {
    return m_hWnd ? Desktop::Get().WindowRect(m_hWnd) : CRect();
}

CRect CWnd::GetClientRect() const {
    const WindowRecord* record = m_hWnd ? Desktop::Get().Find(m_hWnd) : nullptr;
    return record != nullptr ? record->ClientRect() : CRect();
}

CPoint CWnd::ScreenToClient(CPoint screen) const {
    return screen - GetWindowRect().TopLeft();
}

CRect CWnd::ScreenToClient(const CRect& screen) const {
    return screen.Offset(-GetWindowRect().TopLeft());
}

CPoint CWnd::ClientToScreen(CPoint client) const {
    return client + GetWindowRect().TopLeft();
}

bool CWnd::ShowWindow(ShowCommand command) {
    return m_hWnd && Desktop::Get().ShowWindow(m_hWnd, command);
}

bool CWnd::SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags) {
    if (!m_hWnd) {
        return false;
    }
    auto stacking = Stacking::Below;
    if (after == nullptr || after == &wndTop) {
        stacking = Stacking::Top;
    } else if (after == &wndBottom) {
        stacking = Stacking::Bottom;
    }
    const HWND sibling = stacking == Stacking::Below ? after->m_hWnd : HWND();
    return Desktop::Get().PlaceWindow(m_hWnd, CRect::FromSize({x, y}, {width, height}), stacking, sibling, flags);
}

bool CWnd::MoveWindow(const CRect& rect) {
    return m_hWnd && Desktop::Get().PlaceWindow(m_hWnd, rect, Stacking::Keep, {}, SWP_NOZORDER);
}

bool CWnd::EnableWindow(bool enable) {
    return m_hWnd && Desktop::Get().EnableWindow(m_hWnd, enable);
}

bool CWnd::IsWindowEnabled() const {
    const WindowRecord* record = m_hWnd ? Desktop::Get().Find(m_hWnd) : nullptr;
    return record != nullptr && record->enabled;
}

bool CWnd::IsWindowVisible() const {
    return m_hWnd && Desktop::Get().IsVisible(m_hWnd);
}

bool CWnd::ModifyStyle(UINT remove, UINT add) {
    return m_hWnd && Desktop::Get().ModifyStyle(m_hWnd, remove, add);
}

void CWnd::SetOpaque() {
    Desktop::Get().SetOpaque(m_hWnd);
}

UINT CWnd::GetStyle() const {
    const WindowRecord* record = m_hWnd ? Desktop::Get().Find(m_hWnd) : nullptr;
    return record == nullptr ? 0 : record->style | (record->visible ? WS_VISIBLE : 0U);
}

void CWnd::SetWindowText(const CString& text) {
    if (m_hWnd) {
        Desktop::Get().SetText(m_hWnd, text);
    }
}

CString CWnd::GetWindowText() const {
    const WindowRecord* record = m_hWnd ? Desktop::Get().Find(m_hWnd) : nullptr;
    return record != nullptr ? record->text : CString();
}

void CWnd::SetFont(const CFont* font, bool redraw) {
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font), redraw ? 1 : 0);
}

const CFont* CWnd::GetFont() {
    return reinterpret_cast<const CFont*>(SendMessage(WM_GETFONT));
}

void CWnd::Invalidate(bool erase) {
    InvalidateRect(GetClientRect(), erase);
}

void CWnd::InvalidateRect(const CRect& client, bool erase) {
    if (m_hWnd) {
        Desktop::Get().Invalidate(m_hWnd, client, erase);
    }
}

void CWnd::UpdateWindow() {
    if (m_hWnd) {
        Desktop::Get().UpdateWindow(m_hWnd);
    }
}

CWnd* CWnd::SetFocus() {
    return m_hWnd ? FromHandle(Desktop::Get().SetFocus(m_hWnd)) : nullptr;
}

CWnd* CWnd::GetFocus() {
    return FromHandle(Desktop::Get().Focus());
}

CWnd* CWnd::SetCapture() {
    return m_hWnd ? FromHandle(Desktop::Get().SetCapture(m_hWnd)) : nullptr;
}

void CWnd::ReleaseCapture() {
    Desktop::Get().SetCapture({});
}

bool CWnd::TrackMouseEvent(UINT flags, UINT hoverTime) {
    return m_hWnd && Desktop::Get().TrackMouseEvent(m_hWnd, flags, hoverTime);
}

UINT_PTR CWnd::SetTimer(UINT_PTR id, UINT period) {
    return m_hWnd ? Desktop::Get().SetTimer(m_hWnd, id, period) : 0;
}

bool CWnd::KillTimer(UINT_PTR id) {
    return m_hWnd && Desktop::Get().KillTimer(m_hWnd, id);
}

}  // namespace veldan
