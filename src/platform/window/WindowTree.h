#pragma once

#include "platform/window/Styles.h"
#include "platform/window/WindowListener.h"
#include "platform/window/WindowTable.h"

#include <vector>

namespace veldan {

/// The rectangle with sides that displays can show.
[[nodiscard]] CRect ClampSides(const CRect& rect);

/// All windows: their relations, places, flags and stacking. Tells its listeners of each change, but sends no messages
/// and knows no display; whoever changes a window does that.
class WindowTree {
public:
    void ListenToDestruction(DestructionListener& listener) { m_destructionListeners.push_back(&listener); }
    /// To destruction, too.
    void Listen(WindowListener& listener) {
        m_listeners.push_back(&listener);
        ListenToDestruction(listener);
    }
    /// Calls every listener, for what the tree can't know of by itself.
    template <class... Parameters, class... Arguments>
    void Announce(void (WindowListener::*event)(Parameters...), Arguments&&... arguments) const {
        for (WindowListener* listener : m_listeners) {
            (listener->*event)(arguments...);
        }
    }

    [[nodiscard]] WindowRecord* Find(HWND window) const { return m_table.Find(window); }
    [[nodiscard]] std::size_t Count() const { return m_table.Count(); }
    /// The top-level windows from the topmost to the lowest.
    [[nodiscard]] const std::vector<HWND>& TopLevels() const { return m_topLevels; }

    // Relations.

    /// The parent of a child, the owner of a top-level window.
    [[nodiscard]] HWND ParentOf(HWND window) const;
    [[nodiscard]] HWND TopLevelOf(HWND window) const;
    [[nodiscard]] bool IsWithin(HWND window, HWND ancestor) const;
    [[nodiscard]] HWND ChildWithId(HWND parent, UINT id) const;
    [[nodiscard]] std::vector<HWND> ChildrenOf(HWND parent) const;
    [[nodiscard]] std::vector<HWND> VisibleChildrenOf(HWND parent) const;
    [[nodiscard]] HWND TopmostVisibleFrame() const;

    // Places.

    /// The window on the screen.
    [[nodiscard]] CRect WindowRect(HWND window) const;
    [[nodiscard]] bool IsVisible(HWND window) const;
    /// Where the window's client corner lies on its top-level window's surface.
    [[nodiscard]] CPoint OriginOf(const WindowRecord& record) const;
    /// The window's pixels on the surface, without what lies outside of its ancestors or under siblings above it; none
    /// for a hidden child and what is in it. Its own children are not taken out: they are painted after it. A hidden
    /// top-level window can be drawn on as a visible one can.
    [[nodiscard]] Region VisibleRegion(const WindowRecord& record) const;
    /// The deepest visible window at a point of the screen within a top-level window that takes input, or null.
    [[nodiscard]] HWND WindowAt(HWND topLevel, CPoint screen) const;

    // Input.

    /// Whether input may go to the window: it and all its ancestors are enabled, and it isn't being destroyed. Asked
    /// for the pointer, keys, the focus, the activation and what a window manager wants of a window.
    [[nodiscard]] bool TakesInput(HWND window) const;
    /// Who is to be used before a disabled top-level window: the visible window that it was disabled for, over any
    /// number of such; else the topmost one that it owns; null if none of them takes input.
    [[nodiscard]] HWND ModalOf(HWND topLevel) const;
    /// The window and all that it owns, each below what it owns, from the topmost to the lowest.
    [[nodiscard]] std::vector<HWND> WithOwned(HWND topLevel) const;

    // Changes.

    /// Adds a hidden window: a child below its siblings, or, without a parent, a top-level window above the others.
    WindowRecord& Add(HWND parent, HWND owner, const CRect& rect);
    void Remove(HWND window);
    void SetVisible(WindowRecord& record, bool visible);
    void SetRect(WindowRecord& record, const CRect& rect);
    /// False for a child: nothing changes, it is there already or the sibling is none. That counts for Stacking::Below
    /// only.
    bool Restack(WindowRecord& record, Stacking stacking, HWND sibling);

private:
    void Unlink(const WindowRecord& record);
    void RenumberChildren(const WindowRecord& parent);
    bool RestackChild(const WindowRecord& record, Stacking stacking, HWND sibling);
    bool RestackTopLevel(HWND window, Stacking stacking, HWND sibling);

    WindowTable m_table;
    std::vector<HWND> m_topLevels;
    std::vector<WindowListener*> m_listeners;
    std::vector<DestructionListener*> m_destructionListeners;
};

}  // namespace veldan
