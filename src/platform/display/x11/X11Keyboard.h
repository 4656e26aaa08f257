#pragma once

#include "platform/core/Types.h"
#include "platform/display/x11/X11Connection.h"

#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon.h>

#include <bitset>
#include <string>

namespace veldan {

/// What the keys of the server's keyboard mean. The map is fetched at the first key and again after it has changed.
class X11Keyboard {
public:
    struct Stroke {
        UINT key = 0;         ///< VK_..., 0 for a key that has none.
        bool repeat = false;  ///< It was down already.
        /// UTF-8, control characters included; what a sequence of dead keys typed comes with its last key.
        std::string text;
    };

    explicit X11Keyboard(X11Connection& connection);
    ~X11Keyboard();
    X11Keyboard(const X11Keyboard&) = delete;
    X11Keyboard& operator=(const X11Keyboard&) = delete;

    /// `state` is the one of the key event.
    [[nodiscard]] Stroke Press(xcb_keycode_t code, std::uint16_t state);
    [[nodiscard]] UINT Release(xcb_keycode_t code, std::uint16_t state);
    /// The focus has gone or come: drops a sequence of dead keys that has begun, and no key counts as held.
    void EndSequence();
    /// The server's map has changed.
    void DropKeymap();

private:
    bool Load();
    bool LoadCompose();
    [[nodiscard]] xkb_keysym_t SymbolOf(xcb_keycode_t code, std::uint16_t state);
    [[nodiscard]] UINT KeyOf(xcb_keycode_t code, xkb_keysym_t symbol) const;
    [[nodiscard]] std::string TextOf(xkb_keycode_t code, xkb_keysym_t symbol);

    X11Connection& m_connection;
    xkb_context* m_context = nullptr;
    xkb_keymap* m_map = nullptr;
    xkb_state* m_state = nullptr;
    xkb_compose_table* m_composeTable = nullptr;
    xkb_compose_state* m_compose = nullptr;
    bool m_bTriedMap = false;
    bool m_bTriedCompose = false;
    std::bitset<256> m_held;  // by key code
};

}  // namespace veldan
