#pragma once

#include "platform/display/x11/X11SharedMemory.h"

#include <memory>

namespace veldan {

class Surface;
class X11Upload;

/// The pixels of one window on the server's side, all opaque. Where the server lets a picture lie in shared memory they
/// are written right there, which saves it a copy of its own.
class X11Pixmap {
public:
    X11Pixmap(X11Connection& connection, X11Upload& upload, CSize size);
    ~X11Pixmap();
    X11Pixmap(const X11Pixmap&) = delete;
    X11Pixmap& operator=(const X11Pixmap&) = delete;

    [[nodiscard]] xcb_pixmap_t Id() const { return m_id; }
    [[nodiscard]] CSize Size() const { return m_size; }

    /// A surface on the picture's own pixels; null where they can't be reached, or need their alpha set.
    [[nodiscard]] std::shared_ptr<Surface> MakeSurface() const;
    /// Takes over the pixels in `area`, which lies within the surface; the surface is as large as the picture. Never
    /// waits.
    void Copy(const Surface& from, const CRect& area);

private:
    [[nodiscard]] std::uint32_t* Pixels() const { return reinterpret_cast<std::uint32_t*>(m_memory->Bytes().data()); }

    X11Connection& m_connection;
    X11Upload& m_upload;
    xcb_pixmap_t m_id;
    CSize m_size;
    std::shared_ptr<X11SharedMemory> m_memory;  // null where the picture is the server's alone
};

}  // namespace veldan
