#pragma once

#include "platform/display/x11/X11SharedMemory.h"

#include <optional>

namespace veldan {

class Surface;
class X11Upload;

/// The pixels of one window on the server's side, all opaque. Where the server lets a picture lie in shared memory they
/// are written right there, which saves it a copy of its own.
class X11Pixmap {
public:
    X11Pixmap(X11Connection& connection, X11Upload& upload, xcb_window_t window, CSize size);
    ~X11Pixmap();
    X11Pixmap(const X11Pixmap&) = delete;
    X11Pixmap& operator=(const X11Pixmap&) = delete;

    [[nodiscard]] xcb_pixmap_t Id() const { return m_id; }
    [[nodiscard]] CSize Size() const { return m_size; }

    /// Takes over the pixels in `area`, which lies within the surface; the surface is as large as the picture. Never
    /// waits.
    void Copy(const Surface& from, const CRect& area);

private:
    X11Connection& m_connection;
    X11Upload& m_upload;
    xcb_pixmap_t m_id;
    CSize m_size;
    std::optional<X11SharedMemory> m_memory;
};

}  // namespace veldan
