#pragma once

#include "platform/core/Geometry.h"

#include <xcb/xcb.h>
#include <xcb/xcb_icccm.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace veldan {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

/// The answer to a request, null where it was refused.
template <auto Reply, class Cookie>
auto Ask(xcb_connection_t* connection, Cookie cookie) {
    auto* reply = Reply(connection, cookie, nullptr);
    return std::unique_ptr<std::remove_pointer_t<decltype(reply)>, Free>(reply);
}

/// A program's own connection to an X server.
class XClient {
public:
    explicit XClient(const std::string& display) : m_connection(xcb_connect(display.c_str(), nullptr)) {
        if (xcb_connection_has_error(m_connection) == 0) {
            m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        }
    }
    ~XClient() { xcb_disconnect(m_connection); }
    XClient(const XClient&) = delete;
    XClient& operator=(const XClient&) = delete;

    [[nodiscard]] xcb_connection_t* Connection() const { return m_connection; }
    [[nodiscard]] xcb_window_t Root() const { return m_root; }
    /// Returns when the server has taken in everything so far.
    void Sync() const;
    /// Moves the keyboard focus, as a window manager does.
    void GiveFocus(xcb_window_t window);

protected:
    xcb_connection_t* m_connection;
    xcb_window_t m_root = 0;
};

/// A person's hand and eyes on an X server, on a connection of its own. Each act has reached the server when it
/// returns; what the server makes of it arrives at the programs later.
class XHand : public XClient {
public:
    using XClient::XClient;

    void Move(CPoint screen) { Fake(XCB_MOTION_NOTIFY, 0, screen); }
    void Press(int button = 1) { Fake(XCB_BUTTON_PRESS, button); }
    void Release(int button = 1) { Fake(XCB_BUTTON_RELEASE, button); }
    void Click(int button = 1);
    /// Moves there and clicks.
    void ClickAt(CPoint screen, int button = 1);
    /// Positive steps are away from the person.
    void Wheel(int steps);

    /// Keys by their symbol (XKB_KEY_..., or the character for Latin text); a symbol that the map lacks does nothing.
    void KeyDown(std::uint32_t symbol) { Fake(XCB_KEY_PRESS, Find(symbol).code); }
    void KeyUp(std::uint32_t symbol) { Fake(XCB_KEY_RELEASE, Find(symbol).code); }
    /// Down and up, with Shift where the symbol needs it.
    void Key(std::uint32_t symbol);

    /// Pixels of the screen, 0x00RRGGBB, rows from top to bottom without gaps.
    [[nodiscard]] std::vector<std::uint32_t> Capture(const CRect& screen) const;
    [[nodiscard]] std::uint32_t PixelAt(CPoint screen) const { return Capture(CRect::FromSize(screen, {1, 1}))[0]; }
    /// Waits until the screen shows a colour, 0xRRGGBB, at a point; false when it never did.
    [[nodiscard]] bool WaitForPixel(CPoint screen, std::uint32_t colour) const;
    /// Who has the keyboard focus.
    [[nodiscard]] xcb_window_t Focus() const;
    /// The visible window with this title that a person would find, 0 for none.
    [[nodiscard]] xcb_window_t FindWindow(std::string_view title) const { return FindBelow(m_root, title); }
    /// The place of a window on the screen without its decorations.
    [[nodiscard]] CRect RectOf(xcb_window_t window) const;
    /// A text property of a window, as it stands.
    [[nodiscard]] std::string PropertyOf(xcb_window_t window, std::string_view name) const;
    /// Alt and Tab, Alt held until the manager has answered with its list of windows; false when it never did.
    [[nodiscard]] bool SwitchWindow();
    /// What a person does with a window through its manager.
    void AskToMove(xcb_window_t window, CPoint screen);
    void AskToResize(xcb_window_t window, CSize size);
    void AskToClose(xcb_window_t window) { AskManager(window, "_NET_CLOSE_WINDOW"); }
    void AskToIconify(xcb_window_t window) { AskManager(window, "WM_CHANGE_STATE", XCB_ICCCM_WM_STATE_ICONIC); }
    void AskToActivate(xcb_window_t window) { AskManager(window, "_NET_ACTIVE_WINDOW"); }
    void AskForDesktop(std::uint32_t number) { AskManager(m_root, "_NET_CURRENT_DESKTOP", number); }
    /// Whether a program that says that it answers does so: a manager's question to a window, and the answer to it.
    [[nodiscard]] bool IsAnswered(xcb_window_t window, const std::function<void()>& letItAnswer);

    /// Looks to programs like a compositor from now on; nothing is composed.
    void PoseAsCompositor();

private:
    struct KeyPlace {
        xcb_keycode_t code = 0;
        bool withShift = false;
    };

    void AskManager(xcb_window_t window, std::string_view message, std::uint32_t value = 0);
    void Fake(std::uint8_t type, int detail, CPoint screen = {});
    [[nodiscard]] KeyPlace Find(std::uint32_t symbol) const;
    [[nodiscard]] xcb_atom_t Atom(std::string_view name) const;
    [[nodiscard]] std::vector<xcb_window_t> ChildrenOf(xcb_window_t parent) const;
    [[nodiscard]] bool IsSeen(xcb_window_t window) const;
    [[nodiscard]] std::ptrdiff_t CountSeen() const;
    [[nodiscard]] xcb_window_t FindBelow(xcb_window_t parent, std::string_view title) const;
};

/// A window of another program, 0xRRGGBB all over. It ends with the object.
class XForeignWindow : public XClient {
public:
    enum class Kind { Bare, Managed };  ///< Whether a window manager may take it in hand.

    XForeignWindow(const std::string& display, const CRect& rect, std::uint32_t colour, Kind kind = Kind::Bare);

    [[nodiscard]] xcb_window_t Id() const { return m_window; }
    void TakeFocus() { GiveFocus(m_window); }
    /// Comes above all others, which a manager does when it activates a window.
    void Raise();
    /// Asks to be shown; whether a window manager has put a frame round it by then.
    bool Show();
    /// Takes the keys for itself alone and gives them back, as the menu of another program does.
    void GrabKeyboard();
    /// Presses that have come to it so far.
    [[nodiscard]] int Presses();

private:
    xcb_window_t m_window = 0;
    int m_presses = 0;
};

}  // namespace veldan
