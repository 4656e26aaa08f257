#include "platform/window/MessageLoop.h"

#include <algorithm>

namespace veldan {

namespace {

/// Counts the loops that run inside one another. With the outermost ends what a host said of quitting.
class RunningLoop {
public:
    RunningLoop(int& count, bool& hostQuits) : m_nCount(count), m_bHostQuits(hostQuits) { ++m_nCount; }
    ~RunningLoop() {
        if (--m_nCount == 0) {
            m_bHostQuits = false;
        }
    }
    RunningLoop(const RunningLoop&) = delete;
    RunningLoop& operator=(const RunningLoop&) = delete;

private:
    int& m_nCount;
    bool& m_bHostQuits;
};

}  // namespace

void MessageLoop::Dispatch() {
    // Bounded, so that windows that keep posting to themselves don't keep the host from its own loop.
    constexpr int kMaxMessages = 10'000;
    MSG message;
    for (int i = 0; i < kMaxMessages && Peek(message); ++i) {
        TranslateAndDispatch(message);
    }
    Settle();
}

int MessageLoop::Run() {
    const RunningLoop running(m_nRunning, m_bHostQuits);
    while (Pump()) {
    }
    return m_queue.QuitResult();
}

bool MessageLoop::Pump() {
    const RunningLoop running(m_nRunning, m_bHostQuits);
    MSG message;
    while (!m_bHostQuits && !m_queue.TakeQuit()) {
        if (Peek(message)) {
            TranslateAndDispatch(message);
            return true;
        }
        Wait();
    }
    return false;
}

bool MessageLoop::RunWhile(const std::function<bool()>& goesOn) {
    const RunningLoop running(m_nRunning, m_bHostQuits);
    MSG message;
    while (goesOn()) {
        if (m_queue.TakeQuit()) {
            m_queue.PostQuit(m_queue.QuitResult());
            return false;
        }
        if (m_bHostQuits || !m_context.GetDisplayQuietly().IsAlive()) {
            return false;  // nobody can end what isn't shown
        }
        if (Peek(message)) {
            TranslateAndDispatch(message);
        } else {
            Wait();
        }
    }
    return true;
}

/// The only place where the layer waits. A host's word that it quits reaches every loop, even if it says so only once.
void MessageLoop::Wait() {
    Settle();
    if (!m_wait) {
        m_context.GetWaitSet().Wait();
        return;
    }
    const WaitFunction wait = m_wait;  // it may put another in its place
    m_bHostQuits = !wait() || m_bHostQuits;
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
                m_flash.StepIfDue();
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
    const std::string typed = message.message == WM_KEYDOWN ? m_keyboard.TakeText() : std::string();
    if (m_messenger.PreTranslate(message)) {
        return;
    }
    m_keyboard.PostCharacters(message.hwnd, typed);
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
    m_context.WatchDisplay();
    const std::int64_t due = NextDue();
    waitSet.WakeAfter(due < 0 ? -1 : std::max<std::int64_t>(due - m_context.Now(), 0));
    waitSet.SetAwake(HasWork());
}

bool MessageLoop::HasWork() const {
    return !m_queue.IsEmpty() || m_input.HasWork() || m_painting.HasWork();
}

/// When a hover, a timer or a step of a flash is due; -1: never.
std::int64_t MessageLoop::NextDue() const {
    std::int64_t next = -1;
    for (const std::int64_t due : {m_pointer.NextDue(), m_timers.NextDue(), m_flash.NextDue()}) {
        next = next < 0 || (due >= 0 && due < next) ? due : next;
    }
    return next;
}

}  // namespace veldan
