#include "platform/window/HoverTracking.h"

#include <cstdlib>
#include <utility>

namespace veldan {

namespace {

constexpr int kHoverBox = 4;  // pixels a side of the box that a resting pointer stays in

bool IsWithinBox(CPoint a, CPoint b) {
    return std::abs(a.x - b.x) <= kHoverBox / 2 && std::abs(a.y - b.y) <= kHoverBox / 2;
}

}  // namespace

void HoverTracking::Ask(HWND window, UINT flags, UINT hoverTime, CPoint pointer, std::int64_t now) {
    m_window = window;
    m_bLeave = m_bLeave || (flags & TME_LEAVE) != 0;
    if ((flags & TME_HOVER) != 0) {
        m_bHover = true;
        m_nHoverTime = hoverTime;
        m_ptAnchor = pointer;
        m_due = now + hoverTime;
    }
}

void HoverTracking::PointerMoved(HWND window, CPoint pointer, std::int64_t now) {
    if (m_bHover && m_window == window && !IsWithinBox(m_ptAnchor, pointer)) {
        m_ptAnchor = pointer;
        m_due = now + m_nHoverTime;
    }
}

HWND HoverTracking::End() {
    const HoverTracking ended = std::exchange(*this, {});
    return ended.m_bLeave ? ended.m_window : HWND();
}

void HoverTracking::Forget(HWND window) {
    if (m_window == window) {
        *this = {};
    }
}

HWND HoverTracking::TakeDue(std::int64_t now) {
    if (!m_bHover || m_due > now) {
        return {};
    }
    m_bHover = false;
    return m_window;
}

}  // namespace veldan
