#pragma once

#include "platform/core/Clock.h"
#include "platform/window/Messages.h"
#include "platform/window/WindowTree.h"

#include <functional>
#include <utility>

namespace veldan {

/// Sees every message that a window is given, in the order in which they start.
using MessageObserver = std::function<void(const MSG& message, bool sent)>;

/// Gives windows their messages, at once and nested to any depth, and knows which one is being handled.
class Messenger {
public:
    Messenger(const WindowTree& tree, const Clock& clock) : m_tree(tree), m_clock(clock) {}

    /// 0 for a window that is gone.
    LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    /// Hands a retrieved message to its window.
    void Dispatch(const MSG& message);
    /// Shows a retrieved message to its window and all parents of that before it is dispatched; true: one of them has
    /// done with it.
    bool PreTranslate(MSG& message);

    /// The message whose handler runs, innermost.
    [[nodiscard]] const MSG& Current() const { return m_current; }
    MSG ExchangeCurrent(const MSG& message) { return std::exchange(m_current, message); }
    void SetObserver(MessageObserver observer) { m_observer = std::move(observer); }

    /// A message of this moment.
    [[nodiscard]] MSG Make(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    /// Where the pointer was last seen on the screen; messages carry it.
    [[nodiscard]] CPoint PointerPlace() const { return m_ptPointer; }
    void SetPointerPlace(CPoint screen) { m_ptPointer = screen; }
    /// The buttons and modifiers that the latest input came with; messages carry them.
    void SetInputFlags(UINT flags) { m_uInputFlags = flags; }

private:
    bool WalkUp(MSG& message);
    LRESULT Call(const WindowRecord& record, const MSG& message, bool sent);

    const WindowTree& m_tree;
    const Clock& m_clock;
    MessageObserver m_observer;
    MSG m_current;
    CPoint m_ptPointer;
    UINT m_uInputFlags = 0;
};

}  // namespace veldan
