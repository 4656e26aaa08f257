#include "x11/XHand.h"

#include "x11/Wait.h"

#include <xcb/xcb_icccm.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <cstdlib>

namespace veldan {

namespace {

constexpr std::uint32_t kColourBits = 0xffffff;
constexpr std::uint32_t kPropertyWords = 1024;

}  // namespace

void XClient::Sync() const {
    Ask<&xcb_get_input_focus_reply>(m_connection, xcb_get_input_focus(m_connection));
}

void XClient::GiveFocus(xcb_window_t window) {
    xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    Sync();
}

void XHand::Fake(std::uint8_t type, int detail, CPoint screen) {
    xcb_test_fake_input(m_connection, type, static_cast<std::uint8_t>(detail), XCB_CURRENT_TIME, m_root,
                        static_cast<std::int16_t>(screen.x), static_cast<std::int16_t>(screen.y), 0);
    Sync();
}

void XHand::Click(int button) {
    Press(button);
    Release(button);
}

void XHand::ClickAt(CPoint screen, int button) {
    Move(screen);
    Click(button);
}

void XHand::Wheel(int steps) {
    for (int step = 0; step < std::abs(steps); ++step) Click(steps > 0 ? 4 : 5);
}

XHand::KeyPlace XHand::Find(std::uint32_t symbol) const {
    const xcb_setup_t* setup = xcb_get_setup(m_connection);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const auto map = Ask<&xcb_get_keyboard_mapping_reply>(
        m_connection, xcb_get_keyboard_mapping(m_connection, setup->min_keycode, static_cast<std::uint8_t>(count)));
    if (!map) return {};
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int shift = 0; shift < 2; ++shift) {
        for (int key = 0; key < count; ++key) {
            if (symbols[key * map->keysyms_per_keycode + shift] == symbol) {
                return {static_cast<xcb_keycode_t>(setup->min_keycode + key), shift == 1};
            }
        }
    }
    return {};
}

void XHand::Key(std::uint32_t symbol) {
    const bool withShift = Find(symbol).withShift;
    if (withShift) KeyDown(XKB_KEY_Shift_L);
    KeyDown(symbol);
    KeyUp(symbol);
    if (withShift) KeyUp(XKB_KEY_Shift_L);
}

std::vector<std::uint32_t> XHand::Capture(const CRect& screen) const {
    const auto image = Ask<&xcb_get_image_reply>(
        m_connection,
        xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, static_cast<std::int16_t>(screen.left),
                      static_cast<std::int16_t>(screen.top), static_cast<std::uint16_t>(screen.Width()),
                      static_cast<std::uint16_t>(screen.Height()), ~0U));
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(screen.Width() * screen.Height()));
    if (!image) return pixels;
    const auto* data = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
    for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = data[i] & kColourBits;
    return pixels;
}

bool XHand::WaitForPixel(CPoint screen, std::uint32_t colour) const {
    return WaitUntil([&] { return PixelAt(screen) == colour; });
}

xcb_window_t XHand::Focus() const {
    const auto reply = Ask<&xcb_get_input_focus_reply>(m_connection, xcb_get_input_focus(m_connection));
    return reply ? reply->focus : 0;
}

xcb_atom_t XHand::Atom(std::string_view name) const {
    const auto reply = Ask<&xcb_intern_atom_reply>(
        m_connection, xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.data()));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::string XHand::PropertyOf(xcb_window_t window, std::string_view name) const {
    const auto reply = Ask<&xcb_get_property_reply>(
        m_connection, xcb_get_property(m_connection, 0, window, Atom(name), XCB_ATOM_ANY, 0, kPropertyWords));
    if (!reply) return {};
    const auto* value = static_cast<const char*>(xcb_get_property_value(reply.get()));
    return {value, value + xcb_get_property_value_length(reply.get())};
}

std::vector<xcb_window_t> XHand::ChildrenOf(xcb_window_t parent) const {
    const auto tree = Ask<&xcb_query_tree_reply>(m_connection, xcb_query_tree(m_connection, parent));
    if (!tree) return {};
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    return {children, children + xcb_query_tree_children_length(tree.get())};
}

