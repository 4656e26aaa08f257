#pragma once

#include "platform/core/Geometry.h"
#include "platform/window/Handle.h"
#include "platform/window/Styles.h"

#include <cstdint>

namespace veldan {

/// What the window that the pointer is in has asked for: to hear of a resting pointer, of its leaving, or both. Times
/// are milliseconds of one clock.
class HoverTracking {
public:
    /// Adds to what the window asked for before. The hover time starts anew at each call that asks for hovering.
    void Ask(HWND window, UINT flags, UINT hoverTime, CPoint pointer, std::int64_t now);
    /// The pointer moved within the window; leaving a small box around its resting place starts the hover time anew.
    void PointerMoved(HWND window, CPoint pointer, std::int64_t now);
    /// Forgets all that was asked for. Returns the window that wanted to hear of the leaving, or null.
    HWND End();
    /// Forgets what this window asked for.
    void Forget(HWND window);

    /// Once for each wish, when the pointer has rested for long enough: the window, else null.
    HWND TakeDue(std::int64_t now);
    /// When TakeDue has something; -1: it won't.
    [[nodiscard]] std::int64_t NextDue() const { return m_bHover ? m_due : -1; }

private:
    HWND m_window;
    bool m_bHover = false;
    bool m_bLeave = false;
    UINT m_nHoverTime = 0;
    CPoint m_ptAnchor;
    std::int64_t m_due = 0;
};

}  // namespace veldan
