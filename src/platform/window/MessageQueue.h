#pragma once

#include "platform/window/DesktopContext.h"
#include "platform/window/Messenger.h"

#include <deque>

namespace veldan {

/// What was posted, oldest first, and the wish to quit.
class MessageQueue final : public DestructionListener {
public:
    MessageQueue(DesktopContext& context, const WindowTree& tree, const Messenger& messenger)
        : m_context(context), m_tree(tree), m_messenger(messenger) {}

    /// False for a window that is gone.
    bool Post(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    void Add(const MSG& message);
    /// False: there is none.
    bool Take(MSG& message);
    [[nodiscard]] bool IsEmpty() const { return m_posted.empty(); }

    void PostQuit(int result);
    /// Once for each wish, after all that was posted: true.
    bool TakeQuit();
    [[nodiscard]] int QuitResult() const { return m_nQuitResult; }

    void OnDestroyed(HWND window) override;

private:
    DesktopContext& m_context;
    const WindowTree& m_tree;
    const Messenger& m_messenger;
    std::deque<MSG> m_posted;
    bool m_bQuit = false;
    int m_nQuitResult = 0;
};

}  // namespace veldan
