#pragma once

#include "platform/draw/DC.h"
#include "platform/window/DesktopContext.h"
#include "platform/window/WindowTree.h"

#include <memory>

namespace veldan {

/// The pixels of the top-level windows, into which their children draw as well, and what of them is to be shown.
class Surfaces {
public:
    Surfaces(DesktopContext& context, const WindowTree& tree) : m_context(context), m_tree(tree) {}

    /// A device context on the window's pixels, limited to `clip`, which lies on the surface.
    [[nodiscard]] HDC DCOf(const WindowRecord& record, const Region& clip);
    /// What was drawn there, on the surface of the window's top-level window, is to be shown.
    void AddDirty(HWND window, const Region& area);
    void Present(const WindowRecord& topLevel);
    void PresentAll();

    /// The pixels of a top-level window of another size don't fit it any more.
    void Drop(const WindowRecord& topLevel);

private:
    [[nodiscard]] const std::shared_ptr<Surface>& SurfaceOf(HWND window);

    DesktopContext& m_context;
    const WindowTree& m_tree;
};

}  // namespace veldan
