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
    LearnWhoHadIt();
    // The answer is looked at when it is needed, so that showing a window waits for nothing.
    m_asked = xcb_get_input_focus(m_connection.Get());
    Set(topLevel.Window());
}

void X11Focus::Set(xcb_window_t window) {
    m_wanted = 0;
    xcb_set_input_focus(m_connection.Get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
}

void X11Focus::LearnWhoHadIt() {
    const auto cookie = std::exchange(m_asked, std::nullopt);
    if (!cookie) return;
    const auto reply = m_connection.Ask<&xcb_get_input_focus_reply>(*cookie);
    if (!reply) return;
    const X11TopLevel* own = m_windows.FindWindow(reply->focus);
    if (!own || own->IsManaged()) m_before = reply->focus;
}

void X11Focus::GiveBack() {
    m_wanted = 0;
    m_mayRetake = false;
    LearnWhoHadIt();
    const xcb_window_t before = std::exchange(m_before, 0);
    if (before == 0) return;
    const auto now = m_connection.Ask<&xcb_get_input_focus_reply>(xcb_get_input_focus(m_connection.Get()));
    // Nobody has it where the window that had it is hidden already.
    if (now && (IsNobody(now->focus) || m_windows.FindWindow(now->focus))) Set(before);
}

void X11Focus::OnShow() {
    m_shownAt = m_clock.Now();
    m_mayRetake = true;
}

void X11Focus::OnHide(const X11TopLevel& topLevel) {
    if (m_wanted == topLevel.Id()) m_wanted = 0;
    if (m_taken == topLevel.Id()) m_taken = 0;
    if (m_now == topLevel.Id()) m_now = 0;
}

void X11Focus::OnMap(X11TopLevel& topLevel) {
    if (m_wanted == topLevel.Id()) Take(topLevel);
}

void X11Focus::OnFocusIn(const X11TopLevel& topLevel) {
    m_now = topLevel.Id();
    m_taken = 0;
}

void X11Focus::OnFocusOut(const X11TopLevel& topLevel) {
    if (m_now != topLevel.Id()) return;
    m_now = 0;
    m_taken = topLevel.Id();
}

bool X11Focus::MayRetake() const {
    return m_mayRetake && m_clock.Now() - m_shownAt < kStrayLoss;
}

std::optional<TopLevelId> X11Focus::Settle() {
    X11TopLevel* lost = m_windows.Find(std::exchange(m_taken, 0));
    if (lost && lost->IsViewable() && MayRetake()) {
        m_mayRetake = false;
        m_now = lost->Id();
        Set(lost->Window());
    }
    if (m_told == m_now) return std::nullopt;
    m_told = m_now;
    return m_now;
}

}  // namespace veldan
