#include "platform/window/Desktop.h"
#include "platform/window/MessageMap.h"

#include <cstdlib>
#include <utility>

namespace veldan {

namespace {

constexpr int kDoubleClickTime = 500;      // milliseconds between the two presses
constexpr int kDoubleClickDistance = 4;    // pixels that the pointer may stray between them
constexpr int kHoverBox = 4;               // pixels a side of the box that a resting pointer stays in
constexpr int kPaintsInARow = 32;          // before the display is asked for input again
constexpr std::int64_t kTimeOfPaints = 4;  // milliseconds of paints that are long enough to ask, too
constexpr std::intptr_t kHitClient = 1;    // the only part that windows without decoration have

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

bool IsNear(CPoint a, CPoint b, int distance) {
    return std::abs(a.x - b.x) <= distance && std::abs(a.y - b.y) <= distance;
}

}  // namespace

HWND Desktop::WindowAt(HWND topLevel, CPoint screen) const {
    const WindowRecord* record = m_table.Find(topLevel);
    if (record == nullptr || !record->visible || !record->rect.Contains(screen)) {
        return {};
    }
    CPoint point = screen - record->rect.TopLeft();
    for (;;) {
        const WindowRecord* hit = nullptr;
        record->children.ForVisible([&](const ChildList::Entry& entry) {
            const WindowRecord* child = entry.rect.Contains(point) ? m_table.Find(entry.window) : nullptr;
            if (child != nullptr && (child->windowClass->style & CS_POINTERTHROUGH) == 0) {
                hit = child;
            }
            return hit == nullptr;
        });
        // What falls on a disabled child is its parent's.
        if (hit == nullptr || !hit->enabled) {
            return record->enabled ? record->handle : HWND();
        }
        point = point - hit->rect.TopLeft();
        record = hit;
    }
}

HWND Desktop::MouseTarget(HWND topLevel, CPoint screen) const {
    return m_capture ? m_capture : WindowAt(topLevel, screen);
}

MSG Desktop::MouseMessage(HWND window, UINT message, UINT flags, CPoint screen) const {
    const CPoint client = screen - WindowRect(window).TopLeft();
    return {window, message, flags, MakeLParam(client.x, client.y), m_clock->Now(), screen};
}

void Desktop::NotePointer(const DisplayEvent& event) {
    m_pointerTopLevel = HWND::FromValue(event.window);
    m_ptPointer = event.screen;
    m_uPointerFlags = event.flags;
}

Desktop::Retrieved Desktop::NextInput(MSG& message) {
    if (m_bRetestPointer) {
        return RetestPointer(message);
    }
    // Asking a connection costs as much as painting a small window, so a row of paints isn't parted by it.
    const std::int64_t now = m_clock->Now();
    if (m_nPaintsSinceRead % kPaintsInARow == 0 || now - m_inputReadAt >= kTimeOfPaints) {
        m_inputReadAt = now;
        ReadDisplay();
    }
    if (m_input.empty()) {
        return Retrieved::Nothing;
    }
    const DisplayEvent event = std::move(m_input.front());
    m_input.pop_front();
    const Retrieved result = TakeInput(event, message);
    // A leave that the event set off is handled first; then the event has its turn again.
    const bool isPointer = event.kind <= DisplayEventKind::Wheel && event.kind != DisplayEventKind::PointerLeave;
    if (result == Retrieved::Again && isPointer && !m_posted.empty() && m_posted.back().message == WM_MOUSELEAVE) {
        m_input.push_front(event);
    }
    return result;
}

Desktop::Retrieved Desktop::TakeInput(const DisplayEvent& event, MSG& message) {
    switch (event.kind) {
        case DisplayEventKind::PointerMove:
            return PointerMoved(event, message);
        case DisplayEventKind::PointerLeave:
            PointerLeft(event);
            return Retrieved::Again;
        case DisplayEventKind::ButtonPress:
        case DisplayEventKind::ButtonRelease:
            return ButtonChanged(event, message);
        case DisplayEventKind::Wheel:
            return WheelTurned(event, message);
        case DisplayEventKind::KeyPress:
        case DisplayEventKind::KeyRelease:
            return KeyChanged(event, message);
        case DisplayEventKind::FocusIn:
            FocusReceived(HWND::FromValue(event.window));
            return Retrieved::Again;
        case DisplayEventKind::OutsidePress:
            PointerLeft(event);
            Deactivate();
            return Retrieved::Again;
        case DisplayEventKind::FocusOut:
            Deactivate();
            return Retrieved::Again;
        case DisplayEventKind::Moved:
            FrameMoved(event);
            return Retrieved::Again;
        case DisplayEventKind::Hidden:
            Hide(HWND::FromValue(event.window));
            return Retrieved::Again;
        case DisplayEventKind::CloseRequest:
            PostMessage(HWND::FromValue(event.window), WM_CLOSE);
            return Retrieved::Again;
        case DisplayEventKind::Lost:
            DisplayLost();
            return Retrieved::Again;
    }
    return Retrieved::Again;
}

/// The pointer is in this window from now on. True: the window that it left has been posted its leave.
bool Desktop::EnterWindow(HWND window) {
    if (window == m_mouseWindow) {
        return false;
    }
    m_mouseWindow = window;
    const Tracking tracking = std::exchange(m_tracking, {});
    return tracking.leave && PostMessage(tracking.window, WM_MOUSELEAVE);
}

/// A posted leave might come after the window was shown anew, with the look of a pointer that isn't there.
void Desktop::LeaveAtOnce() {
    m_mouseWindow = {};
    const Tracking tracking = std::exchange(m_tracking, {});
    if (tracking.leave) {
        SendMessage(tracking.window, WM_MOUSELEAVE);
    }
}

void Desktop::RetestPointerSoon() {
    m_bRetestPointer = true;
    Wake();
}

/// Windows came, went or moved while the pointer stood still: the one that is under it now hears of it.
Desktop::Retrieved Desktop::RetestPointer(MSG& message) {
    m_bRetestPointer = false;
    const HWND target = m_pointerTopLevel ? MouseTarget(m_pointerTopLevel, m_ptPointer) : HWND();
    if (target == m_mouseWindow) {
        return Retrieved::Again;
    }
    EnterWindow(target);
    if (!target) {
        return Retrieved::Again;
    }
    m_posted.push_back(MouseMessage(target, WM_MOUSEMOVE, m_uPointerFlags, m_ptPointer));
    NextPosted(message);
    return Retrieved::Message;
}

Desktop::Retrieved Desktop::PointerMoved(const DisplayEvent& event, MSG& message) {
    NotePointer(event);
    const HWND target = MouseTarget(m_pointerTopLevel, event.screen);
    if (EnterWindow(target) || !target) {
        return Retrieved::Again;
    }
    if (!m_capture) {
        SendMessage(target, WM_SETCURSOR, target.Value(), kHitClient | LPARAM{WM_MOUSEMOVE} << 16);
    }
    if (m_tracking.hover && m_tracking.window == target && !IsNear(m_tracking.anchor, event.screen, kHoverBox / 2)) {
        m_tracking.anchor = event.screen;
        m_tracking.due = m_clock->Now() + m_tracking.hoverTime;
    }
    message = MouseMessage(target, WM_MOUSEMOVE, event.flags, event.screen);
    return Retrieved::Message;
}

void Desktop::PointerLeft(const DisplayEvent& event) {
    m_ptPointer = event.screen;
    m_pointerTopLevel = {};
    if (!m_capture) {
        EnterWindow({});
    }
}

Desktop::Retrieved Desktop::ButtonChanged(const DisplayEvent& event, MSG& message) {
    const bool press = event.kind == DisplayEventKind::ButtonPress;
    NotePointer(event);
    if (EnterWindow(MouseTarget(m_pointerTopLevel, event.screen))) {
        return Retrieved::Again;
    }
    if (press && !m_capture) {
        const WindowRecord* topLevel = m_table.Find(m_pointerTopLevel);
        if (topLevel != nullptr && (topLevel->exStyle & WS_EX_NOACTIVATE) == 0) {
            Activate(m_pointerTopLevel);
        }
    }
    // Asked again: the activation may have changed everything.
    const HWND target = MouseTarget(m_pointerTopLevel, event.screen);
    if (!target) {
        return Retrieved::Again;
    }
    const ButtonMessages messages = MessagesOf(event.button);
    UINT number = press ? messages.down : messages.up;
    if (press && IsDoubleClick(target, event.button, event.screen)) {
        number = messages.doubleClick;
    }
    message = MouseMessage(target, number, event.flags, event.screen);
    return Retrieved::Message;
}

bool Desktop::IsDoubleClick(HWND window, int button, CPoint screen) {
    const std::int64_t now = m_clock->Now();
    const Press last = std::exchange(m_lastPress, {window, button, now, screen});
    const bool second = last.window == window && last.button == button && now - last.time <= kDoubleClickTime &&
                        IsNear(last.screen, screen, kDoubleClickDistance);
    if (!second || (m_table.Find(window)->windowClass->style & CS_DBLCLKS) == 0) {
        return false;
    }
    m_lastPress = {};  // a third press starts anew
    return true;
}

Desktop::Retrieved Desktop::WheelTurned(const DisplayEvent& event, MSG& message) {
    NotePointer(event);
    const HWND target = WindowAt(m_pointerTopLevel, event.screen);
    if (!target) {
        return Retrieved::Again;
    }
    const auto wParam = static_cast<WPARAM>(MakeLParam(static_cast<int>(event.flags), event.delta)) & 0xffffffffU;
    message = {target, WM_MOUSEWHEEL, wParam, MakeLParam(event.screen.x, event.screen.y), m_clock->Now(), event.screen};
    return Retrieved::Message;
}

Desktop::Retrieved Desktop::KeyChanged(const DisplayEvent& event, MSG& message) {
    const HWND target = m_focus ? m_focus : m_active;
    if (!target) {
        return Retrieved::Again;
    }
    const bool press = event.kind == DisplayEventKind::KeyPress;
    message = {target, press ? WM_KEYDOWN : WM_KEYUP, event.key, 1, m_clock->Now(), m_ptPointer};
    if (press) {
        PostCharacters(target, event.text);
    }
    return Retrieved::Message;
}

void Desktop::PostCharacters(HWND window, const std::string& text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i++]);
        const int more = lead < 0xc0 ? 0 : lead < 0xe0 ? 1 : lead < 0xf0 ? 2 : 3;
        UINT code = more == 0 ? lead : lead & (0x3fU >> more);
        for (int k = 0; k < more && i < text.size(); ++k) {
            code = code << 6 | (static_cast<unsigned char>(text[i++]) & 0x3fU);
        }
        PostMessage(window, WM_CHAR, code, 1);
    }
}

