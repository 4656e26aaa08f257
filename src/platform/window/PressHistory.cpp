#include "platform/window/PressHistory.h"

#include <cstdlib>
#include <utility>

namespace veldan {

namespace {

constexpr int kMaxDoubleClickTime = 500;    // milliseconds between the two presses
constexpr int kMaxDoubleClickDistance = 4;  // pixels that the pointer may stray between them

}  // namespace

bool PressHistory::Press(HWND window, int button, CPoint screen, std::int64_t now) {
    const PressHistory last = *this;
    m_window = window;
    m_nButton = button;
    m_ptScreen = screen;
    m_time = now;
    const CPoint strayed = screen - last.m_ptScreen;
    return last.m_window == window && last.m_nButton == button && now - last.m_time <= kMaxDoubleClickTime &&
           std::abs(strayed.x) <= kMaxDoubleClickDistance && std::abs(strayed.y) <= kMaxDoubleClickDistance;
}

void PressHistory::Forget(HWND window) {
    if (m_window == window) {
        Clear();
    }
}

}  // namespace veldan
