#pragma once

#include "platform/window/Input.h"
#include "platform/window/Timers.h"

#include <functional>
#include <utility>

namespace veldan {

/// Retrieves messages in their order (posted, quit, input, painting, hovers and timers) and hands them out.
class MessageLoop {
public:
    MessageLoop(DesktopContext& context, Messenger& messenger, MessageQueue& queue, InputQueue& events, Input& input,
                Painting& painting, Surfaces& surfaces, Pointer& pointer, Keyboard& keyboard, Timers& timers,
                FrameFlash& flash)
        : m_context(context),
          m_messenger(messenger),
          m_queue(queue),
          m_events(events),
          m_input(input),
          m_painting(painting),
          m_surfaces(surfaces),
          m_pointer(pointer),
          m_keyboard(keyboard),
          m_timers(timers),
          m_flash(flash) {}

    /// Handles everything that waits, without blocking.
    void Dispatch();
    /// Pumps until a quit message; its result.
    int Run();
    /// Waits for one message and handles it. False: it was the quit message, or the host quits.
    bool Pump();
    /// Handles messages for as long as `goesOn` answers true, which is asked after each. False: ended by a quit
    /// message, which is posted on, or because the host quits.
    bool RunWhile(const std::function<bool()>& goesOn);
    void SetWaitFunction(WaitFunction wait) { m_wait = std::move(wait); }
    /// Takes the next message without waiting; false: there is none.
    bool Peek(MSG& message);
    void TranslateAndDispatch(MSG& message);
    /// Shows what was drawn, sends out requests, takes in what the display has read, and leaves the descriptor readable
    /// if and only if something waits.
    void Settle();

private:
    void Wait();
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
    Keyboard& m_keyboard;
    Timers& m_timers;
    FrameFlash& m_flash;
    WaitFunction m_wait;
    int m_nRunning = 0;  // loops inside one another
    bool m_bHostQuits = false;
};

}  // namespace veldan
