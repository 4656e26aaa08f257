#include "platform/display/x11/X11DisplayImpl.h"
#include "platform/display/x11/X11PipeGuard.h"
#include "platform/display/x11/X11Xkb.h"

#include <xcb/xinput.h>

#include <utility>

namespace veldan {

namespace {

constexpr int kWheelStep = 120;

template <class T>
const T& As(const xcb_generic_event_t& event) {
    return reinterpret_cast<const T&>(event);
}

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

bool X11Display::NextEvent(DisplayEvent& event) {
    if (m_events.empty()) {
        ReadEvents();
    }
    if (m_events.empty()) {
        return false;
    }
    event = std::move(m_events.front());
    m_events.pop_front();
    return true;
}

void X11Display::ReadEvents() {
    if (m_bLossTold) {
        return;
    }
    const X11PipeGuard guard;
    const auto next = [this] { return X11Owned<xcb_generic_event_t>(xcb_poll_for_event(m_connection->Get())); };
    do {
        while (const auto event = next()) {
            Translate(*event);
        }
    } while (Settle());
    xcb_flush(m_connection->Get());
    if (IsAlive()) {
        return;
    }
    m_bLossTold = true;
    m_events.push_back({.kind = DisplayEventKind::Lost});
}

// True: an answer was waited for, which may have brought further events with it.
bool X11Display::Settle() {
    const std::uint64_t before = RoundTrips();
    for (const auto& [id, topLevel] : m_windows) {
        if (topLevel->SettleHidden()) {
            PushHidden(*topLevel);
        }
    }
    PushLeave();
    m_outside.Settle();
    PushOutside();
    PushFocus();
    PushMoved();
    return RoundTrips() != before;
}

void X11Display::Translate(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
        case XCB_MOTION_NOTIFY:
            return OnMotion(As<xcb_motion_notify_event_t>(event));
        case XCB_ENTER_NOTIFY:
            return OnEnter(As<xcb_enter_notify_event_t>(event));
        case XCB_LEAVE_NOTIFY:
            return OnLeave(As<xcb_leave_notify_event_t>(event));
        case XCB_BUTTON_PRESS:
            return OnPress(As<xcb_button_press_event_t>(event));
        case XCB_BUTTON_RELEASE:
            return OnRelease(As<xcb_button_release_event_t>(event));
        case XCB_KEY_PRESS:
            return OnKey(As<xcb_key_press_event_t>(event), true);
        case XCB_KEY_RELEASE:
            return OnKey(As<xcb_key_release_event_t>(event), false);
        case XCB_FOCUS_IN:
            return OnFocus(As<xcb_focus_in_event_t>(event), true);
        case XCB_FOCUS_OUT:
            return OnFocus(As<xcb_focus_out_event_t>(event), false);
        case XCB_CONFIGURE_NOTIFY:
            return OnConfigure(As<xcb_configure_notify_event_t>(event), event.full_sequence);
        case XCB_REPARENT_NOTIFY:
            if (X11TopLevel* topLevel = m_windows.FindWindow(As<xcb_reparent_notify_event_t>(event).window)) {
                topLevel->OnReparent(As<xcb_reparent_notify_event_t>(event));
            }
            return;
        case XCB_MAP_NOTIFY:
            if (X11TopLevel* topLevel = m_windows.FindWindow(As<xcb_map_notify_event_t>(event).window)) {
                topLevel->OnMap();
                m_focus.OnMap(*topLevel);
            }
            return;
        case XCB_UNMAP_NOTIFY:
            if (X11TopLevel* topLevel = m_windows.FindWindow(As<xcb_unmap_notify_event_t>(event).window)) {
                topLevel->OnUnmap(event.full_sequence);
            }
            return;
        case XCB_DESTROY_NOTIFY:
            return OnDestroy(As<xcb_destroy_notify_event_t>(event));
        case XCB_CLIENT_MESSAGE:
            return OnClientMessage(As<xcb_client_message_event_t>(event));
        case XCB_MAPPING_NOTIFY:
            return m_keyboard.DropKeymap();
        default:
            return TranslateExtension(event);
    }
}

// Errors of requests that nobody waits for come this way too; they concern windows that went away meanwhile.
void X11Display::TranslateExtension(const xcb_generic_event_t& event) {
    const X11Features& features = m_connection->Features();
    const int type = event.response_type & 0x7f;
    if (type == XCB_GE_GENERIC) {
        const auto& generic = As<xcb_ge_generic_event_t>(event);
        if (generic.extension != features.inputOpcode || generic.event_type != XCB_INPUT_RAW_BUTTON_PRESS) {
            return;
        }
        if (m_outside.OnRawPress(generic, m_pointerIn != 0)) {
            m_focus.EndStrayLosses();
        }
        PushOutside();
    } else if (features.sharedMemory && type == features.sharedMemoryEvent + XCB_SHM_COMPLETION) {
        m_upload.OnCompletion(As<xcb_shm_completion_event_t>(event));
    } else if (features.keyboardMap && type == features.keyboardEvent) {
        // The second byte of a keyboard event is its kind; only kinds that tell of a new map are selected.
        m_keyboard.DropKeymap();
    }
}

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
    m_focus.EndStrayLosses();
    if (m_outside.OnPress(event)) {
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

void X11Display::OnConfigure(const xcb_configure_notify_event_t& event, std::uint32_t sequence) {
    if (event.window == m_connection->Root()) {
        m_screen = {event.width, event.height};
        return;
    }
    X11TopLevel* topLevel = m_windows.FindWindow(event.window);
    if (topLevel != nullptr && topLevel->IsManaged()) {
        topLevel->OnConfigure(event, sequence);
    }
}

void X11Display::OnDestroy(const xcb_destroy_notify_event_t& event) {
    X11TopLevel* topLevel = m_windows.FindWindow(event.window);
    if (topLevel == nullptr) {
        return;
    }
    const bool wasVisible = topLevel->IsVisible();
    m_windows.Recreate(*topLevel);
    if (wasVisible) {
        PushHidden(*topLevel);
    }
}

void X11Display::OnClientMessage(const xcb_client_message_event_t& event) {
    const X11TopLevel* topLevel = m_windows.FindWindow(event.window);
    if (topLevel == nullptr || event.type != m_connection->Atom(X11Atom::WmProtocols)) {
        return;
    }
    if (event.data.data32[0] != m_connection->Atom(X11Atom::WmDeleteWindow)) {
        return;
    }
    m_events.push_back({.kind = DisplayEventKind::CloseRequest, .window = topLevel->Id()});
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
    if (const auto screen = m_outside.Take()) {
        PushLeave();
        m_events.push_back({.kind = DisplayEventKind::OutsidePress, .screen = *screen});
    }
}

void X11Display::PushFocus() {
    const auto focus = m_focus.Settle();
    if (!focus) {
        return;
    }
    m_keyboard.EndSequence();
    m_events.push_back(
        {.kind = *focus != 0 ? DisplayEventKind::FocusIn : DisplayEventKind::FocusOut, .window = *focus});
}

void X11Display::PushHidden(const X11TopLevel& topLevel) {
    OnHidden(topLevel);
    m_outside.SetActive(m_windows.IsAnyVisible());
    PushLeave();
    m_events.push_back({.kind = DisplayEventKind::Hidden, .window = topLevel.Id()});
}

void X11Display::PushMoved() {
    for (const auto& [id, topLevel] : m_windows) {
        if (topLevel->SettleRect()) {
            m_events.push_back({.kind = DisplayEventKind::Moved, .window = id, .rect = topLevel->Rect()});
        }
    }
}

}  // namespace veldan
