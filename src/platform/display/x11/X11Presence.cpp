#include "platform/display/x11/X11Presence.h"

#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <optional>
#include <span>

namespace veldan {

namespace {

constexpr std::uint32_t kMaxWords = 64;
constexpr std::uint32_t kAllDesktops = 0xffffffff;

using Answer = X11Owned<xcb_get_property_reply_t>;

std::span<const std::uint32_t> WordsOf(const Answer& answer) {
    if (!answer || answer->format != 32) {
        return {};
    }
    return {static_cast<const std::uint32_t*>(xcb_get_property_value(answer.get())), answer->value_len};
}

std::optional<std::uint32_t> FirstWordOf(const Answer& answer) {
    const auto words = WordsOf(answer);
    return words.empty() ? std::nullopt : std::optional(words[0]);
}

}  // namespace

X11Presence QueryPresence(X11Connection& connection, xcb_window_t window) {
    const auto ask = [&](xcb_window_t whose, X11Atom property) {
        return xcb_get_property(connection.Get(), 0, whose, connection.Atom(property), XCB_ATOM_ANY, 0, kMaxWords);
    };
    const auto askedAttributes = xcb_get_window_attributes(connection.Get(), window);
    const auto askedWmState = ask(window, X11Atom::WmState);
    const auto askedStates = ask(window, X11Atom::NetWmState);
    const auto askedDesktop = ask(window, X11Atom::NetWmDesktop);
    const auto askedCurrent = ask(connection.Root(), X11Atom::NetCurrentDesktop);
    const auto attributes = connection.Ask<&xcb_get_window_attributes_reply>(askedAttributes);
    const auto wmState = connection.Take<&xcb_get_property_reply>(askedWmState);
    const auto states = connection.Take<&xcb_get_property_reply>(askedStates);
    const auto desktop = FirstWordOf(connection.Take<&xcb_get_property_reply>(askedDesktop));
    const auto current = FirstWordOf(connection.Take<&xcb_get_property_reply>(askedCurrent));
    if (!attributes) {
        return X11Presence::Shown;  // it is gone, which the server tells by itself
    }
    const auto managed = FirstWordOf(wmState).value_or(XCB_ICCCM_WM_STATE_WITHDRAWN);
    if (attributes->map_state == XCB_MAP_STATE_UNMAPPED && managed == XCB_ICCCM_WM_STATE_WITHDRAWN) {
        return X11Presence::Withdrawn;
    }
    // Managers that compose the screen leave windows mapped that they don't show.
    const auto hidden = connection.Atom(X11Atom::NetWmStateHidden);
    const bool isHidden = std::ranges::find(WordsOf(states), hidden) != WordsOf(states).end();
    const bool isElsewhere =
        connection.IsComposited() && desktop && current && *desktop != kAllDesktops && *desktop != *current;
    const bool isShown = attributes->map_state == XCB_MAP_STATE_VIEWABLE && !isHidden && !isElsewhere;
    return isShown ? X11Presence::Shown : X11Presence::KeptOff;
}

}  // namespace veldan
