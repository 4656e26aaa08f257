#pragma once

#include "platform/display/x11/X11Connection.h"

namespace veldan {

/// Whether a window that was mapped is on the screen.
enum class X11Presence {
    Shown,
    KeptOff,   ///< A window manager keeps it off the screen: as an icon or on another desktop.
    Withdrawn  ///< It is unmapped, and no manager means to map it again.
};

/// Asks the server, and waits for its answers.
[[nodiscard]] X11Presence QueryPresence(X11Connection& connection, xcb_window_t window);

}  // namespace veldan
