#include "platform/display/x11/X11ActiveWindow.h"

#include <utility>

namespace veldan {

void X11ActiveWindow::OnFocus(TopLevelId now) {
    if (now == 0) {
        m_bDoubtful = true;
    } else {
        m_told = 0;
    }
}

bool X11ActiveWindow::Settle(bool ownHasFocus) {
    if (!std::exchange(m_bDoubtful, false) || ownHasFocus || !m_windows.IsAnyVisible()) {
        return false;
    }
    const auto askedFocus = xcb_get_input_focus(m_connection.Get());
    const auto askedActive = xcb_get_property(m_connection.Get(), 0, m_connection.Root(),
                                              m_connection.Atom(X11Atom::NetActiveWindow), XCB_ATOM_WINDOW, 0, 1);
    const auto focus = m_connection.Ask<&xcb_get_input_focus_reply>(askedFocus);
    const auto active = m_connection.Take<&xcb_get_property_reply>(askedActive);
    // The manager's word may lag behind an own window's wish to have the focus.
    if (!focus || !active || m_windows.FindWindow(focus->focus) != nullptr) {
        return false;
    }
    xcb_window_t now = focus->focus == XCB_INPUT_FOCUS_POINTER_ROOT ? xcb_window_t{XCB_NONE} : focus->focus;
    if (active->value_len == 1) {
        now = *static_cast<const xcb_window_t*>(xcb_get_property_value(active.get()));
    }
    if (now == XCB_NONE || now == m_told || m_windows.FindWindow(now) != nullptr) {
        return false;
    }
    m_told = now;
    return true;
}

}  // namespace veldan
