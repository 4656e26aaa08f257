#include "platform/window/Pointer.h"

#include <utility>

namespace veldan {

namespace {

constexpr std::intptr_t kHitClient = 1;  // the only part that windows without decoration have

struct ButtonMessages {
    UINT down;
    UINT up;
    UINT doubleClick;
};

ButtonMessages MessagesOf(int button) {
    switch (button) {
        case 1:
            return {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK};
        case 2:
            return {WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDBLCLK};
        default:
            return {WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK};
    }
}

}  // namespace

HWND Pointer::SetCapture(HWND window) {
    if (window && !m_tree.TakesInput(window)) {
        return m_capture;
    }
    const HWND before = std::exchange(m_capture, window);
    RetestSoon();
    if (before != window) {
        m_messenger.Send(before, WM_CAPTURECHANGED, window.Value());
    }
    return before;
}

bool Pointer::TrackMouseEvent(HWND window, UINT flags, UINT hoverTime) {
    if (m_tree.Find(window) == nullptr) {
        return false;
    }
    if (window != m_window) {
        return (flags & TME_LEAVE) == 0 || m_queue.Post(window, WM_MOUSELEAVE);
    }
    m_context.Wake();
    m_tracking.Ask(window, flags, hoverTime, m_messenger.PointerPlace(), m_context.Now());
    return true;
}

CPoint Pointer::Place() {
    return m_topLevel ? m_messenger.PointerPlace() : m_context.GetDisplay().QueryPointer();
}

void Pointer::SetCursor(CursorShape shape) {
    if (m_topLevel) {
        m_context.GetDisplay().SetCursor(m_topLevel.Value(), shape);
    }
}

Taken Pointer::Moved(const DisplayEvent& event, MSG& message) {
    Note(event);
    const HWND target = TargetAt(event.screen);
    if (Enter(target)) {
        return Taken::Repeat;
    }
    if (!target) {
        return Taken::Done;
    }
    if (!m_capture) {
        m_messenger.Send(target, WM_SETCURSOR, target.Value(), kHitClient | LPARAM{WM_MOUSEMOVE} << 16);
    }
    m_tracking.PointerMoved(target, event.screen, m_context.Now());
    message = Make(target, WM_MOUSEMOVE);
    return Taken::Message;
}

void Pointer::Left(const DisplayEvent& event) {
    m_messenger.SetPointerPlace(event.screen);
    m_topLevel = {};
    if (!m_capture) {
        Enter({});
    }
}

Taken Pointer::ButtonChanged(const DisplayEvent& event, MSG& message) {
    const bool press = event.kind == DisplayEventKind::ButtonPress;
    Note(event);
    if (Enter(TargetAt(event.screen))) {
        return Taken::Repeat;
    }
    if (press && !m_capture && m_popups.EatsPress(m_tree.WindowAt(m_topLevel, event.screen))) {
        return Taken::Done;
    }
    if (press && !m_capture) {
        m_activation.Press(m_topLevel);
    }
    if (press) {
        m_outside.Tell(event);
    }
    // Asked again: the activation and the press may have changed everything.
    const HWND target = TargetAt(event.screen);
    if (!target) {
        return Taken::Done;
    }
    const ButtonMessages messages = MessagesOf(event.button);
    UINT number = press ? messages.down : messages.up;
    if (press && IsDoubleClick(target, event.button)) {
        number = messages.doubleClick;
    }
    message = Make(target, number);
    return Taken::Message;
}

bool Pointer::IsDoubleClick(HWND window, int button) {
    const bool second = m_presses.Press(window, button, m_messenger.PointerPlace(), m_context.Now());
    if (!second || (m_tree.Find(window)->windowClass->style & CS_DBLCLKS) == 0) {
        return false;
    }
    m_presses.Clear();  // a third press starts anew
    return true;
}

Taken Pointer::WheelTurned(const DisplayEvent& event, MSG& message) {
    Note(event);
    HWND target = m_tree.WindowAt(m_topLevel, event.screen);
    if (!m_popups.LetsThrough(target)) {
        target = m_popups.Last();
    }
    if (!target) {
        return Taken::Done;
    }
    const auto wParam =
        static_cast<WPARAM>(MakeLParam(static_cast<int>(m_uFlags & ~MK_ALT), event.delta)) & 0xffffffffU;
    message = m_messenger.Make(target, WM_MOUSEWHEEL, wParam, MakeLParam(event.screen.x, event.screen.y));
    return Taken::Message;
}

void Pointer::DisplayLost() {
    m_topLevel = {};
    SetCapture({});
    Enter({});
}

void Pointer::RetestSoon() {
    m_bRetest = true;
    m_context.Wake();
}

std::optional<DisplayEvent> Pointer::Retest() {
    m_bRetest = false;
    const CPoint place = m_messenger.PointerPlace();
    const HWND target = m_topLevel ? TargetAt(place) : HWND();
    if (!target) {
        Enter({});
    }
    if (target == m_window) {
        return std::nullopt;
    }
    DisplayEvent move;
    move.window = m_topLevel.Value();
    move.screen = place;
    move.flags = m_uFlags;
    return move;
}

bool Pointer::TakeHover(MSG& message) {
    const HWND window = m_tracking.TakeDue(m_context.Now());
    if (window) {
        message = Make(window, WM_MOUSEHOVER);
    }
    return static_cast<bool>(window);
}

/// The pointer is in this window from now on. True: the window that it left has been posted its leave.
bool Pointer::Enter(HWND window) {
    if (window == m_window) {
        return false;
    }
    m_window = window;
    return m_queue.Post(m_tracking.End(), WM_MOUSELEAVE);
}

void Pointer::Note(const DisplayEvent& event) {
    m_topLevel = HWND::FromValue(event.window);
    m_messenger.SetPointerPlace(event.screen);
    m_uFlags = event.flags;
    m_messenger.SetInputFlags(event.flags);
}

/// Who is told of the pointer there.
HWND Pointer::TargetAt(CPoint screen) const {
    if (m_capture) {
        return m_capture;
    }
    const HWND window = m_tree.WindowAt(m_topLevel, screen);
    return m_popups.LetsThrough(window) ? window : HWND();
}

/// A message of the pointer as it was last seen.
MSG Pointer::Make(HWND window, UINT message) const {
    const CPoint client = m_messenger.PointerPlace() - m_tree.WindowRect(window).TopLeft();
    return m_messenger.Make(window, message, m_uFlags & ~MK_ALT, MakeLParam(client.x, client.y));
}

void Pointer::OnShown(WindowRecord& /*record*/) {
    RetestSoon();
}

void Pointer::OnHiding(WindowRecord& record) {
    RetestSoon();
    if (m_topLevel == record.handle) {
        m_topLevel = {};
    }
}

void Pointer::OnHidden(HWND window) {
    // A posted leave might come after the window was shown anew, with the look of a pointer that isn't there.
    if (m_tree.TopLevelOf(m_window) == window) {
        m_window = {};
        m_messenger.Send(m_tracking.End(), WM_MOUSELEAVE);
    }
    if (m_tree.IsWithin(m_capture, window)) {
        SetCapture({});
    }
}

void Pointer::OnEnabledChanged(HWND window, bool enabled) {
    RetestSoon();
    if (!enabled && m_tree.IsWithin(m_capture, window)) {
        SetCapture({});
    }
}

void Pointer::OnPlaced(WindowRecord& /*record*/, const CRect& /*before*/) {
    RetestSoon();
}

void Pointer::OnRestacked(WindowRecord& record) {
    if (record.IsChild()) {
        RetestSoon();
    }
}

void Pointer::OnDestroyed(HWND window) {
    for (HWND* holder : {&m_capture, &m_topLevel, &m_window}) {
        if (*holder == window) {
            *holder = {};
        }
    }
    m_tracking.Forget(window);
    m_presses.Forget(window);
    RetestSoon();
}

}  // namespace veldan
