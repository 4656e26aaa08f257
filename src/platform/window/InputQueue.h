#pragma once

#include "platform/window/DesktopContext.h"

#include <deque>

namespace veldan {

/// What became of an event: it is done with, it made a message, or what it caused to be posted comes first and then the
/// event once more.
enum class Taken { Done, Message, Repeat };

/// The display's events that were read and not handled yet, oldest first.
class InputQueue {
public:
    explicit InputQueue(DesktopContext& context) : m_context(context) {}

    /// Takes in what the display has.
    void Read();
    /// The same, but in a row of paints only now and then: asking a connection costs as much as painting a small
    /// window.
    void ReadBetweenPaints();
    void CountPaint() { ++m_nPaintsSinceRead; }
    void EndRowOfPaints() { m_nPaintsSinceRead = 0; }

    [[nodiscard]] bool IsEmpty() const { return m_events.empty(); }
    /// Not to be called on an empty queue.
    [[nodiscard]] DisplayEvent Take();
    /// The event is handled again, after what was posted meanwhile.
    void PutBack(DisplayEvent event);
    /// What was read about the focus so far no longer counts.
    void DropFocusNews();
    /// Whether another program has hidden the window and the news of it still wait; they no longer count.
    bool DropHidden(TopLevelId window);

private:
    DesktopContext& m_context;
    std::deque<DisplayEvent> m_events;
    int m_nPaintsSinceRead = 0;
    std::int64_t m_readAt = 0;
};

}  // namespace veldan
