#pragma once

#include "platform/display/x11/X11Windows.h"

namespace veldan {

/// Finds out that a window of another program became the active one: the one that the window manager calls so or,
/// without a manager, the one with the keyboard focus.
class X11ActiveWindow {
public:
    X11ActiveWindow(X11Connection& connection, const X11Windows& windows)
        : m_connection(connection), m_windows(windows) {}

    /// The manager calls another window active.
    void OnChange() { m_bDoubtful = true; }
    /// An own window has got the keyboard focus; 0: it has left them.
    void OnFocus(TopLevelId now);
    /// True, once for each: a foreign window is active now, which can't be while an own one has the focus. May wait for
    /// an answer.
    [[nodiscard]] bool Settle(bool ownHasFocus);

private:
    X11Connection& m_connection;
    const X11Windows& m_windows;
    bool m_bDoubtful = false;
    xcb_window_t m_told = 0;
};

}  // namespace veldan
