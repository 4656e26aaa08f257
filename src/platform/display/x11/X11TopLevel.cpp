#include "platform/display/x11/X11TopLevel.h"

#include "platform/display/x11/X11Upload.h"
#include "platform/draw/Region.h"
#include "platform/draw/Surface.h"

#include <xcb/shape.h>
#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace veldan {

namespace {

constexpr std::string_view kClass{"veldan\0veldan\0", 14};  // instance and class, each with its final zero
constexpr std::uint32_t kBlack = 0xff000000;

constexpr std::uint32_t kEvents =
    XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW | XCB_EVENT_MASK_POINTER_MOTION |
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_KEY_PRESS |
    XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;

// The protocol has no empty windows; what would be one stands as a single pixel.
std::uint16_t Side(int length) {
    return static_cast<std::uint16_t>(std::clamp(length, 1, 32767));
}

// Whether an event was sent before the server knew of a request. The numbers may have gone round.
bool IsBefore(std::uint32_t event, std::uint32_t request) {
    return static_cast<std::int32_t>(event - request) < 0;
}

std::int16_t Coordinate(int position) {
    return static_cast<std::int16_t>(std::clamp(position, -32768, 32767));
}

}  // namespace

X11TopLevel::X11TopLevel(X11Connection& connection, TopLevelId id, const TopLevelTraits& traits, const CRect& rect)
    : m_connection(connection),
      m_id(id),
      m_kind(traits.kind),
      m_owner(traits.owner),
      m_strTitle(traits.title),
      m_szSmallest(traits.smallest),
      m_rcPlace(rect) {
    Create();
}

X11TopLevel::~X11TopLevel() {
    xcb_destroy_window(m_connection.Get(), m_window);
}

