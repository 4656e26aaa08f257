#include "platform/display/x11/X11OutsideWatch.h"

#include <xcb/xinput.h>

namespace veldan {

namespace {

bool Counts(std::uint32_t button) {
    return button >= 1 && button <= 3;
}

}  // namespace

X11OutsideWatch::X11OutsideWatch(X11Connection& connection, const X11Windows& windows, bool useRawPresses)
    : m_connection(connection), m_windows(windows), m_bUseRawPresses(useRawPresses) {}

void X11OutsideWatch::SetActive(bool active) {
    if (m_bActive == active) {
        return;
    }
    m_bActive = active;
    m_undecided.reset();
    if (m_bUseRawPresses) {
        SelectRaw(active);
    } else {
        GrabRoot(active);
    }
}

void X11OutsideWatch::SelectRaw(bool active) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{};
    selection.head.deviceid = XCB_INPUT_DEVICE_ALL_MASTER;
    selection.head.mask_len = 1;
    selection.mask = active ? XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS : 0;
    xcb_input_xi_select_events(m_connection.Get(), m_connection.Root(), 1, &selection.head);
}

void X11OutsideWatch::GrabRoot(bool active) {
    for (const auto button : {XCB_BUTTON_INDEX_1, XCB_BUTTON_INDEX_2, XCB_BUTTON_INDEX_3}) {
        if (active) {
            xcb_grab_button(m_connection.Get(), 0, m_connection.Root(), XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_SYNC,
                            XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, static_cast<std::uint8_t>(button),
                            XCB_MOD_MASK_ANY);
        } else {
            xcb_ungrab_button(m_connection.Get(), static_cast<std::uint8_t>(button), m_connection.Root(),
                              XCB_MOD_MASK_ANY);
        }
    }
}

bool X11OutsideWatch::OnRawPress(const xcb_ge_generic_event_t& event, bool pointerIsInside, std::uint64_t mark) {
    const auto& raw = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
    if (!m_bActive || !Counts(raw.detail)) {
        return false;
    }
    if (pointerIsInside) {
        m_undecided = {raw.time, mark};
    } else if (const auto now = AskPointer()) {
        m_outside = {{now->root_x, now->root_y}, mark};
    }
    return true;
}

bool X11OutsideWatch::OnPress(const xcb_button_press_event_t& event, std::uint64_t mark) {
    if (m_windows.FindWindow(event.event) != nullptr) {
        if (m_undecided && m_undecided->time == event.time) {
            m_undecided.reset();
        }
        return false;
    }
    // The grab holds all input until the press is let through to its own receiver, which may be an own window.
    xcb_allow_events(m_connection.Get(), XCB_ALLOW_REPLAY_POINTER, XCB_CURRENT_TIME);
    xcb_flush(m_connection.Get());
    // Servers report a press that was held back with the place of the one before, so only the window counts.
    if (m_windows.FindOutermost(event.child) == nullptr) {
        m_outside = {{event.root_x, event.root_y}, mark};
    }
    return true;
}

void X11OutsideWatch::Settle() {
    const auto undecided = std::exchange(m_undecided, std::nullopt);
    if (!undecided) {
        return;
    }
    // While another program grabs the pointer, nothing tells that it has moved to a foreign window. A manager may also
    // still hold the press back from an own one.
    const auto now = AskPointer();
    if (!now) {
        return;
    }
    const CPoint screen{now->root_x, now->root_y};
    const X11TopLevel* hit = m_windows.FindOutermost(now->child);
    if (hit == nullptr || !hit->Rect().Contains(screen)) {
        m_outside = {screen, undecided->mark};
    }
}

X11Owned<xcb_query_pointer_reply_t> X11OutsideWatch::AskPointer() {
    return m_connection.Ask<&xcb_query_pointer_reply>(xcb_query_pointer(m_connection.Get(), m_connection.Root()));
}

}  // namespace veldan
