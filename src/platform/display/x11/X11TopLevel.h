#pragma once

#include "platform/display/Display.h"
#include "platform/display/x11/X11Pixmap.h"

#include <optional>
#include <string>

namespace veldan {

class X11Upload;

/// One top-level window on the server and the pixmap that holds its pixels; both end with the object.
class X11TopLevel {
public:
    X11TopLevel(X11Connection& connection, TopLevelId id, const TopLevelTraits& traits, const CRect& rect);
    ~X11TopLevel();
    X11TopLevel(const X11TopLevel&) = delete;
    X11TopLevel& operator=(const X11TopLevel&) = delete;

    [[nodiscard]] TopLevelId Id() const { return m_id; }
    [[nodiscard]] xcb_window_t Window() const { return m_window; }
    /// A window manager may take it in hand.
    [[nodiscard]] bool IsManaged() const { return m_kind == TopLevelKind::Frame; }
    [[nodiscard]] bool IsVisible() const { return m_bVisible; }
    /// The pixels without decorations.
    [[nodiscard]] const CRect& Rect() const { return m_rcPlace; }
    /// What stands among the children of the root: the manager's frame round the window, or the window.
    [[nodiscard]] xcb_window_t Outermost() const { return m_frame != 0 ? m_frame : m_window; }

    [[nodiscard]] TopLevelId Owner() const { return m_owner; }
    /// The owner's window on the server, as a hint for window managers.
    void SetOwnerHint(xcb_window_t owner);
    void SetTitle(const std::string& title);
    void SetRect(const CRect& rect);
    void SetVisible(bool visible);
    void Restack(xcb_stack_mode_t mode, xcb_window_t sibling);
    void SetCursor(xcb_cursor_t cursor);
    /// Null where the server takes only copies.
    [[nodiscard]] std::shared_ptr<Surface> MakeSurface(X11Upload& upload, CSize size);
    void Present(X11Upload& upload, const Surface& pixels, const Region& dirty);

    // News from the server; those of places are handed on for managed windows only.

    void OnReparent(const xcb_reparent_notify_event_t& event);
    void OnConfigure(const xcb_configure_notify_event_t& event, std::uint32_t sequence);
    void OnMap() { m_bViewable = true; }
    void OnUnmap(std::uint32_t sequence);
    /// Another program has destroyed the window. Makes another one, hidden, with everything that this one had but its
    /// owner's hint.
    void Recreate();
    /// Whether another program has unmapped the window, which is hidden from then on; may wait for an answer.
    [[nodiscard]] bool SettleHidden();
    /// Takes over where the manager has put the window; may wait for an answer. False: the window is where it was
    /// thought to be.
    [[nodiscard]] bool SettleRect();
    /// The server lets it have the keyboard focus.
    [[nodiscard]] bool IsViewable() const { return m_bVisible && (m_bViewable || !IsManaged()); }

private:
    enum class Place { Known, Told, Asked };  // of a managed window: as m_rcPlace, as m_rcTold, must be asked

    void Create();
    void SetHints();
    void SetSizeHints();
    void MakePixmap(X11Upload& upload, CSize size);
    void SetAtom(X11Atom property, X11Atom value);

    X11Connection& m_connection;
    TopLevelId m_id;
    TopLevelKind m_kind;
    TopLevelId m_owner;
    std::string m_strTitle;
    CSize m_szSmallest;
    CRect m_rcPlace;
    xcb_window_t m_window = 0;
    xcb_window_t m_frame = 0;
    std::optional<X11Pixmap> m_pixmap;  // what the window shows
    bool m_bPixmapNew = false;          // nothing was presented yet
    bool m_bVisible = false;
    bool m_bViewable = false;
    bool m_bMayBeUnmapped = false;  // the server has told so, but not who did it
    Place m_place = Place::Known;
    CRect m_rcTold;
    std::uint32_t m_nPlacedAt = 0;  // number of the request that placed it last
    std::uint32_t m_nMappedAt = 0;
};

}  // namespace veldan
