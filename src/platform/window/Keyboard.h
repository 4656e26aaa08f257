#pragma once

#include "platform/window/Activation.h"
#include "platform/window/MessageQueue.h"
#include "platform/window/Popups.h"

#include <string>

namespace veldan {

/// Makes messages of the display's keys, for the open popup or else the window that has the focus.
class Keyboard {
public:
    Keyboard(const WindowTree& tree, Messenger& messenger, MessageQueue& queue, const Activation& activation,
             const Popups& popups)
        : m_tree(tree), m_messenger(messenger), m_queue(queue), m_activation(activation), m_popups(popups) {}

    Taken KeyChanged(const DisplayEvent& event, MSG& message);
    /// What the key of the latest WM_KEYDOWN typed. Taken before anybody sees that message: who does may run a loop.
    [[nodiscard]] std::string TakeText();
    /// Posts characters to a window, a WM_CHAR for each code point.
    void PostCharacters(HWND window, const std::string& text);

private:
    [[nodiscard]] HWND Target() const;

    const WindowTree& m_tree;
    Messenger& m_messenger;
    MessageQueue& m_queue;
    const Activation& m_activation;
    const Popups& m_popups;
    std::string m_strText;
};

}  // namespace veldan
