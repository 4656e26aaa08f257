#pragma once

#include "platform/core/Clock.h"
#include "platform/display/x11/X11Windows.h"

#include <optional>

namespace veldan {

/// Which own window has the keyboard focus, and whose it was before. Moves of the focus are judged once everything that
/// the server sent was looked at: one that ends in another own window is no loss.
class X11Focus {
public:
    X11Focus(X11Connection& connection, const X11Windows& windows, const Clock& clock)
        : m_connection(connection), m_windows(windows), m_clock(clock) {}

    void Take(X11TopLevel& topLevel);
    /// The focus goes to whoever had it before the first Take, unless a foreign window has it by now.
    void GiveBack();

    void OnShow();
    /// The window won't have the focus from now on.
    void OnHide(const X11TopLevel& topLevel);
    void OnMap(X11TopLevel& topLevel);
    void OnPressAnywhere() { m_mayRetake = false; }
    void OnFocusIn(const X11TopLevel& topLevel);
    void OnFocusOut(const X11TopLevel& topLevel);

    /// The own window with the focus, 0 for none, where that has changed since the last call.
    [[nodiscard]] std::optional<TopLevelId> Settle();

private:
    void Set(xcb_window_t window);
    void LearnWhoHadIt();
    [[nodiscard]] bool MayRetake() const;

    X11Connection& m_connection;
    const X11Windows& m_windows;
    const Clock& m_clock;
    TopLevelId m_now = 0;
    TopLevelId m_told = 0;    // what Settle gave last
    TopLevelId m_taken = 0;   // had the focus before the loss that is to be judged
    TopLevelId m_wanted = 0;  // takes the focus when the server has mapped it
    std::optional<xcb_get_input_focus_cookie_t> m_asked;
    xcb_window_t m_before = 0;
    std::int64_t m_shownAt = 0;
    bool m_mayRetake = false;
};

}  // namespace veldan
