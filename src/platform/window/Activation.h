#pragma once

#include "platform/window/FrameFlash.h"
#include "platform/window/InputQueue.h"
#include "platform/window/Messenger.h"
#include "platform/window/Popups.h"
#include "platform/window/TopLevelStack.h"

namespace veldan {

/// Which top-level window is active, and which window has the keyboard focus: one within the active window, or none.
class Activation final : public WindowListener {
public:
    Activation(DesktopContext& context, const WindowTree& tree, Messenger& messenger, InputQueue& input, Popups& popups,
               TopLevelStack& stack, FrameFlash& flash)
        : m_context(context),
          m_tree(tree),
          m_messenger(messenger),
          m_input(input),
          m_popups(popups),
          m_stack(stack),
          m_flash(flash) {}

    [[nodiscard]] HWND Focus() const { return m_focus; }
    [[nodiscard]] HWND Active() const { return m_active; }
    /// Moves the focus, and the activation with it. In a top-level window that can't be seen the wish waits until that
    /// is activated. Returns the window that had the focus.
    HWND SetFocus(HWND window);
    /// Activates the window and raises it with all that it owns. Does nothing for one that can't be seen or takes no
    /// input.
    void Activate(HWND topLevel);
    void Deactivate();
    /// The display has given the keyboard focus to this window.
    void FocusReceived(HWND topLevel);
    /// A button went down on this window, which is activated unless its style forbids that.
    void Press(HWND topLevel);
    /// Activates and flashes the window that is to be used before this disabled one.
    void AlertModalOf(HWND topLevel);

    void OnHiding(WindowRecord& record) override;
    void OnHidden(HWND window) override;
    void OnEnabledChanged(HWND window, bool enabled) override;
    void OnDestroyed(HWND window) override;

private:
    bool ChangeActive(HWND topLevel);
    void MoveFocusTo(HWND window);
    void Remember(HWND focus) const;
    [[nodiscard]] HWND SuccessorOf(HWND hidden) const;

    DesktopContext& m_context;
    const WindowTree& m_tree;
    Messenger& m_messenger;
    InputQueue& m_input;
    Popups& m_popups;
    TopLevelStack& m_stack;
    FrameFlash& m_flash;
    HWND m_focus;
    HWND m_active;
};

}  // namespace veldan
