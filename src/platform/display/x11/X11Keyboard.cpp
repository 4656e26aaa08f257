#include "platform/display/x11/X11Keyboard.h"

#include "platform/core/Keys.h"
#include "platform/display/x11/X11Xkb.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdlib>

namespace veldan {

namespace {

struct SymbolKey {
    xkb_keysym_t symbol;
    UINT key;
};

constexpr std::array kSymbolKeys = {
    SymbolKey{XKB_KEY_BackSpace, VK_BACK},    SymbolKey{XKB_KEY_Tab, VK_TAB},
    SymbolKey{XKB_KEY_ISO_Left_Tab, VK_TAB},  SymbolKey{XKB_KEY_KP_Tab, VK_TAB},
    SymbolKey{XKB_KEY_Return, VK_RETURN},     SymbolKey{XKB_KEY_KP_Enter, VK_RETURN},
    SymbolKey{XKB_KEY_Shift_L, VK_SHIFT},     SymbolKey{XKB_KEY_Shift_R, VK_SHIFT},
    SymbolKey{XKB_KEY_Control_L, VK_CONTROL}, SymbolKey{XKB_KEY_Control_R, VK_CONTROL},
    SymbolKey{XKB_KEY_Alt_L, VK_MENU},        SymbolKey{XKB_KEY_Alt_R, VK_MENU},
    SymbolKey{XKB_KEY_Escape, VK_ESCAPE},     SymbolKey{XKB_KEY_space, VK_SPACE},
    SymbolKey{XKB_KEY_KP_Space, VK_SPACE},    SymbolKey{XKB_KEY_Page_Up, VK_PRIOR},
    SymbolKey{XKB_KEY_KP_Page_Up, VK_PRIOR},  SymbolKey{XKB_KEY_Page_Down, VK_NEXT},
    SymbolKey{XKB_KEY_KP_Page_Down, VK_NEXT}, SymbolKey{XKB_KEY_End, VK_END},
    SymbolKey{XKB_KEY_KP_End, VK_END},        SymbolKey{XKB_KEY_Home, VK_HOME},
    SymbolKey{XKB_KEY_KP_Home, VK_HOME},      SymbolKey{XKB_KEY_Left, VK_LEFT},
    SymbolKey{XKB_KEY_KP_Left, VK_LEFT},      SymbolKey{XKB_KEY_Up, VK_UP},
    SymbolKey{XKB_KEY_KP_Up, VK_UP},          SymbolKey{XKB_KEY_Right, VK_RIGHT},
    SymbolKey{XKB_KEY_KP_Right, VK_RIGHT},    SymbolKey{XKB_KEY_Down, VK_DOWN},
    SymbolKey{XKB_KEY_KP_Down, VK_DOWN},      SymbolKey{XKB_KEY_Insert, VK_INSERT},
    SymbolKey{XKB_KEY_KP_Insert, VK_INSERT},  SymbolKey{XKB_KEY_Delete, VK_DELETE},
    SymbolKey{XKB_KEY_KP_Delete, VK_DELETE},
};

void KeepQuiet(xkb_context*, xkb_log_level, const char*, va_list) {}

// The locale that the environment asks for; the host's own setting is neither read nor changed.
const char* LocaleName() {
    for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value) {
            return value;
        }
    }
    return "C";
}

bool BeginsSequence(xkb_keysym_t symbol) {
    return symbol == XKB_KEY_Multi_key || (symbol >= XKB_KEY_dead_grave && symbol <= XKB_KEY_dead_longsolidusoverlay);
}

bool IsControl(const std::string& text) {
    return text.size() == 1 && static_cast<unsigned char>(text[0]) < 0x20;
}

}  // namespace

X11Keyboard::X11Keyboard(X11Connection& connection) : m_connection(connection) {
    if (!m_connection.Features().keyboardMap) {
        return;
    }
    constexpr std::uint16_t kNews = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t kAllParts = 0xff;
    xcb_xkb_select_events(m_connection.Get(), XCB_XKB_ID_USE_CORE_KBD, kNews, 0, kNews, kAllParts, kAllParts, nullptr);
    // A key held down repeats its press without releases in between.
    xcb_xkb_per_client_flags_unchecked(m_connection.Get(), XCB_XKB_ID_USE_CORE_KBD,
                                       XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
                                       XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0);
}

X11Keyboard::~X11Keyboard() {
    xkb_compose_state_unref(m_compose);
    xkb_compose_table_unref(m_composeTable);
    DropKeymap();
    xkb_context_unref(m_context);
}

void X11Keyboard::DropKeymap() {
    xkb_state_unref(m_state);
    xkb_keymap_unref(m_map);
    m_state = nullptr;
    m_map = nullptr;
    m_bTriedMap = false;
}

void X11Keyboard::EndSequence() {
    m_held.reset();
    if (m_compose != nullptr) {
        xkb_compose_state_reset(m_compose);
    }
}

