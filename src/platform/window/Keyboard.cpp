#include "platform/window/Keyboard.h"

namespace veldan {

Taken Keyboard::KeyChanged(const DisplayEvent& event, MSG& message) {
    const HWND target = m_activation.Focus() ? m_activation.Focus() : m_activation.Active();
    if (!target) {
        return Taken::Done;
    }
    const bool press = event.kind == DisplayEventKind::KeyPress;
    message = m_messenger.Make(target, press ? WM_KEYDOWN : WM_KEYUP, event.key, 1);
    if (press) {
        PostCharacters(target, event.text);
    }
    return Taken::Message;
}

void Keyboard::PostCharacters(HWND window, const std::string& text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i++]);
        const int more = lead < 0xc0 ? 0 : lead < 0xe0 ? 1 : lead < 0xf0 ? 2 : 3;
        UINT code = more == 0 ? lead : lead & (0x3fU >> more);
        for (int k = 0; k < more && i < text.size(); ++k) {
            code = code << 6 | (static_cast<unsigned char>(text[i++]) & 0x3fU);
        }
        m_queue.Post(window, WM_CHAR, code, 1);
    }
}

}  // namespace veldan
