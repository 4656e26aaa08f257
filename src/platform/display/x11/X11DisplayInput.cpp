#include "platform/display/x11/X11DisplayImpl.h"

#include <utility>

namespace veldan {

namespace {

constexpr int kWheelStep = 120;

template <class T>
CPoint ScreenPoint(const T& event) {
    return {event.root_x, event.root_y};
}

UINT FlagsOf(std::uint16_t state) {
    constexpr std::pair<std::uint16_t, UINT> kFlags[] = {
        {XCB_KEY_BUT_MASK_BUTTON_1, MK_LBUTTON}, {XCB_KEY_BUT_MASK_BUTTON_2, MK_MBUTTON},
        {XCB_KEY_BUT_MASK_BUTTON_3, MK_RBUTTON}, {XCB_KEY_BUT_MASK_SHIFT, MK_SHIFT},
        {XCB_KEY_BUT_MASK_CONTROL, MK_CONTROL},  {XCB_KEY_BUT_MASK_MOD_1, MK_ALT},
    };
    UINT flags = 0;
    for (const auto& [mask, flag] : kFlags) {
        flags |= (state & mask) != 0 ? flag : 0U;
    }
    return flags;
}

// Events tell of the others whether they are held, but not of these.
std::uint32_t SideButton(xcb_button_t button) {
    return button > 5 && button < 32 ? std::uint32_t{1} << button : 0;
}

UINT FlagOf(xcb_button_t button) {
    switch (button) {
        case 1:
            return MK_LBUTTON;
        case 2:
            return MK_MBUTTON;
        default:
            return MK_RBUTTON;
    }
}

}  // namespace

void X11Display::OnMotion(const xcb_motion_notify_event_t& event) {
    if (const X11TopLevel* topLevel = m_windows.FindWindow(event.event)) {
        PushLeave();
        PushMove(topLevel->Id(), ScreenPoint(event), FlagsOf(event.state));
    }
}

void X11Display::OnEnter(const xcb_enter_notify_event_t& event) {
    const X11TopLevel* topLevel = m_windows.FindWindow(event.event);
    if (topLevel == nullptr) {
        return;
    }
    m_ptLeft.reset();
    m_pointerIn = topLevel->Id();
    PushMove(topLevel->Id(), ScreenPoint(event), FlagsOf(event.state));
}

void X11Display::OnLeave(const xcb_leave_notify_event_t& event) {
    const X11TopLevel* topLevel = m_windows.FindWindow(event.event);
    if (topLevel == nullptr || topLevel->Id() != m_pointerIn) {
        return;
    }
    m_pointerIn = 0;
    m_ptLeft = m_ptLast = ScreenPoint(event);
}

void X11Display::OnPress(const xcb_button_press_event_t& event) {
    NotePress();
    if (m_outside.OnPress(event, m_marks.Reached())) {
        return PushOutside();
    }
    const X11TopLevel* topLevel = m_windows.FindWindow(event.event);
    if (topLevel == nullptr) {
        return;
    }
    m_bButtonHeld = true;
    if (event.detail > 5) {
        m_uSideButtons |= SideButton(event.detail);
        return;
    }
    PushLeave();
    m_ptLast = ScreenPoint(event);
    DisplayEvent press{.window = topLevel->Id(), .screen = m_ptLast, .flags = FlagsOf(event.state)};
    press.mark = m_marks.Reached();
    if (event.detail >= 4) {
        press.kind = DisplayEventKind::Wheel;
        press.delta = event.detail == 4 ? kWheelStep : -kWheelStep;
    } else {
        press.kind = DisplayEventKind::ButtonPress;
        press.button = event.detail;
        press.flags |= FlagOf(event.detail);
    }
    m_events.push_back(std::move(press));
}

void X11Display::OnRelease(const xcb_button_release_event_t& event) {
    const X11TopLevel* topLevel = m_windows.FindWindow(event.event);
    m_uSideButtons &= ~SideButton(event.detail);
    if (topLevel == nullptr || event.detail > 3) {
        return;
    }
    constexpr UINT kButtons = MK_LBUTTON | MK_MBUTTON | MK_RBUTTON;
    const UINT flags = FlagsOf(event.state) & ~FlagOf(event.detail);
    m_bButtonHeld = (flags & kButtons) != 0 || m_uSideButtons != 0;
    PushLeave();
    m_ptLast = ScreenPoint(event);
    m_events.push_back({.kind = DisplayEventKind::ButtonRelease,
                        .window = topLevel->Id(),
                        .screen = m_ptLast,
                        .button = event.detail,
                        .flags = flags});
}

void X11Display::OnKey(const xcb_key_press_event_t& event, bool isPress) {
    const X11TopLevel* topLevel = m_windows.FindWindow(event.event);
    if (topLevel == nullptr) {
        return;
    }
    DisplayEvent key{.kind = isPress ? DisplayEventKind::KeyPress : DisplayEventKind::KeyRelease,
                     .window = topLevel->Id(),
                     .screen = ScreenPoint(event),
                     .flags = FlagsOf(event.state)};
    if (isPress) {
        X11Keyboard::Stroke stroke = m_keyboard.Press(event.detail, event.state);
        key.key = stroke.key;
        key.text = std::move(stroke.text);
        key.repeat = stroke.repeat;
    } else {
        key.key = m_keyboard.Release(event.detail, event.state);
    }
    // The server tells the state before the event.
    const UINT own = ModifierOfKey(key.key);
    key.flags = isPress ? key.flags | own : key.flags & ~own;
    m_events.push_back(std::move(key));
}

void X11Display::OnFocus(const xcb_focus_in_event_t& event, bool isIn) {
    // A grab of the keyboard by another program takes it away for a while only, and keys that come because the pointer
    // is in the window don't make it the focus.
    if (event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB) {
        return;
    }
    if (event.detail == XCB_NOTIFY_DETAIL_POINTER) {
        return;
    }
    const X11TopLevel* topLevel = m_windows.FindWindow(event.event);
    if (topLevel == nullptr) {
        return;
    }
    if (isIn) {
        m_focus.OnFocusIn(*topLevel);
    } else {
        m_focus.OnFocusOut(*topLevel);
    }
}

// A press from before the latest show has nothing to do with what happens to the focus since.
void X11Display::NotePress() {
    if (m_marks.AllReached()) {
        m_focus.EndStrayLosses();
    }
}

void X11Display::PushMove(TopLevelId window, CPoint screen, UINT flags) {
    m_ptLast = screen;
    // Only where the pointer is now counts.
    if (!m_events.empty() && m_events.back().kind == DisplayEventKind::PointerMove) {
        m_events.pop_back();
    }
    m_events.push_back({.kind = DisplayEventKind::PointerMove, .window = window, .screen = screen, .flags = flags});
}

void X11Display::PushLeave() {
    if (const auto left = std::exchange(m_ptLeft, std::nullopt)) {
        m_events.push_back({.kind = DisplayEventKind::PointerLeave, .screen = *left});
    }
}

void X11Display::PushOutside() {
    if (const auto press = m_outside.Take()) {
        PushLeave();
        m_events.push_back({.kind = DisplayEventKind::OutsidePress, .screen = press->screen, .mark = press->mark});
    }
}

void X11Display::PushFocus() {
    const auto focus = m_focus.Settle();
    if (!focus) {
        return;
    }
    m_keyboard.EndSequence();
    m_activeWindow.OnFocus(*focus);
    m_events.push_back(
        {.kind = *focus != 0 ? DisplayEventKind::FocusIn : DisplayEventKind::FocusOut, .window = *focus});
}

}  // namespace veldan
