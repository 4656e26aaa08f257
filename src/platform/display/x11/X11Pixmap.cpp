#include "platform/display/x11/X11Pixmap.h"

#include "platform/display/x11/X11Upload.h"
#include "platform/draw/Surface.h"

namespace veldan {

X11Pixmap::X11Pixmap(X11Connection& connection, X11Upload& upload, CSize size)
    : m_connection(connection), m_upload(upload), m_id(xcb_generate_id(connection.Get())), m_size(size) {
    const auto width = static_cast<std::uint16_t>(size.cx);
    const auto height = static_cast<std::uint16_t>(size.cy);
    if (m_upload.SharesPixmaps()) {
        m_memory = std::make_shared<X11SharedMemory>(m_connection, sizeof(std::uint32_t) * width * height,
                                                     X11SharedMemory::Access::Write);
    }
    if (m_memory && m_memory->Exists()) {
        xcb_shm_create_pixmap(m_connection.Get(), m_id, m_connection.Root(), width, height, m_connection.Depth(),
                              m_memory->Id(), 0);
        m_memory->Detach();
    } else {
        m_memory.reset();
        xcb_create_pixmap(m_connection.Get(), m_connection.Depth(), m_id, m_connection.Root(), width, height);
    }
}

X11Pixmap::~X11Pixmap() {
    xcb_free_pixmap(m_connection.Get(), m_id);
}

std::shared_ptr<Surface> X11Pixmap::MakeSurface() const {
    if (!m_memory || m_connection.Depth() == 32) {
        return nullptr;
    }
    return std::make_shared<Surface>(m_size.cx, m_size.cy, std::shared_ptr<std::uint32_t[]>(m_memory, Pixels()));
}

void X11Pixmap::Copy(const Surface& from, const CRect& area) {
    if (!m_memory) {
        m_upload.Copy(from, area, m_id);
    } else if (from.Row(0) != Pixels()) {
        // The server may show a part of the picture meanwhile. What is seen then is half old, half new, and whole with
        // the request that follows.
        std::uint32_t* to = Pixels() + std::ptrdiff_t{area.top} * m_size.cx + area.left;
        CopyRows(from, area, m_connection.Depth(), to, m_size.cx);
    }
}

}  // namespace veldan
