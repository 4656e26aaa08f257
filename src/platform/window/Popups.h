#pragma once

#include "platform/window/DesktopContext.h"
#include "platform/window/Messenger.h"

#include <vector>

namespace veldan {

/// The chain of open popups: drop lists, and menus with the menus that they opened. While there is one, keys go to the
/// last, the pointer is for the chain alone, and a press elsewhere ends the chain and does nothing else. None of them
/// takes the focus, and each ends with the window that it was opened for. There is one chain at a time.
///
/// A popup that ends is sent WM_CANCELMODE, when it is no longer in the chain; it then hides or destroys itself.
class Popups final : public WindowListener {
public:
    Popups(DesktopContext& context, const WindowTree& tree, Messenger& messenger)
        : m_context(context), m_tree(tree), m_messenger(messenger) {}

    /// Adds a top-level window to the chain, on behalf of a window: one within a popup of the chain, whose later popups
    /// end then, or any other, with which a new chain begins. False if either is gone by then.
    bool Open(HWND popup, HWND owner);
    /// Takes a popup out that ends by itself, and ends those that it opened. Nothing if it isn't in the chain.
    void Close(HWND popup);
    /// Ends the whole chain.
    void CancelAll() { CancelFrom(0); }

    [[nodiscard]] bool IsEmpty() const { return m_chain.empty(); }
    /// The popup that keys go to, or null.
    [[nodiscard]] HWND Last() const { return m_chain.empty() ? HWND() : m_chain.back().popup; }
    /// Whether a window may hear of the pointer: any without a chain, else those within its popups.
    [[nodiscard]] bool LetsThrough(HWND window) const;
    /// A press on a window, or on none. True: it ended the chain, and nothing more is to come of it.
    bool EatsPress(HWND window);

    void OnHidden(HWND window) override;
    void OnEnabledChanged(HWND window, bool enabled) override;
    void OnDestroyed(HWND window) override;

private:
    struct Link {
        HWND popup;
        HWND owner;
    };

    [[nodiscard]] std::size_t PlaceOf(HWND window) const;
    void CancelFrom(std::size_t place);
    void CancelOwnedBy(HWND window);

    DesktopContext& m_context;
    const WindowTree& m_tree;
    Messenger& m_messenger;
    std::vector<Link> m_chain;
};

}  // namespace veldan
