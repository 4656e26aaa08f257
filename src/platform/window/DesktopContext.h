#pragma once

#include "platform/core/Clock.h"
#include "platform/display/Display.h"
#include "platform/window/WaitSet.h"

#include <memory>

namespace veldan {

/// What every part of a desktop uses: the clock, the display, and the descriptor that wakes the loop.
class DesktopContext {
public:
    DesktopContext(std::unique_ptr<Display> display, std::unique_ptr<Clock> clock);

    [[nodiscard]] const Clock& GetClock() const { return *m_clock; }
    [[nodiscard]] std::int64_t Now() const { return m_clock->Now(); }
    /// Asking the display for anything may take in events or leave requests unsent, so the loop comes round after it.
    [[nodiscard]] Display& GetDisplay() {
        Wake();
        return *m_display;
    }
    /// The display for calls that leave the loop nothing to do.
    [[nodiscard]] Display& GetDisplayQuietly() { return *m_display; }
    [[nodiscard]] WaitSet& GetWaitSet() { return m_waitSet; }
    [[nodiscard]] const WaitSet& GetWaitSet() const { return m_waitSet; }
    /// Something is left to do: makes the descriptor readable until the loop has seen to it.
    void Wake() { m_waitSet.SetAwake(true); }

    /// Watches the display's connection, or no longer, once that is lost.
    void WatchDisplay();

private:
    std::unique_ptr<Clock> m_clock;
    std::unique_ptr<Display> m_display;
    WaitSet m_waitSet;
    int m_nWatched = -1;
};

}  // namespace veldan
