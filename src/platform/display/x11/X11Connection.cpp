#include "platform/display/x11/X11Connection.h"

#include "platform/display/x11/X11Xkb.h"

#include <sys/socket.h>
#include <xcb/bigreq.h>
#include <xcb/shape.h>
#include <xcb/shm.h>
#include <xcb/xcbext.h>
#include <xcb/xinput.h>

#include <bit>
#include <string>
#include <string_view>

namespace veldan {

namespace {

// In the order of X11Atom.
constexpr std::array<std::string_view, static_cast<std::size_t>(X11Atom::Count)> kAtomNames = {
    "WM_PROTOCOLS",
    "WM_DELETE_WINDOW",
    "_NET_WM_NAME",
    "UTF8_STRING",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_COMBO",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_PID",
    "_NET_WM_ICON",
    "_NET_WM_PING",
    "WM_STATE",
    "_NET_WM_STATE",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_DESKTOP",
    "_NET_CURRENT_DESKTOP",
    "_NET_ACTIVE_WINDOW",
};

xcb_screen_t* ScreenAt(const xcb_setup_t* setup, int number) {
    auto it = xcb_setup_roots_iterator(setup);
    while (number-- > 0 && it.rem > 1) {
        xcb_screen_next(&it);
    }
    return it.rem > 0 ? it.data : nullptr;
}

// Pixels go to the server as they lie in memory.
bool TakesOurPixels(const xcb_setup_t* setup, std::uint8_t depth) {
    const auto order =
        std::endian::native == std::endian::little ? XCB_IMAGE_ORDER_LSB_FIRST : XCB_IMAGE_ORDER_MSB_FIRST;
    if (setup->image_byte_order != order) {
        return false;
    }
    for (auto it = xcb_setup_pixmap_formats_iterator(setup); it.rem > 0; xcb_format_next(&it)) {
        if (it.data->depth == depth) {
            return it.data->bits_per_pixel == 32 && it.data->scanline_pad == 32;
        }
    }
    return false;
}

bool HasOurColours(const xcb_visualtype_t& visual) {
    return visual._class == XCB_VISUAL_CLASS_TRUE_COLOR && visual.red_mask == 0xff0000 && visual.green_mask == 0xff00 &&
           visual.blue_mask == 0xff;
}

// The root's visual if it fits and has this depth, else the first that does, 0 where there is none.
xcb_visualid_t VisualOf(const xcb_screen_t* screen, std::uint8_t depth) {
    xcb_visualid_t best = 0;
    for (auto it = xcb_screen_allowed_depths_iterator(screen); it.rem > 0; xcb_depth_next(&it)) {
        if (it.data->depth != depth) {
            continue;
        }
        for (auto visual = xcb_depth_visuals_iterator(it.data); visual.rem > 0; xcb_visualtype_next(&visual)) {
            const xcb_visualid_t id = visual.data->visual_id;
            if (HasOurColours(*visual.data) && (best == 0 || id == screen->root_visual)) {
                best = id;
            }
        }
    }
    return best;
}

bool IsLocal(int descriptor) {
    sockaddr_storage address{};
    socklen_t length = sizeof address;
    const int result = getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length);
    return result == 0 && address.ss_family == AF_UNIX;
}

bool IsAtLeast(int major, int minor, int wantedMajor, int wantedMinor) {
    return major > wantedMajor || (major == wantedMajor && minor >= wantedMinor);
}

}  // namespace

std::unique_ptr<X11Connection> X11Connection::Open(const char* displayName) {
    int number = 0;
    xcb_connection_t* connection = xcb_connect(displayName, &number);
    xcb_screen_t* screen =
        xcb_connection_has_error(connection) == 0 ? ScreenAt(xcb_get_setup(connection), number) : nullptr;
    if (screen == nullptr) {
        xcb_disconnect(connection);
        return nullptr;
    }
    std::unique_ptr<X11Connection> opened(new X11Connection(connection, number, screen));
    opened->QueryExtensions();
    opened->QueryVersions();
    return opened->ChooseVisual() && opened->IsAlive() ? std::move(opened) : nullptr;
}

X11Connection::X11Connection(xcb_connection_t* connection, int screenNumber, xcb_screen_t* screen)
    : m_connection(connection), m_nScreen(screenNumber), m_screen(screen) {}

X11Connection::~X11Connection() {
    xcb_disconnect(m_connection);
}

X11Owned<xcb_generic_error_t> X11Connection::Check(xcb_void_cookie_t cookie) {
    CountWait();
    return X11Owned<xcb_generic_error_t>(xcb_request_check(m_connection, cookie));
}

