#include "platform/window/Desktop.h"
#include "platform/window/Wnd.h"

#include <algorithm>
#include <utility>

namespace veldan {

void Desktop::Dispatch() {
    // Bounded, so that windows that keep posting to themselves don't keep the host from its own loop.
    constexpr int kMostMessages = 10'000;
    MSG message;
    for (int i = 0; i < kMostMessages && PeekMessage(message); ++i) {
        TranslateAndDispatch(message);
    }
    Settle();
}

int Desktop::Run() {
    while (PumpMessage()) {
    }
    return m_nQuitResult;
}

bool Desktop::PumpMessage() {
    MSG message;
    for (;;) {
        // What was posted before the quit message is handled before it.
        if (m_posted.empty() && std::exchange(m_bQuit, false)) {
            return false;
        }
        if (PeekMessage(message)) {
            TranslateAndDispatch(message);
            return true;
        }
        Settle();
        m_waitSet.Wait();
    }
}

bool Desktop::PeekMessage(MSG& message) {
    for (;;) {
        if (NextPosted(message)) {
            return true;
        }
        switch (NextInput(message)) {
            case Retrieved::Message:
                return true;
            case Retrieved::Again:
                continue;
            case Retrieved::Nothing:
                return NextPaintMessage(message) || NextTimer(message);
        }
    }
}

void Desktop::PostQuitMessage(int result) {
    m_bQuit = true;
    Wake();
    m_nQuitResult = result;
}

bool Desktop::NextPosted(MSG& message) {
    if (m_posted.empty()) {
        return false;
    }
    message = m_posted.front();
    m_posted.pop_front();
    return true;
}

bool Desktop::NextPaintMessage(MSG& message) {
    const HWND window = NextPaint({});
    if (!window) {
        m_nPaintsSinceRead = 0;
        PresentAll();
        return false;
    }
    ++m_nPaintsSinceRead;
    message = {window, WM_PAINT, 0, 0, m_clock->Now(), m_ptPointer};
    return true;
}

void Desktop::TranslateAndDispatch(MSG& message) {
    for (HWND window = message.hwnd; window;) {
        const WindowRecord* record = m_table.Find(window);
        if (record == nullptr) {
            break;
        }
        const HWND parent = record->parent;
        if (record->object != nullptr && record->object->PreTranslateMessage(message)) {
            return;
        }
        window = parent;
    }
    DispatchMessage(message);
}

void Desktop::DispatchMessage(const MSG& message) {
    if (message.message == WM_PAINT) {
        PaintWindow(message.hwnd);
    } else if (WindowRecord* record = m_table.Find(message.hwnd)) {
        CallWindow(*record, message.message, message.wParam, message.lParam, false);
    } else if (message.message == WM_TIMER && !message.hwnd) {
        const auto found =
            std::ranges::find_if(m_timers, [&](const Timer& t) { return !t.window && t.id == message.wParam; });
        if (found != m_timers.end() && found->proc != nullptr) {
            found->proc(found->id);
        }
    }
}

void Desktop::ReadDisplay() {
    DisplayEvent event;
    while (m_display->NextEvent(event)) {
        m_input.push_back(std::move(event));
    }
}

void Desktop::Settle() {
    PresentAll();
    m_display->Flush();
    ReadDisplay();
    m_waitSet.Watch(m_display->Descriptor());
    const std::int64_t due = NextDue();
    m_waitSet.WakeAfter(due < 0 ? -1 : std::max<std::int64_t>(due - m_clock->Now(), 0));
    m_waitSet.SetAwake(HasWork());
}

void Desktop::Wake() {
    m_waitSet.SetAwake(true);
}

bool Desktop::HasWork() const {
    const auto anyPaint = [this](const std::vector<HWND>& queue) {
        return std::ranges::any_of(queue, [this](HWND window) {
            const WindowRecord* record = m_table.Find(window);
            return record != nullptr && !record->update.IsEmpty() && IsVisible(window);
        });
    };
    return !m_posted.empty() || !m_input.empty() || m_bRetestPointer || std::ranges::any_of(m_paintByDepth, anyPaint);
}

std::int64_t Desktop::NextDue() const {
    std::int64_t due = m_tracking.hover ? m_tracking.due : -1;
    for (const Timer& timer : m_timers) {
        due = due < 0 ? timer.due : std::min(due, timer.due);
    }
    return due;
}

UINT_PTR Desktop::SetTimer(HWND window, UINT_PTR id, UINT period, TimerProc proc) {
    if (window && m_table.Find(window) == nullptr) {
        return 0;
    }
    if (!window) {
        id = m_nNextTimerId++;
    }
    KillTimer(window, id);
    period = std::max(period, 1U);
    m_timers.push_back({window, id, period, m_clock->Now() + period, proc});
    Wake();
    return id;
}

bool Desktop::KillTimer(HWND window, UINT_PTR id) {
    return std::erase_if(m_timers, [=](const Timer& t) { return t.window == window && t.id == id; }) != 0;
}

bool Desktop::NextTimer(MSG& message) {
    if (HoverDue(message)) {
        return true;
    }
    const auto next = std::ranges::min_element(m_timers, {}, &Timer::due);
    const std::int64_t now = m_clock->Now();
    if (next == m_timers.end() || next->due > now) {
        return false;
    }
    next->due = now + next->period;
    message = {next->window, WM_TIMER, next->id, 0, now, m_ptPointer};
    return true;
}

}  // namespace veldan
