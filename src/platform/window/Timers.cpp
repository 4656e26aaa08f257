#include "platform/window/Timers.h"

#include <algorithm>
#include <utility>

namespace veldan {

UINT_PTR Timers::Set(HWND window, UINT_PTR id, UINT period) {
    if (m_tree.Find(window) == nullptr) {
        return 0;
    }
    Kill(window, id);
    Timer timer;
    timer.window = window;
    timer.id = id;
    timer.period = period;
    Start(std::move(timer));
    return id;
}

UINT_PTR Timers::Set(const TimerOwner& owner, UINT period, TimerProc proc) {
    Timer timer;
    timer.id = m_nNextId++;
    timer.period = period;
    timer.proc = proc;
    timer.life = owner.Life();
    const UINT_PTR id = timer.id;
    Start(std::move(timer));
    return id;
}

void Timers::Start(Timer timer) {
    timer.period = std::max(timer.period, 1U);
    timer.due = m_context.Now() + timer.period;
    m_timers.push_back(std::move(timer));
    m_context.Wake();
}

bool Timers::Kill(HWND window, UINT_PTR id) {
    return std::erase_if(m_timers, [=](const Timer& t) { return t.window == window && t.id == id; }) != 0;
}

bool Timers::Take(MSG& message) {
    std::erase_if(m_timers, IsOver);
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
    if (found != m_timers.end() && !IsOver(*found) && found->proc != nullptr) {
        found->proc(id);
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
