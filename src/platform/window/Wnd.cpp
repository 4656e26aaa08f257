#include "platform/window/Wnd.h"

#include "platform/window/ClientDC.h"
#include "platform/window/Desktop.h"

namespace veldan {

constinit const WindowClass CWnd::kPlainClass{"Window"};
const CWnd CWnd::wndTop;
const CWnd CWnd::wndBottom;

namespace signature {

CWnd* WindowOf(std::uint64_t handleValue) {
    return CWnd::FromHandle(HWND::FromValue(handleValue));
}

}  // namespace signature

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
    auto stacking = Desktop::Stacking::Below;
    if (after == nullptr || after == &wndTop) {
        stacking = Desktop::Stacking::Top;
    } else if (after == &wndBottom) {
        stacking = Desktop::Stacking::Bottom;
    }
    const HWND sibling = stacking == Desktop::Stacking::Below ? after->m_hWnd : HWND();
    return Desktop::Get().PlaceWindow(m_hWnd, CRect::FromSize({x, y}, {width, height}), stacking, sibling, flags);
}

bool CWnd::MoveWindow(const CRect& rect) {
    return m_hWnd && Desktop::Get().PlaceWindow(m_hWnd, rect, Desktop::Stacking::Keep, {}, SWP_NOZORDER);
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

const MessageMap& CWnd::ClassMessageMap() {
    static constexpr MessageMap kMap;
    return kMap;
}

const MessageMap& CWnd::GetMessageMap() const {
    return ClassMessageMap();
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    // The object may be gone when a handler has run, so nothing of it is touched then.
    return OnWndMsg(message, wParam, lParam, result) ? result : DefWindowProc(message, wParam, lParam);
}

bool CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    const HWND self = m_hWnd;
    if (message == WM_COMMAND) {
        return RouteCommand(wParam, lParam) || !FromHandle(self);
    }
    for (const MessageMap* map = &GetMessageMap(); map != nullptr; map = map->base) {
        for (const MessageMapEntry& entry : map->entries) {
            if (entry.message == message) {
                bool handled = false;
                result = entry.handler(*this, wParam, lParam, handled);
                return handled || FromHandle(self) != this;
            }
        }
    }
    return false;
}

/// A control's notification goes back to the control first; what it does not handle is its parent's.
bool CWnd::RouteCommand(WPARAM wParam, LPARAM lParam) {
    const HWND self = m_hWnd;
    const UINT id = LoWord(wParam);
    const UINT code = HiWord(wParam);
    if (CWnd* control = signature::WindowOf(static_cast<std::uint64_t>(lParam))) {
        LRESULT result = 0;
        if (code == BN_CLICKED && control->OnWndMsg(OCM_COMMAND, wParam, lParam, result)) {
            return true;
        }
        if (FromHandle(self) != this) {
            return true;
        }
    }
    for (const MessageMap* map = &GetMessageMap(); map != nullptr; map = map->base) {
        for (const MessageMapEntry& entry : map->entries) {
            if (entry.message == WM_COMMAND && entry.id == id && entry.code == code) {
                bool handled = false;
                entry.handler(*this, wParam, lParam, handled);
                return true;
            }
        }
    }
    return false;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            OnPaintDefault();
            return 0;
        case WM_CLOSE:
            DestroyWindow();
            return 0;
        case WM_SETCURSOR:
            return OnSetCursorDefault();
        case WM_MOUSEWHEEL:
            return OnMouseWheelDefault(wParam, lParam);
        case WM_CTLCOLORBTN:
            return OnCtlColorDefault(wParam, lParam);
        case WM_DRAWITEM:
            OnDrawItemDefault(reinterpret_cast<DRAWITEMSTRUCT*>(lParam));
            return TRUE;
        default:
            return 0;
    }
}

void CWnd::OnPaintDefault() {
    const CPaintDC dc(this);
}

LRESULT CWnd::OnSetCursorDefault() {
    Desktop& desktop = Desktop::Get();
    if (const WindowRecord* record = desktop.Find(m_hWnd)) {
        desktop.SetCursor(record->windowClass->cursor);
    }
    return TRUE;
}

/// A wheel that nobody wanted goes on to the parent of a child, but never to an owner: that may send it back.
LRESULT CWnd::OnMouseWheelDefault(WPARAM wParam, LPARAM lParam) {
    Desktop& desktop = Desktop::Get();
    const WindowRecord* record = desktop.Find(m_hWnd);
    return record != nullptr && record->IsChild() ? desktop.SendMessage(record->parent, WM_MOUSEWHEEL, wParam, lParam)
                                                  : 0;
}

LRESULT CWnd::OnCtlColorDefault(WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    CWnd* control = signature::WindowOf(static_cast<std::uint64_t>(lParam));
    return control != nullptr && control->OnWndMsg(OCM_CTLCOLOR, wParam, lParam, result) ? result : 0;
}

void CWnd::OnDrawItemDefault(DRAWITEMSTRUCT* item) {
    if (CWnd* control = FromHandle(item->hwndItem)) {
        control->DrawItem(item);
    }
}

void CWnd::PreSubclassWindow() {}

void CWnd::PostNcDestroy() {}

bool CWnd::PreTranslateMessage(MSG& /*message*/) {
    return false;
}

void CWnd::DrawItem(DRAWITEMSTRUCT* /*lpDrawItemStruct*/) {}

CWnd* CWnd::GetFirstFocus() {
    return nullptr;
}

LRESULT CWnd::Default() {
    const MSG& current = Desktop::Get().CurrentMessage();
    return DefWindowProc(current.message, current.wParam, current.lParam);
}

}  // namespace veldan
