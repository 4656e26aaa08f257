#pragma once

#include "platform/window/DesktopContext.h"
#include "platform/window/WindowTree.h"

namespace veldan {

/// The order of the top-level windows, in the tree and on the display.
class TopLevelStack {
public:
    TopLevelStack(DesktopContext& context, WindowTree& tree) : m_context(context), m_tree(tree) {}

    /// `sibling` counts for Stacking::Below only.
    void Restack(WindowRecord& record, Stacking stacking, HWND sibling);
    /// Puts the window on top of all others, and what it owns above it in the order in which that is already.
    void Raise(HWND topLevel);
    /// The same, only if another own window than those it owns lies above it.
    void RaiseIfBelow(HWND topLevel);
    /// A window manager has raised the window by itself: what it owns follows.
    void NoteRaised(HWND topLevel);

private:
    DesktopContext& m_context;
    WindowTree& m_tree;
};

}  // namespace veldan