void X11TopLevel::Recreate() {
    m_bVisible = false;
    m_bViewable = false;
    m_bMayBeUnmapped = false;
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
    values.override_redirect = IsManaged() ? 0 : 1;
    values.event_mask = kEvents;
    values.colormap = m_connection.Colormap();
    xcb_create_window_aux(m_connection.Get(), m_connection.Depth(), m_window, m_connection.Root(),
                          Coordinate(m_rcPlace.left), Coordinate(m_rcPlace.top), Side(m_rcPlace.Width()),
                          Side(m_rcPlace.Height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, m_connection.Visual(),
                          XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_BIT_GRAVITY | XCB_CW_OVERRIDE_REDIRECT |
                              XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                          &values);
    if (m_kind == TopLevelKind::ToolTip && m_connection.Features().inputShapes) {
        xcb_shape_rectangles(m_connection.Get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                             m_window, 0, 0, 0, nullptr);
    }
    SetHints();
    SetTitle(m_strTitle);
}

void X11TopLevel::SetHints() {
    xcb_icccm_set_wm_class(m_connection.Get(), m_window, kClass.size(), kClass.data());
    switch (m_kind) {
        case TopLevelKind::Frame:
            SetAtom(X11Atom::NetWmWindowType, X11Atom::NetWmWindowTypeNormal);
            break;
        case TopLevelKind::Popup:
            SetAtom(X11Atom::NetWmWindowType, X11Atom::NetWmWindowTypePopupMenu);
            break;
        case TopLevelKind::ToolTip:
            SetAtom(X11Atom::NetWmWindowType, X11Atom::NetWmWindowTypeTooltip);
            break;
    }
    if (!IsManaged()) {
        return;
    }
    xcb_atom_t deletion = m_connection.Atom(X11Atom::WmDeleteWindow);
    xcb_icccm_set_wm_protocols(m_connection.Get(), m_window, m_connection.Atom(X11Atom::WmProtocols), 1, &deletion);
    xcb_icccm_wm_hints_t hints{};
    xcb_icccm_wm_hints_set_input(&hints, 1);
    xcb_icccm_set_wm_hints(m_connection.Get(), m_window, &hints);
    SetSizeHints();
}

void X11TopLevel::SetSizeHints() {
    xcb_size_hints_t hints{};
    xcb_icccm_size_hints_set_position(&hints, 1, m_rcPlace.left, m_rcPlace.top);
    xcb_icccm_size_hints_set_size(&hints, 1, Side(m_rcPlace.Width()), Side(m_rcPlace.Height()));
    xcb_icccm_size_hints_set_min_size(&hints, Side(m_szSmallest.cx), Side(m_szSmallest.cy));
    // The rectangle is that of the window itself, whatever the manager puts around it.
    xcb_icccm_size_hints_set_win_gravity(&hints, XCB_GRAVITY_STATIC);
    hints.flags |= XCB_ICCCM_SIZE_HINT_P_POSITION | XCB_ICCCM_SIZE_HINT_P_SIZE;
    xcb_icccm_set_wm_normal_hints(m_connection.Get(), m_window, &hints);
}

void X11TopLevel::SetAtom(X11Atom property, X11Atom value) {
    const xcb_atom_t atom = m_connection.Atom(value);
    xcb_change_property(m_connection.Get(), XCB_PROP_MODE_REPLACE, m_window, m_connection.Atom(property), XCB_ATOM_ATOM,
                        32, 1, &atom);
}

void X11TopLevel::SetOwnerHint(xcb_window_t owner) {
    xcb_icccm_set_wm_transient_for(m_connection.Get(), m_window, owner);
}

void X11TopLevel::SetTitle(const std::string& title) {
    m_strTitle = title;
    const auto length = static_cast<std::uint32_t>(title.size());
    const xcb_atom_t utf8 = m_connection.Atom(X11Atom::Utf8String);
    for (const xcb_atom_t property : {xcb_atom_t{XCB_ATOM_WM_NAME}, m_connection.Atom(X11Atom::NetWmName)}) {
        xcb_change_property(m_connection.Get(), XCB_PROP_MODE_REPLACE, m_window, property, utf8, 8, length,
                            title.data());
    }
}

void X11TopLevel::SetRect(const CRect& rect) {
    m_rcPlace = rect;
    m_place = Place::Known;
    if (IsManaged()) {
        SetSizeHints();
    }
    xcb_configure_window_value_list_t values{};
    values.x = Coordinate(rect.left);
    values.y = Coordinate(rect.top);
    values.width = Side(rect.Width());
    values.height = Side(rect.Height());
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
    m_bViewable = false;
    if (visible) {
        m_nMappedAt = xcb_map_window(m_connection.Get(), m_window).sequence;
        return;
    }
    xcb_unmap_window(m_connection.Get(), m_window);
    if (!IsManaged()) {
        return;
    }
    // Tells the manager also when it has unmapped the window itself, as for an icon.
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
    if (!m_bVisible) {
        return;
    }
    for (const CRect& rect : rects) {
        xcb_clear_area(m_connection.Get(), 0, m_window, Coordinate(rect.left), Coordinate(rect.top), Side(rect.Width()),
                       Side(rect.Height()));
    }
}

void X11TopLevel::OnReparent(const xcb_reparent_notify_event_t& event) {
    m_frame = event.parent == m_connection.Root() ? 0 : event.parent;
    if (m_place == Place::Known) {
        m_rcTold = m_rcPlace;
    }
    m_place = Place::Asked;
}

void X11TopLevel::OnConfigure(const xcb_configure_notify_event_t& event, std::uint32_t sequence) {
    // What the server said before it knew of the last order to place the window is out of date.
    if (IsBefore(sequence, m_nPlacedAt)) {
        return;
    }
    m_rcTold = CRect::FromSize({event.x, event.y}, {event.width, event.height});
    // Within a manager's frame only a notice of the manager's own speaks of places on the screen.
    const bool isOfManager = (event.response_type & 0x80) != 0;
    m_place = m_frame == 0 || isOfManager ? Place::Told : Place::Asked;
}

void X11TopLevel::OnUnmap(std::uint32_t sequence) {
    // What comes of our own request was told before the server knew of the latest one to map it.
    if (m_bVisible && m_frame == 0 && !IsBefore(sequence, m_nMappedAt)) {
        m_bMayBeUnmapped = true;
    }
}

bool X11TopLevel::SettleHidden() {
    if (!std::exchange(m_bMayBeUnmapped, false) || !m_bVisible) {
        return false;
    }
    // A manager that takes a window in hand unmaps it for a moment.
    const auto reply =
        m_connection.Ask<&xcb_get_window_attributes_reply>(xcb_get_window_attributes(m_connection.Get(), m_window));
    if (!reply || reply->map_state != XCB_MAP_STATE_UNMAPPED) {
        return false;
    }
    m_bVisible = false;
    m_bViewable = false;
    return true;
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
