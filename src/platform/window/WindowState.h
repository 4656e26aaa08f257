#pragma once

#include "platform/window/Activation.h"
#include "platform/window/Painting.h"

namespace veldan {

/// Shows, places, stacks and enables windows: changes the tree and the display, and tells the windows.
class WindowState {
public:
    WindowState(DesktopContext& context, WindowTree& tree, Messenger& messenger, InputQueue& events,
                TopLevelStack& stack, Painting& painting, Surfaces& surfaces, Activation& activation)
        : m_context(context),
          m_tree(tree),
          m_messenger(messenger),
          m_events(events),
          m_stack(stack),
          m_painting(painting),
          m_surfaces(surfaces),
          m_activation(activation) {}

    /// Tells whether the window was visible before.
    bool Show(HWND window, ShowCommand command);
    void Hide(HWND window);
    bool Place(HWND window, const CRect& rect, Stacking stacking, HWND sibling, UINT flags);
    /// `modal`: who has the input of a top-level window while it is disabled, or null. Tells whether it was disabled.
    bool Enable(HWND window, bool enable, HWND modal);
    bool ModifyStyle(HWND window, UINT remove, UINT add);
    void SetText(HWND window, const CString& text);

    /// A window manager has put the frame there.
    void FrameMoved(HWND window, const CRect& rect);
    /// With the display gone nothing can be seen any more; the windows live on until they are destroyed.
    void DisplayLost();

private:
    void ShowChild(WindowRecord& record);
    void ShowTopLevel(HWND window, bool activate);
    void SendPlaceMessages(HWND window, const CRect& before, const CRect& after);

    DesktopContext& m_context;
    WindowTree& m_tree;
    Messenger& m_messenger;
    InputQueue& m_events;
    TopLevelStack& m_stack;
    Painting& m_painting;
    Surfaces& m_surfaces;
    Activation& m_activation;
};

}  // namespace veldan
