#pragma once

#include "platform/window/Activation.h"
#include "platform/window/MessageQueue.h"

namespace veldan {

/// Makes messages of the display's keys, for the window that has the focus.
class Keyboard {
public:
    Keyboard(const Messenger& messenger, MessageQueue& queue, const Activation& activation)
        : m_messenger(messenger), m_queue(queue), m_activation(activation) {}

    Taken KeyChanged(const DisplayEvent& event, MSG& message);

private:
    void PostCharacters(HWND window, const std::string& text);

    const Messenger& m_messenger;
    MessageQueue& m_queue;
    const Activation& m_activation;
};

}  // namespace veldan
