#pragma once

#include "platform/core/Geometry.h"
#include "platform/window/Handle.h"

#include <cstdint>

namespace veldan {

/// Tells second presses of double clicks from single ones.
class PressHistory {
public:
    /// Notes a press. True: it comes soon after one with the same button on the same window, near the same place.
    bool Press(HWND window, int button, CPoint screen, std::int64_t now);
    /// The next press is a first one.
    void Clear() { m_window = {}; }
    void Forget(HWND window);

private:
    HWND m_window;
    int m_nButton = 0;
    CPoint m_ptScreen;
    std::int64_t m_time = 0;
};

}  // namespace veldan