bool X11Keyboard::Load() {
    if (m_bTriedMap) {
        return m_state != nullptr;
    }
    m_bTriedMap = true;
    if (!m_connection.Features().keyboardMap) {
        return false;
    }
    if (m_context == nullptr) {
        m_context = xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES);
    }
    if (m_context == nullptr) {
        return false;
    }
    xkb_context_set_log_fn(m_context, KeepQuiet);
    m_connection.CountWait();
    if (xkb_x11_setup_xkb_extension(m_connection.Get(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr) == 0) {
        return false;
    }
    m_connection.CountWait();
    const std::int32_t device = xkb_x11_get_core_keyboard_device_id(m_connection.Get());
    if (device < 0) {
        return false;
    }
    m_connection.CountWait();
    m_map = xkb_x11_keymap_new_from_device(m_context, m_connection.Get(), device, XKB_KEYMAP_COMPILE_NO_FLAGS);
    m_state = m_map != nullptr ? xkb_state_new(m_map) : nullptr;
    return m_state != nullptr;
}

bool X11Keyboard::LoadCompose() {
    if (m_bTriedCompose) {
        return m_compose != nullptr;
    }
    m_bTriedCompose = true;
    m_composeTable = xkb_compose_table_new_from_locale(m_context, LocaleName(), XKB_COMPOSE_COMPILE_NO_FLAGS);
    if (m_composeTable != nullptr) {
        m_compose = xkb_compose_state_new(m_composeTable, XKB_COMPOSE_STATE_NO_FLAGS);
    }
    return m_compose != nullptr;
}

X11Keyboard::Stroke X11Keyboard::Press(xcb_keycode_t code, std::uint16_t state) {
    if (!Load()) {
        return {};
    }
    const xkb_keysym_t symbol = SymbolOf(code, state);
    const bool repeat = m_held.test(code);
    m_held.set(code);
    return {KeyOf(code, symbol), repeat, TextOf(code, symbol)};
}

UINT X11Keyboard::Release(xcb_keycode_t code, std::uint16_t state) {
    m_held.reset(code);
    return Load() ? KeyOf(code, SymbolOf(code, state)) : 0;
}

xkb_keysym_t X11Keyboard::SymbolOf(xcb_keycode_t code, std::uint16_t state) {
    // The event tells the modifiers and, in bits 13 and 14, the group as they were when the key moved.
    xkb_state_update_mask(m_state, state & 0xffU, 0, 0, 0, 0, state >> 13 & 3U);
    return xkb_state_key_get_one_sym(m_state, code);
}

UINT X11Keyboard::KeyOf(xcb_keycode_t code, xkb_keysym_t symbol) const {
    const auto* found = std::find_if(kSymbolKeys.begin(), kSymbolKeys.end(),
                                     [symbol](const SymbolKey& entry) { return entry.symbol == symbol; });
    if (found != kSymbolKeys.end()) {
        return found->key;
    }
    if (symbol >= XKB_KEY_F1 && symbol <= XKB_KEY_F12) {
        return VK_F1 + (symbol - XKB_KEY_F1);
    }
    // A character's key is named by what it types without modifiers.
    const xkb_layout_index_t layout = xkb_state_key_get_layout(m_state, code);
    const xkb_keysym_t* plain = nullptr;
    if (xkb_keymap_key_get_syms_by_level(m_map, code, layout, 0, &plain) != 1) {
        return 0;
    }
    if (*plain >= XKB_KEY_a && *plain <= XKB_KEY_z) {
        return *plain - XKB_KEY_a + 'A';
    }
    return *plain >= XKB_KEY_0 && *plain <= XKB_KEY_9 ? *plain : 0;
}

std::string X11Keyboard::TextOf(xkb_keycode_t code, xkb_keysym_t symbol) {
    std::array<char, 64> text{};
    if ((m_compose != nullptr || BeginsSequence(symbol)) && LoadCompose()) {
        xkb_compose_state_feed(m_compose, symbol);
        switch (xkb_compose_state_get_status(m_compose)) {
            case XKB_COMPOSE_COMPOSED:
                xkb_compose_state_get_utf8(m_compose, text.data(), text.size());
                return text.data();
            case XKB_COMPOSE_COMPOSING:
            case XKB_COMPOSE_CANCELLED:
                return {};
            case XKB_COMPOSE_NOTHING:
                break;
        }
    }
    const auto isHeld = [this](const char* modifier) {
        return xkb_state_mod_name_is_active(m_state, modifier, XKB_STATE_MODS_EFFECTIVE) > 0;
    };
    // With Alt a key is a command. Control makes a control character of a letter, and nothing of what it can't change.
    if (isHeld(XKB_MOD_NAME_ALT) || xkb_state_key_get_utf8(m_state, code, text.data(), text.size()) <= 0) {
        return {};
    }
    std::string typed = text.data();
    const bool isDelete = typed == "\x7f";
    return isDelete || (isHeld(XKB_MOD_NAME_CTRL) && !IsControl(typed)) ? std::string{} : typed;
}

}  // namespace veldan
