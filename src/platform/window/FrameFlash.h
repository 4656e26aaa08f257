#pragma once

#include "platform/window/Painting.h"

namespace veldan {

/// Makes the frame of a window flash a few times, to show who has to be answered first.
class FrameFlash {
public:
    FrameFlash(DesktopContext& context, const WindowTree& tree, Painting& painting, Surfaces& surfaces)
        : m_context(context), m_tree(tree), m_painting(painting), m_surfaces(surfaces) {}

    /// Starts anew where the window flashes already; another one that does stops.
    void Start(HWND topLevel);
    /// Changes the frame if it is time to.
    void StepIfDue();
    /// When the next step is due; -1: nothing flashes.
    [[nodiscard]] std::int64_t NextDue() const { return m_nSteps > 0 ? m_due : -1; }

private:
    void Draw();
    void Erase();

    DesktopContext& m_context;
    const WindowTree& m_tree;
    Painting& m_painting;
    Surfaces& m_surfaces;
    HWND m_window;
    int m_nSteps = 0;  // left; the frame is drawn at the even ones and goes at the odd ones
    std::int64_t m_due = 0;
};

}  // namespace veldan
