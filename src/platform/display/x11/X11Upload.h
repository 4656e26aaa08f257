#pragma once

#include "platform/display/x11/X11SharedMemory.h"

#include <array>
#include <optional>
#include <vector>

namespace veldan {

class Surface;

/// Copies an area row by row to where rows lie `stride` pixels apart. Pictures of 32 bits get the alpha of every pixel
/// at its most; others have none.
void CopyRows(const Surface& from, const CRect& area, std::uint8_t depth, std::uint32_t* to, std::ptrdiff_t stride);

/// Hands pixels over to pixmaps of the server, all opaque. It never waits: pixels go through two pieces of shared
/// memory, each drawn into again only after the server has told that it has read it, and through the connection itself
/// while there is no such memory or both pieces are in the server's hands.
class X11Upload {
public:
    explicit X11Upload(X11Connection& connection);
    X11Upload(const X11Upload&) = delete;
    X11Upload& operator=(const X11Upload&) = delete;

    /// Copies `area`, which lies within the surface, to the same place of a pixmap of the connection's depth.
    void Copy(const Surface& from, const CRect& area, xcb_pixmap_t to);
    /// The server has read one picture of the piece.
    void OnCompletion(const xcb_shm_completion_event_t& event);
    /// Whether pixels go through shared memory at all.
    [[nodiscard]] bool IsShared() const { return m_bShared; }
    /// Whether the server lets whole pictures lie in shared memory, and takes memory that it may write to.
    [[nodiscard]] bool SharesPixmaps() const { return m_bSharesPixmaps; }

private:
    struct Segment {
        std::optional<X11SharedMemory> memory;
        std::size_t used = 0;
        int unread = 0;  // pictures in it that the server has yet to read
    };

    [[nodiscard]] Segment* SegmentWithRoom(std::size_t bytes);
    void CopyShared(Segment& segment, const Surface& from, const CRect& band, xcb_pixmap_t to);
    void CopyPlain(const Surface& from, const CRect& band, xcb_pixmap_t to);
    xcb_gcontext_t ContextFor(xcb_pixmap_t drawable);

    X11Connection& m_connection;
    std::array<Segment, 2> m_segments;
    std::size_t m_nCurrent = 0;
    bool m_bShared = false;
    bool m_bSharesPixmaps = false;
    xcb_gcontext_t m_context = 0;
    std::size_t m_nBandBytes;
    std::vector<std::uint32_t> m_band;
};

}  // namespace veldan
