#pragma once

#include "platform/display/x11/X11Windows.h"

#include <optional>
#include <utility>

namespace veldan {

/// Finds out that a button went down where no own window is, without keeping the press from whom it was meant for: by
/// the server's raw presses where it reports those, else by a grab of the root that hands each press on at once.
class X11OutsideWatch {
public:
    X11OutsideWatch(X11Connection& connection, const X11Windows& windows, bool useRawPresses);

    /// Watches while an own window is shown.
    void SetActive(bool active);

    /// A raw press. False: it is no press of a button that counts. `pointerIsInside`: the pointer was last told to be
    /// in an own window. `mark` is the press's, as everywhere here. May wait for an answer.
    bool OnRawPress(const xcb_ge_generic_event_t& event, bool pointerIsInside, std::uint64_t mark);
    /// A press that came to an own window, or to the root by the grab. True: it is not to be handled any further.
    bool OnPress(const xcb_button_press_event_t& event, std::uint64_t mark);
    /// Decides about a press that no own window has got, once everything that the server sent was looked at; may wait
    /// for an answer.
    void Settle();
    struct Press {
        CPoint screen;
        std::uint64_t mark;
    };
    /// A press that was found to have hit no own window; given once.
    [[nodiscard]] std::optional<Press> Take() { return std::exchange(m_outside, std::nullopt); }

private:
    struct Undecided {
        xcb_timestamp_t time;
        std::uint64_t mark;
    };

    void SelectRaw(bool active);
    void GrabRoot(bool active);
    [[nodiscard]] X11Owned<xcb_query_pointer_reply_t> AskPointer();

    X11Connection& m_connection;
    const X11Windows& m_windows;
    bool m_bUseRawPresses;
    bool m_bActive = false;
    std::optional<Undecided> m_undecided;
    std::optional<Press> m_outside;
};

}  // namespace veldan
