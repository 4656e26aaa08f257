#pragma once

#include "platform/window/WindowState.h"

namespace veldan {

struct CREATESTRUCT;

/// Makes windows and destroys them, in the order of messages that their objects rely on.
class WindowLife {
public:
    WindowLife(DesktopContext& context, WindowTree& tree, Messenger& messenger, WindowState& state)
        : m_context(context), m_tree(tree), m_messenger(messenger), m_state(state) {}

    /// Null if the parent of a child is gone, or the window did not survive its own creation.
    HWND Create(CWnd& object, const WindowClass& windowClass, const CREATESTRUCT& create);
    bool Destroy(HWND window);
    /// Attaches another object to a window; the one before is left without a window. False if the window is gone.
    bool ReplaceObject(HWND window, CWnd& object);
    /// Forgets the object of a window whose object is being deleted.
    void DetachObject(HWND window);

private:
    void DestroyOwned(HWND owner);
    void SendDestroy(HWND window);
    void FinishDestroy(HWND window);

    DesktopContext& m_context;
    WindowTree& m_tree;
    Messenger& m_messenger;
    WindowState& m_state;
};

}  // namespace veldan
