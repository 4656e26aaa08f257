#include "platform/display/x11/X11Properties.h"

#include <unistd.h>
#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <array>
#include <climits>

namespace veldan {

namespace {

X11Atom AtomOf(TopLevelType type) {
    switch (type) {
        case TopLevelType::Dialog:
            return X11Atom::NetWmWindowTypeDialog;
        case TopLevelType::PopupMenu:
            return X11Atom::NetWmWindowTypePopupMenu;
        case TopLevelType::ComboList:
            return X11Atom::NetWmWindowTypeCombo;
        case TopLevelType::ToolTip:
            return X11Atom::NetWmWindowTypeTooltip;
        case TopLevelType::Normal:
            break;
    }
    return X11Atom::NetWmWindowTypeNormal;
}

}  // namespace

std::uint16_t X11Side(int length) {
    return static_cast<std::uint16_t>(std::clamp(length, 1, SHRT_MAX));
}

std::int16_t X11Coordinate(int position) {
    return static_cast<std::int16_t>(std::clamp(position, SHRT_MIN, SHRT_MAX));
}

void X11Properties::Set(xcb_atom_t property, xcb_atom_t type, std::span<const std::uint32_t> values) {
    xcb_change_property(m_connection.Get(), XCB_PROP_MODE_REPLACE, m_window, property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

void X11Properties::SetText(xcb_atom_t property, xcb_atom_t type, std::string_view text) {
    xcb_change_property(m_connection.Get(), XCB_PROP_MODE_REPLACE, m_window, property, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

void X11Properties::SetTitle(const std::string& title) {
    const xcb_atom_t utf8 = m_connection.Atom(X11Atom::Utf8String);
    SetText(XCB_ATOM_WM_NAME, utf8, title);
    SetText(m_connection.Atom(X11Atom::NetWmName), utf8, title);
}

void X11Properties::SetType(TopLevelType type) {
    Set(m_connection.Atom(X11Atom::NetWmWindowType), XCB_ATOM_ATOM, std::array{m_connection.Atom(AtomOf(type))});
}

void X11Properties::SetOwner(xcb_window_t owner) {
    Set(XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, std::array{owner});
}

void X11Properties::SetClass(std::string_view name) {
    const std::string zeroEnded = std::string(name) + '\0';
    SetText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, zeroEnded + zeroEnded);
}

void X11Properties::SetProcess() {
    std::array<char, HOST_NAME_MAX + 1> machine{};
    if (gethostname(machine.data(), machine.size() - 1) != 0) {
        return;
    }
    // A process number says something only beside the machine that it counts on.
    SetText(XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING, machine.data());
    Set(m_connection.Atom(X11Atom::NetWmPid), XCB_ATOM_CARDINAL, std::array{static_cast<std::uint32_t>(getpid())});
}

void X11Properties::SetIcon(std::span<const std::uint32_t> icon) {
    Set(m_connection.Atom(X11Atom::NetWmIcon), XCB_ATOM_CARDINAL, icon);
}

void X11Properties::SetProtocols(bool takesFocus) {
    Set(m_connection.Atom(X11Atom::WmProtocols), XCB_ATOM_ATOM,
        std::array{m_connection.Atom(X11Atom::WmDeleteWindow), m_connection.Atom(X11Atom::NetWmPing)});
    xcb_icccm_wm_hints_t hints{};
    xcb_icccm_wm_hints_set_input(&hints, takesFocus ? 1 : 0);
    xcb_icccm_set_wm_hints(m_connection.Get(), m_window, &hints);
}

void X11Properties::SetPlace(const CRect& rect, CSize smallest) {
    xcb_size_hints_t hints{};
    xcb_icccm_size_hints_set_position(&hints, 1, rect.left, rect.top);
    xcb_icccm_size_hints_set_size(&hints, 1, X11Side(rect.Width()), X11Side(rect.Height()));
    xcb_icccm_size_hints_set_min_size(&hints, X11Side(smallest.cx), X11Side(smallest.cy));
    // The rectangle is that of the window itself, whatever the manager puts around it.
    xcb_icccm_size_hints_set_win_gravity(&hints, XCB_GRAVITY_STATIC);
    hints.flags |= XCB_ICCCM_SIZE_HINT_P_POSITION | XCB_ICCCM_SIZE_HINT_P_SIZE;
    xcb_icccm_set_wm_normal_hints(m_connection.Get(), m_window, &hints);
}

}  // namespace veldan
