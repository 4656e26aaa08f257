#pragma once

#include "platform/display/Display.h"
#include "platform/display/x11/X11Connection.h"

#include <xcb/xcb_cursor.h>

#include <array>

namespace veldan {

/// The pointer shapes of the person's theme, each loaded when first shown.
class X11Cursors {
public:
    explicit X11Cursors(X11Connection& connection) : m_connection(connection) {}
    ~X11Cursors();
    X11Cursors(const X11Cursors&) = delete;
    X11Cursors& operator=(const X11Cursors&) = delete;

    /// 0, the shape of the window below, where the server has no such cursor.
    [[nodiscard]] xcb_cursor_t Get(CursorShape shape);

private:
    X11Connection& m_connection;
    xcb_cursor_context_t* m_context = nullptr;
    bool m_bTriedContext = false;
    std::array<xcb_cursor_t, 4> m_cursors{};
};

}  // namespace veldan
