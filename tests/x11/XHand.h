#pragma once

#include "platform/core/Geometry.h"

#include <xcb/xcb.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veldan {

/// Pixels of the screen, 0x00RRGGBB, rows from top to bottom without gaps.
struct XPicture {
    CSize size;
    std::vector<std::uint32_t> pixels;

    /// The colour at a point of the picture, which must lie within it.
    [[nodiscard]] std::uint32_t At(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(size.cx) + static_cast<std::size_t>(x)];
    }
};

/// A person's hand and eyes on an X server, on a connection of its own. Each act has reached the server when it
/// returns; what the server makes of it arrives at the programs later.
class XHand {
public:
    explicit XHand(const std::string& display);
    ~XHand();
    XHand(const XHand&) = delete;
    XHand& operator=(const XHand&) = delete;

    void Move(CPoint screen);
    void Press(int button = 1);
    void Release(int button = 1);
    void Click(int button = 1);
    /// Moves there and clicks.
    void ClickAt(CPoint screen, int button = 1);
    /// Positive steps are away from the person.
    void Wheel(int steps);

    /// Keys by their symbol (XKB_KEY_..., or the character for Latin text); a symbol that the map lacks does nothing.
    void KeyDown(std::uint32_t symbol);
    void KeyUp(std::uint32_t symbol);
    /// Down and up, with Shift where the symbol needs it.
    void Key(std::uint32_t symbol);

    [[nodiscard]] XPicture Capture(const CRect& screen) const;
    [[nodiscard]] std::uint32_t PixelAt(CPoint screen) const;
    /// Waits until the screen shows a colour, 0xRRGGBB, at a point; false when it never did.
    [[nodiscard]] bool WaitForPixel(CPoint screen, std::uint32_t colour) const;
    /// Who has the keyboard focus.
    [[nodiscard]] xcb_window_t Focus() const;
    /// The visible window with this title that a person would find, 0 for none.
    [[nodiscard]] xcb_window_t FindWindow(std::string_view title) const;
    /// The place of a window on the screen without its decorations.
    [[nodiscard]] CRect RectOf(xcb_window_t window) const;
    /// Moves the keyboard focus, as a window manager does.
    void GiveFocus(xcb_window_t window);
    /// A text property of a window, as it stands.
    [[nodiscard]] std::string PropertyOf(xcb_window_t window, std::string_view name) const;
    /// Alt and Tab, Alt held until the manager has answered with its list of windows; false when it never did.
    [[nodiscard]] bool SwitchWindow();
    /// What a person does with a window through its manager.
    void AskToMove(xcb_window_t window, CPoint screen);
    void AskToClose(xcb_window_t window);

    /// Looks to programs like a compositor from now on; nothing is composed.
    void PoseAsCompositor();

    /// What a person does who chooses another resolution, smaller than the first.
    void ResizeScreen(CSize size);

    [[nodiscard]] xcb_connection_t* Connection() const { return m_connection; }
    [[nodiscard]] xcb_window_t Root() const { return m_root; }
    /// Returns when the server has taken in everything so far.
    void Sync() const;

private:
    struct KeyPlace {
        xcb_keycode_t code = 0;
        bool withShift = false;
    };

    void Fake(std::uint8_t type, std::uint8_t detail, CPoint screen = {});
    [[nodiscard]] KeyPlace Find(std::uint32_t symbol) const;
    [[nodiscard]] xcb_atom_t Atom(std::string_view name) const;
    [[nodiscard]] std::vector<xcb_window_t> ChildrenOf(xcb_window_t parent) const;
    [[nodiscard]] bool IsSeen(xcb_window_t window) const;
    [[nodiscard]] std::ptrdiff_t CountSeen() const;
    [[nodiscard]] xcb_window_t FindBelow(xcb_window_t parent, std::string_view title) const;

    xcb_connection_t* m_connection;
    xcb_window_t m_root = 0;
};

/// A window of another program, 0xRRGGBB all over. It ends with the object.
class XForeignWindow {
public:
    enum class Kind { Bare, Managed };  ///< Whether a window manager may take it in hand.

    XForeignWindow(const std::string& display, const CRect& rect, std::uint32_t colour, Kind kind = Kind::Bare);
    ~XForeignWindow();
    XForeignWindow(const XForeignWindow&) = delete;
    XForeignWindow& operator=(const XForeignWindow&) = delete;

    [[nodiscard]] xcb_window_t Id() const { return m_window; }
    void Show();
    void TakeFocus();
    /// A window manager has put a frame round it.
    [[nodiscard]] bool IsDecorated() const;
    /// Takes the keys for itself alone, as the menu of another program does.
    void GrabKeyboard();
    void UngrabKeyboard();
    /// Presses that have come to it so far.
    [[nodiscard]] int Presses();

private:
    void Sync() const;

    xcb_connection_t* m_connection;
    xcb_window_t m_root = 0;
    xcb_window_t m_window = 0;
    int m_presses = 0;
};

}  // namespace veldan
