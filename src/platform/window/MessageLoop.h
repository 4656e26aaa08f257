#pragma once

#include "platform/window/Input.h"
#include "platform/window/Timers.h"

namespace veldan {

/// Retrieves messages in their order (posted, quit, input, painting, hovers and timers) and hands them out.
class MessageLoop {
public:
    MessageLoop(DesktopContext& context, Messenger& messenger, MessageQueue& queue, InputQueue& events, Input& input,
                Painting& painting, Surfaces& surfaces, Pointer& pointer, Timers& timers)
        : m_context(context),
          m_messenger(messenger),
          m_queue(queue),
          m_events(events),
          m_input(input),
          m_painting(painting),
          m_surfaces(surfaces),
          m_pointer(pointer),
          m_timers(timers) {}

    /// Handles everything that waits, without blocking.
    void Dispatch();
    /// Waits for one message and handles it. False: it was the quit message.
    bool Pump();
    /// Takes the next message without waiting; false: there is none.
    bool Peek(MSG& message);
    void TranslateAndDispatch(MSG& message);
    /// Shows what was drawn, sends out requests, takes in what the display has read, and leaves the descriptor readable
    /// if and only if something waits.
    void Settle();

private:
    bool NextPaint(MSG& message);
    [[nodiscard]] bool HasWork() const;
    [[nodiscard]] std::int64_t NextDue() const;

    DesktopContext& m_context;
    Messenger& m_messenger;
    MessageQueue& m_queue;
    InputQueue& m_events;
    Input& m_input;
    Painting& m_painting;
    Surfaces& m_surfaces;
    Pointer& m_pointer;
    Timers& m_timers;
};

}  // namespace veldan
