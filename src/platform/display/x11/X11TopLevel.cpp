#include "platform/display/x11/X11TopLevel.h"

#include "platform/display/x11/X11Icon.h"
#include "platform/display/x11/X11Upload.h"
#include "platform/draw/Region.h"
#include "platform/draw/Surface.h"

#include <xcb/shape.h>

#include <cerrno>
#include <utility>

namespace veldan {

namespace {

constexpr const char* kLibraryClass = "veldan";
constexpr std::uint32_t kBlack = 0xff000000;

constexpr std::uint32_t kEvents =
    XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW | XCB_EVENT_MASK_POINTER_MOTION |
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_KEY_PRESS |
    XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;

// Whether an event was sent before the server knew of a request. The numbers may have gone round.
bool IsBefore(std::uint32_t event, std::uint32_t request) {
    return static_cast<std::int32_t>(event - request) < 0;
}

}  // namespace

X11TopLevel::X11TopLevel(X11Connection& connection, TopLevelId id, const TopLevelTraits& traits, const CRect& rect)
    : m_connection(connection), m_id(id), m_traits(traits), m_rcPlace(rect) {
    Create();
}

X11TopLevel::~X11TopLevel() {
    xcb_destroy_window(m_connection.Get(), m_window);
}

void X11TopLevel::Recreate() {
    m_bVisible = false;
    m_bViewable = false;
    m_bPresenceDoubtful = false;
    m_frame = 0;
    m_place = Place::Known;
    Create();
    if (m_pixmap) {
        const xcb_pixmap_t background = m_pixmap->Id();
        xcb_change_window_attributes(m_connection.Get(), m_window, XCB_CW_BACK_PIXMAP, &background);
    }
}

void X11TopLevel::Create() {
    m_window = xcb_generate_id(m_connection.Get());
    xcb_create_window_value_list_t values{};
    values.background_pixel = kBlack;
    values.border_pixel = kBlack;
    values.bit_gravity = XCB_GRAVITY_NORTH_WEST;
    values.override_redirect = m_traits.managed ? 0 : 1;
    values.event_mask = kEvents | (m_traits.managed ? std::uint32_t{XCB_EVENT_MASK_PROPERTY_CHANGE} : 0U);
    values.colormap = m_connection.Colormap();
    xcb_create_window_aux(m_connection.Get(), m_connection.Depth(), m_window, m_connection.Root(),
                          X11Coordinate(m_rcPlace.left), X11Coordinate(m_rcPlace.top), X11Side(m_rcPlace.Width()),
                          X11Side(m_rcPlace.Height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, m_connection.Visual(),
                          XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_BIT_GRAVITY | XCB_CW_OVERRIDE_REDIRECT |
                              XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                          &values);
    if (m_traits.letsInputThrough && m_connection.Features().inputShapes) {
        xcb_shape_rectangles(m_connection.Get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                             m_window, 0, 0, 0, nullptr);
    }
    SetHints();
}

void X11TopLevel::SetHints() {
    X11Properties properties = Properties();
    properties.SetTitle(m_traits.title);
    properties.SetType(m_traits.type);
    properties.SetProcess();
    if (!m_traits.managed) {
        properties.SetClass(kLibraryClass);
        return;
    }
    // What a manager shows beside other programs stands for the host, not for the library.
    properties.SetClass(program_invocation_short_name);
    properties.SetIcon(MakeDefaultIcon());
    properties.SetProtocols(m_traits.takesFocus);
    properties.SetPlace(m_rcPlace, m_traits.smallest);
}

void X11TopLevel::SetTitle(const std::string& title) {
    m_traits.title = title;
    Properties().SetTitle(title);
}

void X11TopLevel::SetRect(const CRect& rect) {
    m_rcPlace = rect;
    m_place = Place::Known;
    if (m_traits.managed) {
        Properties().SetPlace(rect, m_traits.smallest);
    }
    xcb_configure_window_value_list_t values{};
    values.x = X11Coordinate(rect.left);
    values.y = X11Coordinate(rect.top);
    values.width = X11Side(rect.Width());
    values.height = X11Side(rect.Height());
    const auto cookie = xcb_configure_window_aux(
        m_connection.Get(), m_window,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, &values);
    m_nPlacedAt = cookie.sequence;
}

void X11TopLevel::SetVisible(bool visible) {
    if (m_bVisible == visible) {
        return;
    }
    m_bVisible = visible;
    if (m_traits.managed) {
        m_bKeptOff = false;
    }
    if (!m_bKeptOff) {
        SetMapped(visible);
    }
}

void X11TopLevel::KeepOff(bool keepOff) {
    if (std::exchange(m_bKeptOff, keepOff) != keepOff && m_bVisible) {
        SetMapped(!keepOff);
    }
}

void X11TopLevel::SetMapped(bool mapped) {
    m_bViewable = false;
    m_bSeen = false;
    m_bPresenceDoubtful = false;
    if (mapped) {
        m_nMappedAt = xcb_map_window(m_connection.Get(), m_window).sequence;
        return;
    }
    xcb_unmap_window(m_connection.Get(), m_window);
    if (m_traits.managed) {
        TellManagerOfUnmap();
    }
}

// Also where the manager has unmapped the window itself, as for an icon.
void X11TopLevel::TellManagerOfUnmap() {
    xcb_unmap_notify_event_t notice{};
    notice.response_type = XCB_UNMAP_NOTIFY;
    notice.event = m_connection.Root();
    notice.window = m_window;
    xcb_send_event(m_connection.Get(), 0, m_connection.Root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&notice));
}

void X11TopLevel::Restack(xcb_stack_mode_t mode, xcb_window_t sibling) {
    xcb_configure_window_value_list_t values{};
    values.sibling = sibling;
    values.stack_mode = mode;
    const std::uint16_t named = sibling != 0 ? XCB_CONFIG_WINDOW_SIBLING : 0;
    xcb_configure_window_aux(m_connection.Get(), m_window,
                             static_cast<std::uint16_t>(named | XCB_CONFIG_WINDOW_STACK_MODE), &values);
}

void X11TopLevel::SetCursor(xcb_cursor_t cursor) {
    xcb_change_window_attributes(m_connection.Get(), m_window, XCB_CW_CURSOR, &cursor);
}

void X11TopLevel::MakePixmap(X11Upload& upload, CSize size) {
    m_pixmap.emplace(m_connection, upload, size);
    m_bPixmapNew = true;
}

std::shared_ptr<Surface> X11TopLevel::MakeSurface(X11Upload& upload, CSize size) {
    if (size.cx <= 0 || size.cy <= 0) {
        return nullptr;
    }
    MakePixmap(upload, size);
    return m_pixmap->MakeSurface();
}

void X11TopLevel::Present(X11Upload& upload, const Surface& pixels, const Region& dirty) {
    if (pixels.Bounds().IsEmpty()) {
        return;
    }
    Region area = dirty;
    if (!m_pixmap || m_pixmap->Size() != pixels.Bounds().Size()) {
        MakePixmap(upload, pixels.Bounds().Size());
    }
    if (std::exchange(m_bPixmapNew, false)) {
        area = Region(pixels.Bounds());
    }
    area.Intersect(pixels.Bounds());
    const auto rects = area.Rects();
    if (rects.empty()) {
        return;
    }
    for (const CRect& rect : rects) {
        m_pixmap->Copy(pixels, rect);
    }
    // As a background the pixels come back by themselves after each uncovering. It is set anew each time, since the
    // protocol leaves open whether a window shows what was drawn on its background afterwards.
    const xcb_pixmap_t background = m_pixmap->Id();
    xcb_change_window_attributes(m_connection.Get(), m_window, XCB_CW_BACK_PIXMAP, &background);
    if (!IsOnScreen()) {
        return;
    }
    for (const CRect& rect : rects) {
        xcb_clear_area(m_connection.Get(), 0, m_window, X11Coordinate(rect.left), X11Coordinate(rect.top),
                       X11Side(rect.Width()), X11Side(rect.Height()));
    }
}

void X11TopLevel::OnReparent(const xcb_reparent_notify_event_t& event) {
    if (!m_traits.managed) {
        return;
    }
    m_frame = event.parent == m_connection.Root() ? 0 : event.parent;
    m_bFrameNew = m_frame != 0;
    if (m_place == Place::Known) {
        m_rcTold = m_rcPlace;
    }
    m_place = Place::Asked;
}

void X11TopLevel::OnConfigure(const xcb_configure_notify_event_t& event, std::uint32_t sequence) {
    // What the server said before it knew of the last order to place the window is out of date.
    if (!m_traits.managed || IsBefore(sequence, m_nPlacedAt)) {
        return;
    }
    m_rcTold = CRect::FromSize({event.x, event.y}, {event.width, event.height});
    // Within a manager's frame only a notice of the manager's own speaks of places on the screen.
    const bool isOfManager = (event.response_type & 0x80) != 0;
    m_place = m_frame == 0 || isOfManager ? Place::Told : Place::Asked;
}

void X11TopLevel::OnMap() {
    m_bViewable = WantsMapped();
    OnManaged();
}

void X11TopLevel::OnUnmap(std::uint32_t sequence) {
    // What comes of an own request was told before the server knew of the latest one to map the window.
    m_bPresenceDoubtful = m_bPresenceDoubtful || (m_bViewable && !IsBefore(sequence, m_nMappedAt));
}

void X11TopLevel::SettleFrame() {
    if (!std::exchange(m_bFrameNew, false)) {
        return;
    }
    // Some managers put a window into several of theirs.
    for (;;) {
        const auto tree = m_connection.Ask<&xcb_query_tree_reply>(xcb_query_tree(m_connection.Get(), m_frame));
        if (!tree || tree->parent == tree->root || tree->parent == XCB_NONE) {
            break;
        }
        m_frame = tree->parent;
    }
    // Some keep the window off the screen by unmapping theirs only.
    constexpr std::uint32_t kFrameEvents = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection.Get(), m_frame, XCB_CW_EVENT_MASK, &kFrameEvents);
    m_bPresenceDoubtful = true;
}

