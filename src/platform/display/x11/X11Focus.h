#pragma once

#include "platform/core/Clock.h"
#include "platform/display/x11/X11Windows.h"

#include <optional>

namespace veldan {

/// Which own window has the keyboard focus, and whose it was before. News of the focus can be out of date, or half of
/// what there is to tell: it has left one own window, not yet come to another. So the server is asked whenever they
/// don't say just what was ordered.
class X11Focus {
public:
    X11Focus(X11Connection& connection, const X11Windows& windows, const Clock& clock)
        : m_connection(connection), m_windows(windows), m_clock(clock) {}

    void Take(X11TopLevel& topLevel);
    /// The focus goes to whoever had it before the first Take, unless a foreign window has it by now.
    void GiveBack();

    void OnShow(const X11TopLevel& topLevel);
    /// The window won't have the focus from now on.
    void OnHide(const X11TopLevel& topLevel);
    void OnMap(X11TopLevel& topLevel);
    /// From here on a loss of the focus is somebody's will.
    void EndStrayLosses() { m_shown = 0; }
    void OnFocusIn(const X11TopLevel& topLevel);
    void OnFocusOut(const X11TopLevel& topLevel);

    /// As far as the news tell.
    [[nodiscard]] bool IsOwn() const { return m_now != 0; }
    /// The own window with the focus, 0 for none, where that has changed since the last call; may wait for an answer.
    /// Nothing while an own window is to have it and no news of that have come.
    [[nodiscard]] std::optional<TopLevelId> Settle();

private:
    void Set(xcb_window_t window);
    void UpdatePrevious();
    bool RetakeStrayLoss();
    void QueryFocus();

    X11Connection& m_connection;
    const X11Windows& m_windows;
    const Clock& m_clock;
    TopLevelId m_now = 0;
    TopLevelId m_told = 0;     // what Settle gave last
    TopLevelId m_wanted = 0;   // takes the focus when the server has mapped it
    TopLevelId m_ordered = 0;  // the own window that the last order gave it to
    bool m_bHasNews = false;
    std::optional<xcb_get_input_focus_cookie_t> m_asked;
    xcb_window_t m_previous = 0;
    TopLevelId m_shown = 0;  // the window shown last, until the person has pressed anything
    std::int64_t m_nShownAt = 0;
};

}  // namespace veldan
