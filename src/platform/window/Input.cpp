#include "platform/window/Input.h"

#include <utility>

namespace veldan {

Input::Found Input::Next(MSG& message) {
    if (m_pointer.WantsRetest()) {
        if (std::optional<DisplayEvent> move = m_pointer.Retest()) {
            m_events.PutBack(std::move(*move));
        }
        return Found::Again;
    }
    m_events.ReadBetweenPaints();
    if (m_events.IsEmpty()) {
        return Found::Nothing;
    }
    DisplayEvent event = m_events.Take();
    switch (Take(event, message)) {
        case Taken::Message:
            return Found::Message;
        case Taken::Repeat:
            m_events.PutBack(std::move(event));
            return Found::Again;
        case Taken::Done:
            break;
    }
    return Found::Again;
}

Taken Input::Take(const DisplayEvent& event, MSG& message) {
    switch (event.kind) {
        case DisplayEventKind::PointerMove:
            return m_pointer.Moved(event, message);
        case DisplayEventKind::ButtonPress:
        case DisplayEventKind::ButtonRelease:
            return m_pointer.ButtonChanged(event, message);
        case DisplayEventKind::Wheel:
            return m_pointer.WheelTurned(event, message);
        case DisplayEventKind::KeyPress:
        case DisplayEventKind::KeyRelease:
            return m_keyboard.KeyChanged(event, message);
        default:
            TakeNews(event);
            return Taken::Done;
    }
}

/// Events of which no retrieved message is made.
void Input::TakeNews(const DisplayEvent& event) {
    const HWND window = HWND::FromValue(event.window);
    switch (event.kind) {
        case DisplayEventKind::PointerLeave:
            m_pointer.Left(event);
            break;
        case DisplayEventKind::FocusIn:
            m_activation.FocusReceived(window);
            break;
        case DisplayEventKind::OutsidePress:
            m_pointer.Left(event);
            m_outside.TakeForeign(event);
            break;
        case DisplayEventKind::FocusOut:
            m_activation.Deactivate();
            break;
        case DisplayEventKind::Moved:
            m_state.FrameMoved(window, event.rect);
            break;
        case DisplayEventKind::Hidden:
            m_state.Hide(window);
            break;
        case DisplayEventKind::CloseRequest:
            CloseRequested(window);
            break;
        case DisplayEventKind::Lost:
            m_state.DisplayLost();
            m_pointer.DisplayLost();
            m_activation.Deactivate();
            break;
        default:
            break;
    }
}

void Input::CloseRequested(HWND frame) {
    if (m_tree.TakesInput(frame)) {
        m_queue.Post(frame, WM_CLOSE);
    } else {
        m_activation.AlertModalOf(frame);
    }
}

}  // namespace veldan