std::optional<X11Presence> X11TopLevel::SettlePresence() {
    // Before the server has mapped it, and a manager its frame, nobody keeps the window off.
    if (!m_bViewable || !std::exchange(m_bPresenceDoubtful, false)) {
        return std::nullopt;
    }
    const X11Presence presence = QueryPresence(m_connection, m_window);
    if (presence == X11Presence::Withdrawn) {
        m_bVisible = false;
        m_bViewable = false;
        m_bKeptOff = m_bKeptOff && !m_traits.managed;
        return presence;
    }
    m_bSeen = m_bSeen || presence == X11Presence::Shown;
    const bool keptOff = presence == X11Presence::KeptOff && m_bSeen;
    if (!m_traits.managed || std::exchange(m_bKeptOff, keptOff) == keptOff) {
        return std::nullopt;
    }
    return presence;
}

bool X11TopLevel::SettleRect() {
    const Place place = std::exchange(m_place, Place::Known);
    if (place == Place::Known) {
        return false;
    }
    if (place == Place::Asked) {
        const auto reply = m_connection.Ask<&xcb_translate_coordinates_reply>(
            xcb_translate_coordinates(m_connection.Get(), m_window, m_connection.Root(), 0, 0));
        if (!reply) {
            return false;
        }
        m_rcTold = CRect::FromSize({reply->dst_x, reply->dst_y}, m_rcTold.Size());
    }
    if (m_rcTold == m_rcPlace) {
        return false;
    }
    m_rcPlace = m_rcTold;
    return true;
}

}  // namespace veldan
