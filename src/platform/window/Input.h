#pragma once

#include "platform/window/Keyboard.h"
#include "platform/window/Pointer.h"
#include "platform/window/WindowState.h"

namespace veldan {

/// Takes the display's events to the parts that they are about.
class Input {
public:
    Input(const WindowTree& tree, InputQueue& events, MessageQueue& queue, Pointer& pointer, Keyboard& keyboard,
          Activation& activation, OutsidePresses& outside, WindowState& state)
        : m_tree(tree),
          m_events(events),
          m_queue(queue),
          m_pointer(pointer),
          m_keyboard(keyboard),
          m_activation(activation),
          m_outside(outside),
          m_state(state) {}

    /// What a look for input gave: nothing, a message, or something that makes the whole queue worth another look.
    enum class Found { Nothing, Message, Again };
    Found Next(MSG& message);
    [[nodiscard]] bool HasWork() const { return !m_events.IsEmpty() || m_pointer.WantsRetest(); }

private:
    Taken Take(const DisplayEvent& event, MSG& message);
    void TakeNews(const DisplayEvent& event);
    void CloseRequested(HWND frame);

    const WindowTree& m_tree;
    InputQueue& m_events;
    MessageQueue& m_queue;
    Pointer& m_pointer;
    Keyboard& m_keyboard;
    Activation& m_activation;
    OutsidePresses& m_outside;
    WindowState& m_state;
};

}  // namespace veldan
