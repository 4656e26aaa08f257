#include "platform/window/Messenger.h"

#include "platform/window/Wnd.h"

#include <utility>

namespace veldan {

LRESULT Messenger::Call(const WindowRecord& record, const MSG& message, bool sent) {
    CWnd* object = record.object;
    if (object == nullptr) {
        return 0;
    }
    const MSG outer = std::exchange(m_current, message);
    if (m_observer) {
        m_observer(m_current, sent);
    }
    const LRESULT result = object->WindowProc(message.message, message.wParam, message.lParam);
    m_current = outer;
    return result;
}

LRESULT Messenger::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const WindowRecord* record = m_tree.Find(window);
    return record != nullptr ? Call(*record, Make(window, message, wParam, lParam), true) : 0;
}

void Messenger::Dispatch(const MSG& message) {
    if (const WindowRecord* record = m_tree.Find(message.hwnd)) {
        MSG dispatched = Make(message.hwnd, message.message, message.wParam, message.lParam);
        dispatched.flags = message.flags;
        Call(*record, dispatched, false);
    }
}

bool Messenger::PreTranslate(MSG& message) {
    const MSG outer = std::exchange(m_current, message);
    const bool isDone = WalkUp(message);
    m_current = outer;
    return isDone;
}

bool Messenger::WalkUp(MSG& message) {
    for (HWND window = message.hwnd; window;) {
        const WindowRecord* record = m_tree.Find(window);
        if (record == nullptr) {
            break;
        }
        const HWND parent = record->parent;
        if (record->object != nullptr && record->object->PreTranslateMessage(message)) {
            return true;
        }
        window = parent;
    }
    return false;
}

MSG Messenger::Make(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
    return {window, message, wParam, lParam, m_clock.Now(), m_ptPointer, m_uInputFlags};
}

}  // namespace veldan
