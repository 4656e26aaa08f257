#include "platform/display/x11/X11DisplayImpl.h"
#include "platform/display/x11/X11PipeGuard.h"
#include "platform/display/x11/X11Xkb.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace veldan {

namespace {

template <class T>
const T& As(const xcb_generic_event_t& event) {
    return reinterpret_cast<const T&>(event);
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
    PushPresence();
    PushLeave();
    m_outside.Settle();
    PushOutside();
    PushFocus();
    PushForeignActive();
    PushMoved();
    return RoundTrips() != before;
}

void X11Display::Translate(const xcb_generic_event_t& event) {
    m_marks.OnEvent(event.full_sequence);
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
            return OnMap(As<xcb_map_notify_event_t>(event));
        case XCB_UNMAP_NOTIFY:
            return OnUnmap(As<xcb_unmap_notify_event_t>(event), event.full_sequence);
        case XCB_PROPERTY_NOTIFY:
            return OnProperty(As<xcb_property_notify_event_t>(event));
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
        if (m_outside.OnRawPress(generic, m_pointerIn != 0, m_marks.Reached())) {
            NotePress();
        }
        PushOutside();
    } else if (features.sharedMemory && type == features.sharedMemoryEvent + XCB_SHM_COMPLETION) {
        m_upload.OnCompletion(As<xcb_shm_completion_event_t>(event));
    } else if (features.keyboardMap && type == features.keyboardEvent) {
        // The second byte of a keyboard event is its kind; only kinds that tell of a new map are selected.
        m_keyboard.DropKeymap();
    }
}

void X11Display::OnConfigure(const xcb_configure_notify_event_t& event, std::uint32_t sequence) {
    if (event.window == m_connection->Root()) {
        m_screen = {event.width, event.height};
        return;
    }
    if (X11TopLevel* topLevel = m_windows.FindWindow(event.window)) {
        topLevel->OnConfigure(event, sequence);
    }
}

void X11Display::OnMap(const xcb_map_notify_event_t& event) {
    if (X11TopLevel* topLevel = m_windows.FindWindow(event.window)) {
        topLevel->OnMap();
        m_focus.OnMap(*topLevel);
    } else if (X11TopLevel* framed = m_windows.FindFramed(event.window)) {
        framed->OnManaged();
    }
}

void X11Display::OnUnmap(const xcb_unmap_notify_event_t& event, std::uint32_t sequence) {
    if (X11TopLevel* topLevel = m_windows.FindWindow(event.window)) {
        topLevel->OnUnmap(sequence);
    } else if (X11TopLevel* framed = m_windows.FindFramed(event.window)) {
        framed->OnManaged();
    }
}

void X11Display::OnProperty(const xcb_property_notify_event_t& event) {
    const auto isOneOf = [&](std::initializer_list<X11Atom> atoms) {
        return std::ranges::any_of(atoms, [&](X11Atom atom) { return event.atom == m_connection->Atom(atom); });
    };
    if (X11TopLevel* topLevel = m_windows.FindWindow(event.window)) {
        if (isOneOf({X11Atom::WmState, X11Atom::NetWmState, X11Atom::NetWmDesktop})) {
            topLevel->OnManaged();
        }
    } else if (isOneOf({X11Atom::NetActiveWindow})) {
        m_activeWindow.OnChange();
    } else if (isOneOf({X11Atom::NetCurrentDesktop})) {
        for (const auto& [id, framed] : m_windows) {
            framed->OnManaged();
        }
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
    if (event.data.data32[0] == m_connection->Atom(X11Atom::WmDeleteWindow)) {
        m_events.push_back({.kind = DisplayEventKind::CloseRequest, .window = topLevel->Id()});
    } else if (event.data.data32[0] == m_connection->Atom(X11Atom::NetWmPing)) {
        xcb_client_message_event_t answer = event;
        answer.window = m_connection->Root();
        xcb_send_event(m_connection->Get(), 0, m_connection->Root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&answer));
    }
}

void X11Display::PushPresence() {
    bool hasChanged = false;
    for (const auto& [id, topLevel] : m_windows) {
        topLevel->SettleFrame();
        const auto presence = topLevel->SettlePresence();
        hasChanged = hasChanged || presence;
        if (presence == X11Presence::Withdrawn) {
            PushHidden(*topLevel);
        } else if (presence == X11Presence::Shown) {
            m_focus.OnMap(*topLevel);
        }
    }
    if (hasChanged) {
        UpdateKeptOff();
    }
}

void X11Display::PushForeignActive() {
    if (m_activeWindow.Settle(m_focus.IsOwn())) {
        m_events.push_back({.kind = DisplayEventKind::ForeignActive});
    }
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