bool X11Connection::ChooseVisual() {
    const std::uint8_t asRoot = m_screen->root_depth;
    return m_bComposited ? UseDepth(32) || UseDepth(asRoot) : UseDepth(asRoot) || UseDepth(32);
}

// False where the server's pictures of that depth don't suit.
bool X11Connection::UseDepth(std::uint8_t depth) {
    const xcb_visualid_t visual = VisualOf(m_screen, depth);
    if (visual == 0 || !TakesOurPixels(xcb_get_setup(m_connection), depth)) {
        return false;
    }
    m_nDepth = depth;
    m_visual = visual;
    m_colormap = m_screen->default_colormap;
    if (visual != m_screen->root_visual) {
        m_colormap = xcb_generate_id(m_connection);
        xcb_create_colormap(m_connection, XCB_COLORMAP_ALLOC_NONE, m_colormap, Root(), visual);
    }
    return true;
}

void X11Connection::QueryExtensions() {
    for (xcb_extension_t* extension : {&xcb_shape_id, &xcb_shm_id, &xcb_input_id, &xcb_xkb_id}) {
        xcb_prefetch_extension_data(m_connection, extension);
    }
    xcb_prefetch_maximum_request_length(m_connection);
    std::array<xcb_intern_atom_cookie_t, kAtomNames.size()> cookies{};
    for (std::size_t i = 0; i < kAtomNames.size(); ++i) {
        const auto length = static_cast<std::uint16_t>(kAtomNames[i].size());
        cookies[i] = xcb_intern_atom(m_connection, 0, length, kAtomNames[i].data());
    }
    const std::string compositor = "_NET_WM_CM_S" + std::to_string(m_nScreen);
    const auto askedCompositor =
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(compositor.size()), compositor.data());
    CountWait();
    for (std::size_t i = 0; i < kAtomNames.size(); ++i) {
        const auto reply = Take<&xcb_intern_atom_reply>(cookies[i]);
        m_atoms[i] = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
    const auto reply = Take<&xcb_intern_atom_reply>(askedCompositor);
    m_compositor = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void X11Connection::QueryVersions() {
    const auto present = [this](xcb_extension_t* extension) -> const xcb_query_extension_reply_t* {
        const auto* data = xcb_get_extension_data(m_connection, extension);
        return data != nullptr && data->present ? data : nullptr;
    };
    const auto* shape = present(&xcb_shape_id);
    const auto* memory = IsLocal(xcb_get_file_descriptor(m_connection)) ? present(&xcb_shm_id) : nullptr;
    const auto* input = present(&xcb_input_id);
    const auto* keyboard = present(&xcb_xkb_id);

    const auto askedShape =
        shape != nullptr ? xcb_shape_query_version(m_connection) : xcb_shape_query_version_cookie_t{};
    const auto askedMemory = memory != nullptr ? xcb_shm_query_version(m_connection) : xcb_shm_query_version_cookie_t{};
    const auto askedInput =
        input != nullptr ? xcb_input_xi_query_version(m_connection, 2, 2) : xcb_input_xi_query_version_cookie_t{};
    const auto askedKeyboard =
        keyboard != nullptr ? xcb_xkb_use_extension(m_connection, 1, 0) : xcb_xkb_use_extension_cookie_t{};
    const auto askedCompositor = xcb_get_selection_owner(m_connection, m_compositor);
    CountWait();
    const auto compositor = Take<&xcb_get_selection_owner_reply>(askedCompositor);
    m_bComposited = compositor && compositor->owner != XCB_NONE;
    if (shape != nullptr) {
        const auto reply = Take<&xcb_shape_query_version_reply>(askedShape);
        m_features.inputShapes = reply && IsAtLeast(reply->major_version, reply->minor_version, 1, 1);
    }
    if (memory != nullptr) {
        const auto reply = Take<&xcb_shm_query_version_reply>(askedMemory);
        m_features.sharedMemory = reply && IsAtLeast(reply->major_version, reply->minor_version, 1, 2);
        m_features.sharedPixmaps = m_features.sharedMemory && (reply->shared_pixmaps != 0u) &&
                                   reply->pixmap_format == XCB_IMAGE_FORMAT_Z_PIXMAP;
        m_features.sharedMemoryEvent = memory->first_event;
    }
    if (input != nullptr) {
        const auto reply = Take<&xcb_input_xi_query_version_reply>(askedInput);
        m_features.rawPresses = reply && IsAtLeast(reply->major_version, reply->minor_version, 2, 1);
        m_features.inputOpcode = input->major_opcode;
    }
    if (keyboard != nullptr) {
        const auto reply = Take<&xcb_xkb_use_extension_reply>(askedKeyboard);
        m_features.keyboardMap = reply && (reply->supported != 0u);
        m_features.keyboardEvent = keyboard->first_event;
    }
}

}  // namespace veldan
