#include "platform/display/x11/X11Focus.h"

#include <utility>

namespace veldan {

namespace {

// Milliseconds in which some servers move the focus away once after a window has been shown, without the person's
// doing.
constexpr std::int64_t kStrayLoss = 300;

bool IsNobody(xcb_window_t window) {
    return window == XCB_INPUT_FOCUS_NONE || window == XCB_INPUT_FOCUS_POINTER_ROOT;
}

}  // namespace

void X11Focus::Take(X11TopLevel& topLevel) {
    if (!topLevel.IsViewable()) {
        m_wanted = topLevel.IsVisible() ? topLevel.Id() : 0;
        return;
    }
    UpdatePrevious();
    // The answer is looked at when it is needed, so that showing a window waits for nothing.
    m_asked = xcb_get_input_focus(m_connection.Get());
    Set(topLevel.Window());
}

void X11Focus::Set(xcb_window_t window) {
    const X11TopLevel* own = m_windows.FindWindow(window);
    m_wanted = 0;
    m_ordered = own != nullptr ? own->Id() : 0;
    xcb_set_input_focus(m_connection.Get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
}

void X11Focus::UpdatePrevious() {
    const auto cookie = std::exchange(m_asked, std::nullopt);
    if (!cookie) {
        return;
    }
    const auto reply = m_connection.Ask<&xcb_get_input_focus_reply>(*cookie);
    if (!reply) {
        return;
    }
    const X11TopLevel* own = m_windows.FindWindow(reply->focus);
    if (own == nullptr || own->Traits().managed) {
        m_previous = reply->focus;
    }
}

void X11Focus::GiveBack() {
    m_wanted = 0;
    UpdatePrevious();
    const xcb_window_t before = std::exchange(m_previous, 0);
    if (before == 0) {
        return;
    }
    // It is where the last order put it, so there is nothing to ask, and the person needn't wait for the answer.
    if (m_now != 0 && m_now == m_ordered && !m_bHasNews) {
        Set(before);
        return;
    }
    const auto now = m_connection.Ask<&xcb_get_input_focus_reply>(xcb_get_input_focus(m_connection.Get()));
    // Nobody has it where the window that had it is hidden already.
    if (now && (IsNobody(now->focus) || m_windows.FindWindow(now->focus) != nullptr)) {
        Set(before);
    }
}

void X11Focus::OnShow(const X11TopLevel& topLevel) {
    m_shown = topLevel.Id();
    m_nShownAt = m_clock.Now();
}

void X11Focus::OnHide(const X11TopLevel& topLevel) {
    // Where another own window was given the focus just before, the news of that one are all there is to wait for.
    const X11TopLevel* ordered = m_windows.Find(m_ordered);
    const bool isOnItsWay = ordered != nullptr && ordered->IsViewable() && ordered->Id() != topLevel.Id();
    m_bHasNews = m_bHasNews || (m_now == topLevel.Id() && !isOnItsWay);
    for (TopLevelId* id : {&m_now, &m_wanted, &m_ordered, &m_shown}) {
        if (*id == topLevel.Id()) {
            *id = 0;
        }
    }
}

void X11Focus::OnMap(X11TopLevel& topLevel) {
    if (m_wanted == topLevel.Id()) {
        Take(topLevel);
    }
}

void X11Focus::OnFocusIn(const X11TopLevel& topLevel) {
    m_now = topLevel.Id();
    m_bHasNews = true;
}

void X11Focus::OnFocusOut(const X11TopLevel& topLevel) {
    if (m_now != topLevel.Id()) {
        return;
    }
    m_now = 0;
    m_bHasNews = true;
}

void X11Focus::QueryFocus() {
    const auto reply = m_connection.Ask<&xcb_get_input_focus_reply>(xcb_get_input_focus(m_connection.Get()));
    const X11TopLevel* own = reply ? m_windows.FindWindow(reply->focus) : nullptr;
    m_now = own != nullptr ? own->Id() : 0;
}

// Also where the host's own frame has it now: a manager that was slow to notice the frame gives it the focus behind the
// back of a menu shown meanwhile.
bool X11Focus::RetakeStrayLoss() {
    if (m_shown == 0 || m_shown != m_ordered || m_clock.Now() - m_nShownAt >= kStrayLoss) {
        return false;
    }
    const X11TopLevel* shown = m_windows.Find(std::exchange(m_shown, 0));
    if (shown == nullptr || !shown->IsViewable()) {
        return false;
    }
    Set(shown->Window());
    return true;
}

std::optional<TopLevelId> X11Focus::Settle() {
    if (std::exchange(m_bHasNews, false) && m_now != m_ordered) {
        QueryFocus();
        if (m_now != m_ordered && RetakeStrayLoss()) {
            QueryFocus();
        }
    } else if (m_now == 0 && m_ordered != 0) {
        return std::nullopt;
    }
    if (m_told == m_now) {
        return std::nullopt;
    }
    m_told = m_now;
    return m_now;
}

}  // namespace veldan