void Desktop::FrameMoved(const DisplayEvent& event) {
    const HWND window = HWND::FromValue(event.window);
    WindowRecord* record = m_table.Find(window);
    if (record == nullptr || record->destroying || record->rect == event.rect) {
        return;
    }
    const CRect before = std::exchange(record->rect, event.rect);
    if (before.Size() != event.rect.Size()) {
        DropSurface(*record);
    }
    SendPlaceMessages(window, before, event.rect);
}

/// With the display gone nothing can be seen any more; the windows live on until they are destroyed.
void Desktop::DisplayLost() {
    const std::vector<HWND> topLevels = m_topLevels;
    for (const HWND window : topLevels) {
        m_table.Find(window)->visible = false;
    }
    m_pointerTopLevel = {};
    SetCapture({});
    EnterWindow({});
    Deactivate();
}

HWND Desktop::SetCapture(HWND window) {
    if (window && m_table.Find(window) == nullptr) {
        return m_capture;
    }
    const HWND before = std::exchange(m_capture, window);
    RetestPointerSoon();
    if (before != window) {
        SendMessage(before, WM_CAPTURECHANGED, window.Value());
    }
    return before;
}

bool Desktop::TrackMouseEvent(HWND window, UINT flags, UINT hoverTime) {
    if (m_table.Find(window) == nullptr) {
        return false;
    }
    if (window != m_mouseWindow) {
        return (flags & TME_LEAVE) == 0 || PostMessage(window, WM_MOUSELEAVE);
    }
    m_tracking.window = window;
    Wake();
    m_tracking.leave = m_tracking.leave || (flags & TME_LEAVE) != 0;
    if ((flags & TME_HOVER) != 0) {
        m_tracking.hover = true;
        m_tracking.hoverTime = hoverTime;
        m_tracking.anchor = m_ptPointer;
        m_tracking.due = m_clock->Now() + hoverTime;
    }
    return true;
}

bool Desktop::HoverDue(MSG& message) {
    if (!m_tracking.hover || m_tracking.due > m_clock->Now()) {
        return false;
    }
    m_tracking.hover = false;
    message = MouseMessage(m_tracking.window, WM_MOUSEHOVER, m_uPointerFlags, m_ptPointer);
    return true;
}

CPoint Desktop::CursorPos() {
    return m_pointerTopLevel ? m_ptPointer : GetDisplay().QueryPointer();
}

void Desktop::ReleaseGrab() {
    m_display->ReleaseGrab();
}

void Desktop::SetCursor(CursorShape shape) {
    m_cursor = shape;
    if (m_pointerTopLevel) {
        GetDisplay().SetCursor(m_pointerTopLevel.Value(), shape);
    }
}

}  // namespace veldan
