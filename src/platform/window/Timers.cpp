#include "platform/window/Timers.h"

#include <algorithm>

namespace veldan {

UINT_PTR Timers::Set(HWND window, UINT_PTR id, UINT period, TimerProc proc) {
    if (window && m_tree.Find(window) == nullptr) {
        return 0;
    }
    if (!window) {
        id = m_nNextId++;
    }
    Kill(window, id);
    period = std::max(period, 1U);
    m_timers.push_back({window, id, period, m_context.Now() + period, proc});
    m_context.Wake();
    return id;
}

bool Timers::Kill(HWND window, UINT_PTR id) {
    return std::erase_if(m_timers, [=](const Timer& t) { return t.window == window && t.id == id; }) != 0;
}

bool Timers::Take(MSG& message) {
    const auto next = std::ranges::min_element(m_timers, {}, &Timer::due);
    const std::int64_t now = m_context.Now();
    if (next == m_timers.end() || next->due > now) {
        return false;
    }
    next->due = now + next->period;
    message = m_messenger.Make(next->window, WM_TIMER, next->id);
    return true;
}

void Timers::Call(UINT_PTR id) {
    const auto found = std::ranges::find_if(m_timers, [=](const Timer& t) { return !t.window && t.id == id; });
    if (found != m_timers.end() && found->proc != nullptr) {
        found->proc(found->id);
    }
}

std::int64_t Timers::NextDue() const {
    const auto next = std::ranges::min_element(m_timers, {}, &Timer::due);
    return next != m_timers.end() ? next->due : -1;
}

void Timers::OnDestroyed(HWND window) {
    std::erase_if(m_timers, [window](const Timer& timer) { return timer.window == window; });
}

}  // namespace veldan
