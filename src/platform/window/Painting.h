#pragma once

#include "platform/window/Messenger.h"
#include "platform/window/Surfaces.h"

#include <vector>

namespace veldan {

/// What is left to paint: update regions, their erasing, and the order in which windows are painted, parents before
/// children.
class Painting final : public WindowListener {
public:
    Painting(DesktopContext& context, const WindowTree& tree, Messenger& messenger, Surfaces& surfaces)
        : m_context(context), m_tree(tree), m_messenger(messenger), m_surfaces(surfaces) {}

    /// The children in the area follow when it is painted, so that invalidating costs the same for any number of them.
    void Invalidate(WindowRecord& record, const CRect& client, bool erase);
    /// Paints what is left of the window and its children.
    void Update(HWND window);
    /// Asks again for what was left to paint when the window was hidden.
    void ResumeTree(WindowRecord& record);

    /// The next window to paint, or null; it is to be given to Paint.
    [[nodiscard]] HWND Next() { return NextWithin({}); }
    /// Sends WM_PAINT, if there is something to paint.
    void Paint(HWND window);
    [[nodiscard]] bool HasWork() const;

    /// A device context on the window's pixels, after its pending erase and those of its ancestors have run.
    [[nodiscard]] HDC WindowDC(HWND window);
    /// The same, limited to what is left to paint, which counts as painted from now on. `area`: what that was.
    [[nodiscard]] HDC BeginPaint(HWND window, Region& area);

    void OnAdded(WindowRecord& record) override;
    void OnShown(WindowRecord& record) override;
    void OnHiding(WindowRecord& record) override;
    void OnPlaced(WindowRecord& record, const CRect& before) override;
    void OnRestacked(WindowRecord& record) override;

private:
    /// What a pending erase leaves out: nothing where the pixels are to be read or drawn on, and the children that
    /// cover their own where all of it is painted anew.
    enum class EraseArea { Whole, AroundOpaqueChildren };

    void InvalidateParent(const WindowRecord& record, const CRect& area);
    void InvalidateChildren(const WindowRecord& record, const Region& area);
    void Queue(WindowRecord& record);
    [[nodiscard]] HWND NextWithin(HWND ancestor);
    void EraseNow(HWND window, EraseArea wanted);
    void SubtractOpaqueChildren(const WindowRecord& record, CPoint origin, Region& clip) const;

    DesktopContext& m_context;
    const WindowTree& m_tree;
    Messenger& m_messenger;
    Surfaces& m_surfaces;
    std::vector<std::vector<HWND>> m_byDepth;
};

}  // namespace veldan
