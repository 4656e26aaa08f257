#include "platform/display/x11/X11Cursors.h"

namespace veldan {

namespace {

// In the order of CursorShape.
constexpr std::array<const char*, 4> kNames = {"left_ptr", "watch", "hand2", "xterm"};

}  // namespace

X11Cursors::~X11Cursors() {
    if (m_context != nullptr) {
        xcb_cursor_context_free(m_context);
    }
}

xcb_cursor_t X11Cursors::Get(CursorShape shape) {
    const auto index = static_cast<std::size_t>(shape);
    if (m_cursors[index] != 0) {
        return m_cursors[index];
    }
    if (!m_bTriedContext) {
        m_bTriedContext = true;
        m_connection.CountWait();
        if (xcb_cursor_context_new(m_connection.Get(), m_connection.Screen(), &m_context) < 0) {
            m_context = nullptr;
        }
    }
    if (m_context != nullptr) {
        m_cursors[index] = xcb_cursor_load_cursor(m_context, kNames[index]);
    }
    return m_cursors[index];
}

}  // namespace veldan
