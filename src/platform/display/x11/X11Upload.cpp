#include "platform/display/x11/X11Upload.h"

#include "platform/draw/Surface.h"

#include <algorithm>
#include <span>
#include <utility>

namespace veldan {

namespace {

// Room for several pictures of a menu; only what is used takes memory.
constexpr std::size_t kMaxSegmentBytes = std::size_t{4} << 20;
// Below this the request with the pixels in it is cheaper than the notice that shared ones were read.
constexpr std::size_t kMinSharedBytes = 8192;
// A band fits into a request of a server without big ones, and its copy stays small.
constexpr std::size_t kMaxBandBytes = 200'000;

constexpr std::uint32_t kOpaque = 0xff000000;

std::size_t RowBytes(const CRect& area) {
    return static_cast<std::size_t>(area.Width()) * sizeof(std::uint32_t);
}

// The upper rows of an area, as many as fit into `bytes`, at least one.
CRect UpperBand(const CRect& area, std::size_t bytes) {
    const auto rows = std::max<std::size_t>(bytes / RowBytes(area), 1);
    CRect band = area;
    if (rows < static_cast<std::size_t>(area.Height())) {
        band.bottom = area.top + static_cast<int>(rows);
    }
    return band;
}

}  // namespace

void CopyRows(const Surface& from, const CRect& area, std::uint8_t depth, std::uint32_t* to, std::ptrdiff_t stride) {
    for (int y = area.top; y < area.bottom; ++y, to += stride) {
        const std::span<const std::uint32_t> row(from.Row(y) + area.left, from.Row(y) + area.right);
        if (depth == 32) {
            std::ranges::transform(row, to, [](std::uint32_t pixel) { return pixel | kOpaque; });
        } else {
            std::ranges::copy(row, to);
        }
    }
}

X11Upload::X11Upload(X11Connection& connection) : m_connection(connection) {
    const std::size_t longest = std::size_t{xcb_get_maximum_request_length(m_connection.Get())} * 4;
    m_nBandBytes = std::min(kMaxBandBytes, longest - sizeof(xcb_put_image_request_t) - 4);
    for (Segment& segment : m_segments) {
        segment.memory.emplace(m_connection, kMaxSegmentBytes, X11SharedMemory::Access::Read);
    }
    m_bShared = std::ranges::all_of(m_segments, [](Segment& segment) { return segment.memory->IsAccepted(); });
    m_bSharesPixmaps = m_bShared && m_connection.Features().sharedPixmaps &&
                       X11SharedMemory(m_connection, kMinSharedBytes, X11SharedMemory::Access::Write).IsAccepted();
}

void X11Upload::Copy(const Surface& from, const CRect& area, xcb_pixmap_t to) {
    CRect rest = area;
    while (!rest.IsEmpty()) {
        const std::size_t bytes = RowBytes(rest) * static_cast<std::size_t>(rest.Height());
        Segment* segment = bytes >= kMinSharedBytes ? SegmentWithRoom(RowBytes(rest)) : nullptr;
        const CRect band = UpperBand(rest, segment != nullptr ? kMaxSegmentBytes - segment->used : m_nBandBytes);
        if (segment != nullptr) {
            CopyShared(*segment, from, band, to);
        } else {
            CopyPlain(from, band, to);
        }
        rest.top = band.bottom;
    }
}

X11Upload::Segment* X11Upload::SegmentWithRoom(std::size_t bytes) {
    if (!IsShared()) {
        return nullptr;
    }
    for (std::size_t turn = 0; turn < m_segments.size(); ++turn) {
        Segment& segment = m_segments[(m_nCurrent + turn) % m_segments.size()];
        if (segment.unread == 0) {
            segment.used = 0;
        }
        if (kMaxSegmentBytes - segment.used >= bytes) {
            m_nCurrent = (m_nCurrent + turn) % m_segments.size();
            return &segment;
        }
    }
    return nullptr;
}

void X11Upload::CopyShared(Segment& segment, const Surface& from, const CRect& band, xcb_pixmap_t to) {
    CopyRows(from, band, m_connection.Depth(),
             reinterpret_cast<std::uint32_t*>(segment.memory->Bytes().data() + segment.used), band.Width());
    const auto width = static_cast<std::uint16_t>(band.Width());
    const auto height = static_cast<std::uint16_t>(band.Height());
    xcb_shm_put_image(m_connection.Get(), to, ContextFor(to), width, height, 0, 0, width, height,
                      static_cast<std::int16_t>(band.left), static_cast<std::int16_t>(band.top), m_connection.Depth(),
                      XCB_IMAGE_FORMAT_Z_PIXMAP, 1, segment.memory->Id(), static_cast<std::uint32_t>(segment.used));
    segment.used += RowBytes(band) * static_cast<std::size_t>(band.Height());
    ++segment.unread;
}

void X11Upload::CopyPlain(const Surface& from, const CRect& band, xcb_pixmap_t to) {
    m_band.resize(static_cast<std::size_t>(band.Width()) * static_cast<std::size_t>(band.Height()));
    CopyRows(from, band, m_connection.Depth(), m_band.data(), band.Width());
    xcb_put_image(m_connection.Get(), XCB_IMAGE_FORMAT_Z_PIXMAP, to, ContextFor(to),
                  static_cast<std::uint16_t>(band.Width()), static_cast<std::uint16_t>(band.Height()),
                  static_cast<std::int16_t>(band.left), static_cast<std::int16_t>(band.top), 0, m_connection.Depth(),
                  static_cast<std::uint32_t>(m_band.size() * sizeof(std::uint32_t)),
                  reinterpret_cast<const std::uint8_t*>(m_band.data()));
}

xcb_gcontext_t X11Upload::ContextFor(xcb_pixmap_t drawable) {
    if (m_context == 0) {
        m_context = xcb_generate_id(m_connection.Get());
        xcb_create_gc(m_connection.Get(), m_context, drawable, 0, nullptr);
    }
    return m_context;
}

void X11Upload::OnCompletion(const xcb_shm_completion_event_t& event) {
    for (Segment& segment : m_segments) {
        if (segment.memory->Id() == event.shmseg && segment.unread > 0) {
            --segment.unread;
        }
    }
}

}  // namespace veldan
