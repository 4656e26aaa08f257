#include "platform/window/Keyboard.h"

#include "platform/core/Utf8.h"

#include <string_view>
#include <utility>

namespace veldan {

Taken Keyboard::KeyChanged(const DisplayEvent& event, MSG& message) {
    m_messenger.SetInputFlags(event.flags);
    m_strText.clear();
    const HWND target = Target();
    if (!m_tree.TakesInput(target)) {
        return Taken::Done;
    }
    const bool press = event.kind == DisplayEventKind::KeyPress;
    message = m_messenger.Make(target, press ? WM_KEYDOWN : WM_KEYUP, event.key, 1 | (event.repeat ? kKeyRepeat : 0));
    if (press) {
        m_strText = event.text;
    }
    return Taken::Message;
}

HWND Keyboard::Target() const {
    if (!m_popups.IsEmpty()) {
        return m_popups.Last();
    }
    return m_activation.Focus() ? m_activation.Focus() : m_activation.Active();
}

std::string Keyboard::TakeText() {
    return std::exchange(m_strText, {});
}

void Keyboard::PostCharacters(HWND window, const std::string& text) {
    for (std::string_view rest = text; !rest.empty();) {
        const Utf8Character character = DecodeUtf8(rest);
        rest.remove_prefix(character.nLength);
        m_queue.Post(window, WM_CHAR, character.value, 1);
    }
}

}  // namespace veldan