bool XHand::IsSeen(xcb_window_t window) const {
    const auto state =
        Ask<&xcb_get_window_attributes_reply>(m_connection, xcb_get_window_attributes(m_connection, window));
    return state && state->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::ptrdiff_t XHand::CountSeen() const {
    const auto windows = ChildrenOf(m_root);
    return std::count_if(windows.begin(), windows.end(), [this](xcb_window_t window) { return IsSeen(window); });
}

xcb_window_t XHand::FindBelow(xcb_window_t parent, std::string_view title) const {
    for (const xcb_window_t child : ChildrenOf(parent)) {
        if (IsSeen(child) && PropertyOf(child, "WM_NAME") == title) return child;
        if (const xcb_window_t found = FindBelow(child, title)) return found;
    }
    return 0;
}

bool XHand::SwitchWindow() {
    const auto before = CountSeen();
    KeyDown(XKB_KEY_Alt_L);
    Key(XKB_KEY_Tab);
    const bool isListed = WaitUntil([&] { return CountSeen() > before; });
    KeyUp(XKB_KEY_Alt_L);
    return isListed;
}

CRect XHand::RectOf(xcb_window_t window) const {
    const auto size = Ask<&xcb_get_geometry_reply>(m_connection, xcb_get_geometry(m_connection, window));
    const auto place = Ask<&xcb_translate_coordinates_reply>(
        m_connection, xcb_translate_coordinates(m_connection, window, m_root, 0, 0));
    return size && place ? CRect::FromSize({place->dst_x, place->dst_y}, {size->width, size->height}) : CRect{};
}

void XHand::AskToMove(xcb_window_t window, CPoint screen) {
    const std::uint32_t place[] = {static_cast<std::uint32_t>(screen.x), static_cast<std::uint32_t>(screen.y)};
    xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place);
    Sync();
}

void XHand::AskToResize(xcb_window_t window, CSize size) {
    const std::uint32_t sides[] = {static_cast<std::uint32_t>(size.cx), static_cast<std::uint32_t>(size.cy)};
    xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, sides);
    Sync();
}

void XHand::AskManager(xcb_window_t window, std::string_view name, std::uint32_t value) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = Atom(name);
    message.data.data32[0] = value;
    xcb_send_event(m_connection, 0, m_root, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    Sync();
}

bool XHand::IsAnswered(xcb_window_t window, const std::function<void()>& letItAnswer) {
    constexpr std::uint32_t kAnswers = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection, m_root, XCB_CW_EVENT_MASK, &kAnswers);
    xcb_client_message_event_t question{};
    question.response_type = XCB_CLIENT_MESSAGE;
    question.format = 32;
    question.window = window;
    question.type = Atom("WM_PROTOCOLS");
    question.data.data32[0] = Atom("_NET_WM_PING");
    question.data.data32[1] = 4711;
    question.data.data32[2] = window;
    xcb_send_event(m_connection, 0, window, 0, reinterpret_cast<const char*>(&question));
    Sync();
    return WaitUntil([&] {
        letItAnswer();
        const std::unique_ptr<xcb_generic_event_t, Free> event(xcb_poll_for_event(m_connection));
        const auto* answer = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
        return event && (event->response_type & 0x7f) == XCB_CLIENT_MESSAGE && answer->window == m_root &&
               answer->type == question.type && std::ranges::equal(answer->data.data32, question.data.data32);
    });
}

void XHand::PoseAsCompositor() {
    const xcb_window_t window = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, 0, window, m_root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, 0, 0, nullptr);
    xcb_set_selection_owner(m_connection, window, Atom("_NET_WM_CM_S0"), XCB_CURRENT_TIME);
    Sync();
}

XForeignWindow::XForeignWindow(const std::string& display, const CRect& rect, std::uint32_t colour, Kind kind)
    : XClient(display), m_window(xcb_generate_id(m_connection)) {
    const std::uint32_t values[] = {colour, kind == Kind::Bare ? 1U : 0U, XCB_EVENT_MASK_BUTTON_PRESS};
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_root, static_cast<std::int16_t>(rect.left),
                      static_cast<std::int16_t>(rect.top), static_cast<std::uint16_t>(rect.Width()),
                      static_cast<std::uint16_t>(rect.Height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    // A manager chooses the place of a window that doesn't say that its own is meant.
    xcb_size_hints_t hints{};
    xcb_icccm_size_hints_set_position(&hints, 1, rect.left, rect.top);
    xcb_icccm_size_hints_set_win_gravity(&hints, XCB_GRAVITY_STATIC);
    xcb_icccm_set_wm_normal_hints(m_connection, m_window, &hints);
    Show();
}

void XForeignWindow::Raise() {
    constexpr std::uint32_t kAbove = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection, m_window, XCB_CONFIG_WINDOW_STACK_MODE, &kAbove);
    Sync();
}

bool XForeignWindow::Show() {
    xcb_map_window(m_connection, m_window);
    Sync();
    const auto tree = Ask<&xcb_query_tree_reply>(m_connection, xcb_query_tree(m_connection, m_window));
    return tree && tree->parent != m_root;
}

void XForeignWindow::GrabKeyboard() {
    Ask<&xcb_grab_keyboard_reply>(m_connection, xcb_grab_keyboard(m_connection, 0, m_window, XCB_CURRENT_TIME,
                                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    xcb_ungrab_keyboard(m_connection, XCB_CURRENT_TIME);
    Sync();
}

int XForeignWindow::Presses() {
    while (const auto event = std::unique_ptr<xcb_generic_event_t, Free>(xcb_poll_for_event(m_connection))) {
        if ((event->response_type & 0x7f) == XCB_BUTTON_PRESS) ++m_presses;
    }
    return m_presses;
}

}  // namespace veldan
