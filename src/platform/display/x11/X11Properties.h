#pragma once

#include "platform/display/Display.h"
#include "platform/display/x11/X11Connection.h"

#include <span>
#include <string>
#include <string_view>

namespace veldan {

/// The protocol's sides and coordinates are 16 bits wide, and it has no empty windows: what would be one stands as a
/// single pixel.
[[nodiscard]] std::uint16_t X11Side(int length);
[[nodiscard]] std::int16_t X11Coordinate(int position);

/// What a window tells window managers, desktops and tools about itself. Only refers to the window.
class X11Properties {
public:
    X11Properties(X11Connection& connection, xcb_window_t window) : m_connection(connection), m_window(window) {}

    void SetTitle(const std::string& title);
    void SetType(TopLevelType type);
    void SetOwner(xcb_window_t owner);
    /// Name and class alike.
    void SetClass(std::string_view name);
    /// This process and the machine that it runs on.
    void SetProcess();
    /// Sizes and their pixels, as MakeDefaultIcon gives them.
    void SetIcon(std::span<const std::uint32_t> icon);
    /// What a window manager may ask for, and whether it may give the window the keyboard focus.
    void SetProtocols(bool takesFocus);
    /// Where a managed window is to be, whatever the manager puts around it.
    void SetPlace(const CRect& rect, CSize smallest);

private:
    void Set(xcb_atom_t property, xcb_atom_t type, std::span<const std::uint32_t> values);
    void SetText(xcb_atom_t property, xcb_atom_t type, std::string_view text);

    X11Connection& m_connection;
    xcb_window_t m_window;
};

}  // namespace veldan
