#pragma once

#include "platform/window/DesktopContext.h"
#include "platform/window/Messenger.h"
#include "platform/window/TimerOwner.h"

#include <memory>
#include <vector>

namespace veldan {

/// Called when a timer without a window is due.
using TimerProc = void (*)(UINT_PTR id);

/// Timers of windows, which are messages, and timers without a window, which call a function.
class Timers final : public DestructionListener {
public:
    Timers(DesktopContext& context, const WindowTree& tree, const Messenger& messenger)
        : m_context(context), m_tree(tree), m_messenger(messenger) {}

    /// Starts or replaces a window's timer; the period is in milliseconds. Returns the id, 0 for a window that is gone.
    UINT_PTR Set(HWND window, UINT_PTR id, UINT period);
    /// Starts a timer without a window. Returns its id, which no other such timer ever has.
    UINT_PTR Set(const TimerOwner& owner, UINT period, TimerProc proc);
    /// A timer without a window goes by the null handle.
    bool Kill(HWND window, UINT_PTR id);
    /// The WM_TIMER of a timer that is due; false: none is.
    bool Take(MSG& message);
    /// Calls the function of a timer without a window, unless that has ended meanwhile.
    void Call(UINT_PTR id);
    /// When Take has something; -1: never.
    [[nodiscard]] std::int64_t NextDue() const;

    void OnDestroyed(HWND window) override;

private:
    struct Timer {
        HWND window;
        UINT_PTR id = 0;
        UINT period = 0;
        std::int64_t due = 0;
        TimerProc proc = nullptr;
        std::weak_ptr<const void> life{};  // of a timer without a window
    };

    void Start(Timer timer);
    [[nodiscard]] static bool IsOver(const Timer& timer) { return !timer.window && timer.life.expired(); }

    DesktopContext& m_context;
    const WindowTree& m_tree;
    const Messenger& m_messenger;
    std::vector<Timer> m_timers;
    UINT_PTR m_nNextId = 1;
};

}  // namespace veldan
