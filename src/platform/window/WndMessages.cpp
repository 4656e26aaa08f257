#include "platform/draw/Font.h"
#include "platform/window/ClientDC.h"
#include "platform/window/Desktop.h"
#include "platform/window/Wnd.h"

namespace veldan {

namespace signature {

CWnd* WindowOf(std::uint64_t handleValue) {
    return CWnd::FromHandle(HWND::FromValue(handleValue));
}

}  // namespace signature

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
    return message == WM_COMMAND ? RouteCommand(wParam, lParam) : CallEntry(message, wParam, lParam, result);
}

/// Calls the first entry for the message. True: it was handled, or the object is gone.
bool CWnd::CallEntry(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    const HWND self = m_hWnd;
    for (const MessageMap* map = &GetMessageMap(); map != nullptr; map = map->base) {
        for (const MessageMapEntry& entry : map->entries) {
            if (entry.Matches(message, wParam)) {
                bool handled = false;
                result = entry.handler(*this, message, wParam, lParam, handled);
                return handled || FromHandle(self) != this;
            }
        }
    }
    return false;
}

/// A control's notification goes back to the control first; what it does not handle is its parent's.
bool CWnd::RouteCommand(WPARAM wParam, LPARAM lParam) {
    const HWND self = m_hWnd;
    LRESULT result = 0;
    CWnd* control = signature::WindowOf(static_cast<std::uint64_t>(lParam));
    if (control != nullptr && control->Reflect(OCM_COMMAND, wParam, lParam, result)) {
        return true;
    }
    return FromHandle(self) != this || CallEntry(WM_COMMAND, wParam, lParam, result);
}

/// Hands a message back to this control, as the current message, so that Default means that one.
bool CWnd::Reflect(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    Desktop& desktop = Desktop::Get();
    MSG reflected = desktop.CurrentMessage();
    reflected.hwnd = m_hWnd;
    reflected.message = message;
    reflected.wParam = wParam;
    reflected.lParam = lParam;
    const MSG outer = desktop.ExchangeCurrentMessage(reflected);
    const bool handled = CallEntry(message, wParam, lParam, result) || CallOverridable(message, lParam);
    desktop.ExchangeCurrentMessage(outer);
    return handled;
}

bool CWnd::CallOverridable(UINT message, LPARAM lParam) {
    if (message == OCM_DRAWITEM) {
        DrawItem(reinterpret_cast<DRAWITEMSTRUCT*>(lParam));
    } else if (message == OCM_MEASUREITEM) {
        MeasureItem(reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
    }
    return message == OCM_DRAWITEM || message == OCM_MEASUREITEM;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (IsCtlColor(message)) {
        return ReflectColors(message, wParam, lParam);
    }
    switch (message) {
        case WM_PAINT:
            OnPaintDefault();
            return 0;
        case WM_CLOSE:
            DestroyWindow();
            return 0;
        case WM_SETCURSOR:
            return OnSetCursorDefault();
        case WM_SETFONT:
            OnSetFontDefault(reinterpret_cast<const CFont*>(wParam), LoWord(static_cast<WPARAM>(lParam)) != 0);
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(m_pFont.get());
        case WM_MOUSEWHEEL:
            return OnMouseWheelDefault(wParam, lParam);
        case WM_DRAWITEM:
            return ReflectItem(OCM_DRAWITEM, reinterpret_cast<DRAWITEMSTRUCT*>(lParam)->hwndItem, wParam, lParam);
        case WM_MEASUREITEM:
            return ReflectItem(OCM_MEASUREITEM, Desktop::Get().ChildWithId(m_hWnd, static_cast<UINT>(wParam)), wParam,
                               lParam);
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

void CWnd::OnSetFontDefault(const CFont* font, bool redraw) {
    m_pFont = font != nullptr ? std::make_unique<CFont>(*font) : nullptr;
    if (redraw) {
        Invalidate();
    }
}

/// A wheel that nobody wanted goes on to the parent of a child, but never to an owner: that may send it back.
LRESULT CWnd::OnMouseWheelDefault(WPARAM wParam, LPARAM lParam) {
    Desktop& desktop = Desktop::Get();
    const WindowRecord* record = desktop.Find(m_hWnd);
    return record != nullptr && record->IsChild() ? desktop.SendMessage(record->parent, WM_MOUSEWHEEL, wParam, lParam)
                                                  : 0;
}

LRESULT CWnd::ReflectColors(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    CWnd* control = signature::WindowOf(static_cast<std::uint64_t>(lParam));
    const auto kind = static_cast<LPARAM>(message - WM_CTLCOLORMSGBOX);
    return control != nullptr && control->Reflect(OCM_CTLCOLOR, wParam, kind, result) ? result : 0;
}

LRESULT CWnd::ReflectItem(UINT message, HWND control, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    CWnd* object = FromHandle(control);
    return object != nullptr && object->Reflect(message, wParam, lParam, result) ? TRUE : FALSE;
}

HBRUSH CWnd::OnCtlColor(CDC* /*dc*/, CWnd* /*control*/, UINT /*kind*/) {
    return reinterpret_cast<HBRUSH>(Default());
}

void CWnd::PreSubclassWindow() {}

void CWnd::PostNcDestroy() {}

bool CWnd::PreTranslateMessage(MSG& /*message*/) {
    return false;
}

void CWnd::DrawItem(DRAWITEMSTRUCT* /*lpDrawItemStruct*/) {}

void CWnd::MeasureItem(MEASUREITEMSTRUCT* /*lpMeasureItemStruct*/) {}

CWnd* CWnd::GetFirstFocus() {
    return nullptr;
}

LRESULT CWnd::Default() {
    const MSG& current = Desktop::Get().CurrentMessage();
    return DefWindowProc(current.message, current.wParam, current.lParam);
}

}  // namespace veldan
