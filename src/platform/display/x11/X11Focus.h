#pragma once

#include "platform/core/Clock.h"
#include "platform/display/x11/X11Windows.h"

#include <optional>

namespace veldan {

/// Which own window has the keyboard focus, and whose it was before. Moves of the focus are judged once everything that
/// the server sent was looked at: one that ends in another own window is no loss, and one from before the server knew
/// of an order to move it is out of date.
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
    void OnPressAnywhere() { m_shown = 0; }
    void OnFocusIn(const X11TopLevel& topLevel) { m_now = topLevel.Id(); }
    void OnFocusOut(const X11TopLevel& topLevel);

    /// The server has carried out everything up to this request.
    void OnSequence(std::uint32_t sequence);

    /// The own window with the focus, 0 for none, where that has changed since the last call.
    [[nodiscard]] std::optional<TopLevelId> Settle();

private:
    void Set(xcb_window_t window);
    void LearnWhoHadIt();
    void RetakeStrayLoss();

    X11Connection& m_connection;
    const X11Windows& m_windows;
    const Clock& m_clock;
    TopLevelId m_now = 0;
    TopLevelId m_told = 0;     // what Settle gave last
    TopLevelId m_wanted = 0;   // takes the focus when the server has mapped it
    TopLevelId m_ordered = 0;  // the own window that the last order gave it to
    std::uint32_t m_orderedAt = 0;
    bool m_isCarriedOut = true;
    std::optional<xcb_get_input_focus_cookie_t> m_asked;
    xcb_window_t m_before = 0;
    TopLevelId m_shown = 0;  // the window shown last, until the person has pressed anything
    std::int64_t m_shownAt = 0;
};

}  // namespace veldan
