#include "platform/window/MessageLoop.h"

#include <algorithm>

namespace veldan {

void MessageLoop::Dispatch() {
    // Bounded, so that windows that keep posting to themselves don't keep the host from its own loop.
    constexpr int kMaxMessages = 10'000;
    MSG message;
    for (int i = 0; i < kMaxMessages && Peek(message); ++i) {
        TranslateAndDispatch(message);
    }
    Settle();
}

bool MessageLoop::Pump() {
    MSG message;
    for (;;) {
        if (m_queue.TakeQuit()) {
            return false;
        }
        if (Peek(message)) {
            TranslateAndDispatch(message);
            return true;
        }
        Settle();
        m_context.GetWaitSet().Wait();
    }
}

bool MessageLoop::Peek(MSG& message) {
    for (;;) {
        if (m_queue.Take(message)) {
            return true;
        }
        switch (m_input.Next(message)) {
            case Input::Found::Message:
                return true;
            case Input::Found::Again:
                continue;
            case Input::Found::Nothing:
                return NextPaint(message) || m_pointer.TakeHover(message) || m_timers.Take(message);
        }
    }
}

bool MessageLoop::NextPaint(MSG& message) {
    const HWND window = m_painting.Next();
    if (!window) {
        m_events.EndRowOfPaints();
        m_surfaces.PresentAll();
        return false;
    }
    m_events.CountPaint();
    message = m_messenger.Make(window, WM_PAINT);
    return true;
}

void MessageLoop::TranslateAndDispatch(MSG& message) {
    if (m_messenger.PreTranslate(message)) {
        return;
    }
    if (message.message == WM_PAINT) {
        m_painting.Paint(message.hwnd);
    } else if (message.message == WM_TIMER && !message.hwnd) {
        m_timers.Call(message.wParam);
    } else {
        m_messenger.Dispatch(message);
    }
}

void MessageLoop::Settle() {
    Display& display = m_context.GetDisplayQuietly();
    WaitSet& waitSet = m_context.GetWaitSet();
    m_surfaces.PresentAll();
    display.Flush();
    m_events.Read();
    waitSet.Watch(display.Descriptor());
    const std::int64_t due = NextDue();
    waitSet.WakeAfter(due < 0 ? -1 : std::max<std::int64_t>(due - m_context.Now(), 0));
    waitSet.SetAwake(HasWork());
}

bool MessageLoop::HasWork() const {
    return !m_queue.IsEmpty() || m_input.HasWork() || m_painting.HasWork();
}

/// When a hover or a timer is due; -1: never.
std::int64_t MessageLoop::NextDue() const {
    const std::int64_t hover = m_pointer.NextDue();
    const std::int64_t timer = m_timers.NextDue();
    return hover < 0 || timer < 0 ? std::max(hover, timer) : std::min(hover, timer);
}

}  // namespace veldan
