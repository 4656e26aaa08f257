#include "platform/window/MessageQueue.h"

#include <utility>

namespace veldan {

bool MessageQueue::Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (m_tree.Find(window) == nullptr) {
        return false;
    }
    Add(m_messenger.Make(window, message, wParam, lParam));
    return true;
}

void MessageQueue::Add(const MSG& message) {
    m_posted.push_back(message);
    m_context.Wake();
}

bool MessageQueue::Take(MSG& message) {
    if (m_posted.empty()) {
        return false;
    }
    message = m_posted.front();
    m_posted.pop_front();
    return true;
}

void MessageQueue::PostQuit(int result) {
    m_bQuit = true;
    m_context.Wake();
    m_nQuitResult = result;
}

bool MessageQueue::TakeQuit() {
    return m_posted.empty() && std::exchange(m_bQuit, false);
}

void MessageQueue::OnDestroyed(HWND window) {
    std::erase_if(m_posted, [window](const MSG& message) { return message.hwnd == window; });
}

}  // namespace veldan
