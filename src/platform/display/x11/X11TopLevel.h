#pragma once

#include "platform/display/Display.h"
#include "platform/display/x11/X11Pixmap.h"
#include "platform/display/x11/X11Presence.h"
#include "platform/display/x11/X11Properties.h"

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
    [[nodiscard]] const TopLevelTraits& Traits() const { return m_traits; }
    [[nodiscard]] xcb_window_t Window() const { return m_window; }
    [[nodiscard]] X11Properties Properties() const { return {m_connection, m_window}; }
    /// As it was told to be; it is on the screen unless it is kept off.
    [[nodiscard]] bool IsVisible() const { return m_bVisible; }
    [[nodiscard]] bool IsKeptOff() const { return m_bKeptOff; }
    [[nodiscard]] bool IsOnScreen() const { return m_bVisible && !m_bKeptOff; }
    /// The server lets it have the keyboard focus.
    [[nodiscard]] bool IsViewable() const { return IsOnScreen() && (m_bViewable || !m_traits.managed); }
    /// The pixels without decorations.
    [[nodiscard]] const CRect& Rect() const { return m_rcPlace; }
    /// What stands among the children of the root: the manager's frame round the window, or the window.
    [[nodiscard]] xcb_window_t Outermost() const { return m_frame != 0 ? m_frame : m_window; }

    void SetTitle(const std::string& title);
    void SetRect(const CRect& rect);
    void SetVisible(bool visible);
    /// Takes a window off the screen that stays visible by what it was told, because its owner isn't on the screen, and
    /// puts it back.
    void KeepOff(bool keepOff);
    void Restack(xcb_stack_mode_t mode, xcb_window_t sibling);
    void SetCursor(xcb_cursor_t cursor);
    /// Null where the server takes only copies.
    [[nodiscard]] std::shared_ptr<Surface> MakeSurface(X11Upload& upload, CSize size);
    void Present(X11Upload& upload, const Surface& pixels, const Region& dirty);
    /// Another program has destroyed the window. Makes another one, hidden, with everything that this one had but its
    /// owner's hint.
    void Recreate();

    // News from the server. What settles them may wait for an answer.

    void OnReparent(const xcb_reparent_notify_event_t& event);
    void OnConfigure(const xcb_configure_notify_event_t& event, std::uint32_t sequence);
    void OnMap();
    void OnUnmap(std::uint32_t sequence);
    /// Something has changed by which a manager may keep the window off the screen.
    void OnManaged() { m_bPresenceDoubtful = m_bPresenceDoubtful || m_traits.managed; }
    /// Learns which window of the manager's is the outermost one.
    void SettleFrame();
    /// Where that has changed: whether the window is on the screen by the will of the manager and of other programs. A
    /// withdrawn window counts as hidden from then on.
    [[nodiscard]] std::optional<X11Presence> SettlePresence();
    /// Takes over where the manager has put the window. False: the window is where it was thought to be.
    [[nodiscard]] bool SettleRect();

private:
    enum class Place { Known, Told, Asked };  // of a managed window: as m_rcPlace, as m_rcTold, must be asked

    /// A frame that a manager keeps off may be mapped again by the manager at any time.
    [[nodiscard]] bool WantsMapped() const { return m_bVisible && (m_traits.managed || !m_bKeptOff); }
    void Create();
    void SetHints();
    void SetMapped(bool mapped);
    void TellManagerOfUnmap();
    void MakePixmap(X11Upload& upload, CSize size);

    X11Connection& m_connection;
    TopLevelId m_id;
    TopLevelTraits m_traits;
    CRect m_rcPlace;
    xcb_window_t m_window = 0;
    xcb_window_t m_frame = 0;
    std::optional<X11Pixmap> m_pixmap;  // what the window shows
    bool m_bPixmapNew = false;          // nothing was presented yet
    bool m_bVisible = false;
    bool m_bKeptOff = false;
    bool m_bViewable = false;  // the server has mapped it
    bool m_bFrameNew = false;
    bool m_bPresenceDoubtful = false;
    bool m_bSeen = false;  // it was on the screen since it was mapped
    Place m_place = Place::Known;
    CRect m_rcTold;
    std::uint32_t m_nPlacedAt = 0;  // number of the request that placed it last
    std::uint32_t m_nMappedAt = 0;
};

}  // namespace veldan
