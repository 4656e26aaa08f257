#include "platform/window/InputQueue.h"

#include <utility>

namespace veldan {

namespace {

constexpr int kMaxPaintsInARow = 32;          // before the display is asked for input again
constexpr std::int64_t kMaxTimeOfPaints = 4;  // milliseconds of paints that are long enough to ask, too

}  // namespace

void InputQueue::Read() {
    DisplayEvent event;
    while (m_context.GetDisplayQuietly().NextEvent(event)) {
        m_events.push_back(std::move(event));
    }
}

void InputQueue::ReadBetweenPaints() {
    const std::int64_t now = m_context.Now();
    if (m_nPaintsSinceRead % kMaxPaintsInARow == 0 || now - m_readAt >= kMaxTimeOfPaints) {
        m_readAt = now;
        Read();
    }
}

DisplayEvent InputQueue::Take() {
    DisplayEvent event = std::move(m_events.front());
    m_events.pop_front();
    return event;
}

void InputQueue::PutBack(DisplayEvent event) {
    m_events.push_front(std::move(event));
}

void InputQueue::DropFocusNews() {
    std::erase_if(m_events, [](const DisplayEvent& event) {
        return event.kind == DisplayEventKind::FocusIn || event.kind == DisplayEventKind::FocusOut;
    });
}

bool InputQueue::DropHidden(TopLevelId window) {
    Read();
    return std::erase_if(m_events, [window](const DisplayEvent& event) {
               return event.kind == DisplayEventKind::Hidden && event.window == window;
           }) != 0;
}

}  // namespace veldan
