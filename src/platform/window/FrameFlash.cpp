#include "platform/window/FrameFlash.h"

#include "platform/draw/Brush.h"

#include <array>

namespace veldan {

namespace {

constexpr int kFlashes = 3;
constexpr std::int64_t kStepTime = 70;  // milliseconds
constexpr int kWidth = 3;               // pixels, of which the innermost one is dark

std::array<CRect, 4> Edges(const CRect& rect) {
    return {{{rect.left, rect.top, rect.right, rect.top + kWidth},
             {rect.left, rect.bottom - kWidth, rect.right, rect.bottom},
             {rect.left, rect.top, rect.left + kWidth, rect.bottom},
             {rect.right - kWidth, rect.top, rect.right, rect.bottom}}};
}

}  // namespace

void FrameFlash::Start(HWND topLevel) {
    Erase();
    m_window = topLevel;
    m_nSteps = 2 * kFlashes;
    m_due = m_context.Now();
    m_context.Wake();
}

void FrameFlash::StepIfDue() {
    if (m_nSteps == 0 || m_due > m_context.Now()) {
        return;
    }
    m_due = m_context.Now() + kStepTime;
    if (m_nSteps-- % 2 == 0) {
        Draw();
    } else {
        Erase();
    }
}

/// Light and dark, so that it shows on anything.
void FrameFlash::Draw() {
    CDC dc;
    dc.Attach(m_painting.WindowDC(m_window));
    const WindowRecord* record = m_tree.Find(m_window);
    if (record == nullptr || !record->visible) {
        m_nSteps = 0;
        return;
    }
    const CRect rect = record->ClientRect();
    for (const CRect& edge : Edges(rect)) {
        dc.FillSolidRect(edge, RGB(255, 255, 255));
    }
    dc.FrameRect({rect.left + kWidth - 1, rect.top + kWidth - 1, rect.right - kWidth + 1, rect.bottom - kWidth + 1},
                 CBrush(RGB(0, 0, 0)));
    m_surfaces.AddDirty(m_window, Region(rect));
}

void FrameFlash::Erase() {
    WindowRecord* record = m_tree.Find(m_window);
    if (record == nullptr || !record->visible) {
        return;
    }
    for (const CRect& edge : Edges(record->ClientRect())) {
        m_painting.Invalidate(*record, edge, true);
    }
}

}  // namespace veldan
