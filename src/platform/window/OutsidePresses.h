#pragma once

#include "platform/window/Activation.h"

namespace veldan {

/// Tells shown popups of presses outside of them. A press counts for a window only if it was made after the window's
/// latest show: an earlier one was meant for what was there then.
class OutsidePresses {
public:
    OutsidePresses(const WindowTree& tree, Messenger& messenger, Activation& activation, Popups& popups)
        : m_tree(tree), m_messenger(messenger), m_activation(activation), m_popups(popups) {}

    /// A press where no own window is: ends the open popups, where there are any, and does nothing else then. Or it
    /// takes the activation, and with it the focus, from an own window that it counts for, and goes on as Tell.
    void TakeForeign(const DisplayEvent& press);
    /// Sends WM_OUTSIDEPRESS to each shown popup that the press is outside of: outside of it and of what it owns. One
    /// that owns a shown popup or dialog is left out, since that takes the press first. Any window may be gone
    /// afterwards.
    void Tell(const DisplayEvent& press);

private:
    [[nodiscard]] bool OwnsShownPopup(HWND owner) const;

    const WindowTree& m_tree;
    Messenger& m_messenger;
    Activation& m_activation;
    Popups& m_popups;
};

}  // namespace veldan
