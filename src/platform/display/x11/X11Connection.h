#pragma once

#include "platform/core/Geometry.h"

#include <xcb/xcb.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <type_traits>

namespace veldan {

struct X11Free {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, event or error that the protocol library has handed over; null where none came.
template <class T>
using X11Owned = std::unique_ptr<T, X11Free>;

enum class X11Atom : std::size_t {
    WmProtocols,
    WmDeleteWindow,
    NetWmName,
    Utf8String,
    NetWmWindowType,
    NetWmWindowTypeNormal,
    NetWmWindowTypeDialog,
    NetWmWindowTypePopupMenu,
    NetWmWindowTypeCombo,
    NetWmWindowTypeTooltip,
    NetWmPid,
    NetWmIcon,
    NetWmPing,
    WmState,
    NetWmState,
    NetWmStateHidden,
    NetWmDesktop,
    NetCurrentDesktop,
    NetActiveWindow,
    Count
};

/// What the server offers; an extension that is absent is never called, since that would end the connection.
struct X11Features {
    bool inputShapes = false;
    bool sharedMemory = false;   ///< Pixels can be handed over in memory that both sides see.
    bool sharedPixmaps = false;  ///< Whole pictures of the server's can lie in such memory.
    bool rawPresses = false;     ///< Presses anywhere on the screen are reported without grabbing anything.
    bool keyboardMap = false;
    std::uint8_t sharedMemoryEvent = 0;
    std::uint8_t inputOpcode = 0;
    std::uint8_t keyboardEvent = 0;
};

/// The library's own connection to the server, with what is asked of it once, at the start. Requests are buffered and
/// never wait; every wait for an answer goes through Ask or is told to CountWait.
class X11Connection {
public:
    /// Null where no server answers or its pictures don't suit.
    [[nodiscard]] static std::unique_ptr<X11Connection> Open(const char* displayName);
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    [[nodiscard]] xcb_connection_t* Get() const { return m_connection; }
    [[nodiscard]] bool IsAlive() const { return xcb_connection_has_error(m_connection) == 0; }
    [[nodiscard]] xcb_screen_t* Screen() const { return m_screen; }
    [[nodiscard]] xcb_window_t Root() const { return m_screen->root; }
    [[nodiscard]] const X11Features& Features() const { return m_features; }
    /// Whether a compositor puts the windows on the screen.
    [[nodiscard]] bool IsComposited() const { return m_bComposited; }
    [[nodiscard]] xcb_atom_t Atom(X11Atom atom) const { return m_atoms[static_cast<std::size_t>(atom)]; }

    /// What all own windows are made with: as the root, since the server keeps a second copy of the pixels of windows
    /// of another depth and composes them for itself; but 32 bits with alpha, where the server has that, under a
    /// compositor, which has all windows apart anyway and takes such a one as it is, without a shadow round it.
    [[nodiscard]] std::uint8_t Depth() const { return m_nDepth; }
    [[nodiscard]] xcb_visualid_t Visual() const { return m_visual; }
    [[nodiscard]] xcb_colormap_t Colormap() const { return m_colormap; }

    /// Waits for the answer to a request: `Ask<&xcb_query_pointer_reply>(xcb_query_pointer(...))`. Null where the
    /// server refused or is gone.
    template <auto Reply, class Cookie>
    [[nodiscard]] auto Ask(Cookie cookie) {
        CountWait();
        return Take<Reply>(cookie);
    }
    /// The same for an answer that comes together with one that was waited for.
    template <auto Reply, class Cookie>
    [[nodiscard]] auto Take(Cookie cookie) {
        xcb_generic_error_t* error = nullptr;
        auto* reply = Reply(m_connection, cookie, &error);
        std::free(error);
        return X11Owned<std::remove_pointer_t<decltype(reply)>>(reply);
    }
    /// The error of a checked request, null where it went well.
    [[nodiscard]] X11Owned<xcb_generic_error_t> Check(xcb_void_cookie_t cookie);
    void CountWait() { ++m_nRoundTrips; }
    [[nodiscard]] std::uint64_t RoundTrips() const { return m_nRoundTrips; }

private:
    X11Connection(xcb_connection_t* connection, int screenNumber, xcb_screen_t* screen);

    bool ChooseVisual();
    bool UseDepth(std::uint8_t depth);
    void QueryExtensions();
    void QueryVersions();

    xcb_connection_t* m_connection;
    int m_nScreen;
    xcb_screen_t* m_screen;
    xcb_atom_t m_compositor = 0;  // the selection that one owns
    bool m_bComposited = false;
    X11Features m_features;
    std::array<xcb_atom_t, static_cast<std::size_t>(X11Atom::Count)> m_atoms{};
    std::uint8_t m_nDepth = 0;
    xcb_visualid_t m_visual = 0;
    xcb_colormap_t m_colormap = 0;
    std::uint64_t m_nRoundTrips = 0;
};

}  // namespace veldan
