#include "platform/window/Activation.h"

namespace veldan {

HWND Activation::SetFocus(HWND window) {
    const HWND before = m_focus;
    if (!window) {
        MoveFocusTo({});
        return before;
    }
    if (!m_tree.TakesInput(window)) {
        return before;
    }
    const HWND topLevel = m_tree.TopLevelOf(window);
    if (topLevel != m_active) {
        Activate(topLevel);
    }
    if (topLevel == m_active) {
        MoveFocusTo(window);
    }
    return before;
}

/// The new focus stands before anybody hears of it, and a handler that moves it on has the last word.
void Activation::MoveFocusTo(HWND window) {
    const HWND before = m_focus;
    if (before == window) {
        return;
    }
    m_focus = window;
    if (const WindowRecord* record = m_tree.Find(window); record != nullptr && record->IsChild()) {
        m_tree.Find(m_tree.TopLevelOf(window))->topLevel->lastFocus = window;
    }
    m_messenger.Send(before, WM_KILLFOCUS, window.Value());
    if (m_focus == window) {
        m_messenger.Send(window, WM_SETFOCUS, before.Value());
    }
}

void Activation::Activate(HWND topLevel) {
    if (!m_tree.TakesInput(topLevel) || !m_tree.IsVisible(topLevel) || topLevel == m_active) {
        return;
    }
    if (!ChangeActive(topLevel)) {
        return;
    }
    // The news of a frame made just now would close the menu that its host shows at once.
    m_input.DropFocusNews();
    m_context.GetDisplay().TakeFocus(topLevel.Value());
    MoveFocusTo(topLevel);
}

void Activation::FocusReceived(HWND topLevel) {
    if (!m_tree.IsVisible(topLevel) || topLevel == m_active) {
        return;
    }
    const bool takesInput = m_tree.TakesInput(topLevel);
    if (const HWND modal = takesInput ? HWND() : m_tree.ModalOf(topLevel)) {
        // Where that one is the active one, the keyboard alone went astray.
        modal == m_active ? m_context.GetDisplay().TakeFocus(modal.Value()) : Activate(modal);
    } else if (ChangeActive(topLevel)) {
        MoveFocusTo(takesInput ? topLevel : HWND());
    }
}

void Activation::Press(HWND topLevel) {
    const WindowRecord* record = m_tree.Find(topLevel);
    if (record == nullptr) {
        return;
    }
    if (!m_tree.TakesInput(topLevel)) {
        AlertModalOf(topLevel);
    } else if ((record->exStyle & WS_EX_NOACTIVATE) == 0) {
        Activate(topLevel);
    }
}

void Activation::AlertModalOf(HWND topLevel) {
    if (const HWND modal = m_tree.ModalOf(topLevel)) {
        m_flash.Start(modal);
        Activate(modal);
    }
}

void Activation::Deactivate() {
    if (ChangeActive({})) {
        MoveFocusTo({});
    }
}

/// Popups belong to what was active. They hear of their end when the new state stands; false: one of them changed it.
bool Activation::ChangeActive(HWND topLevel) {
    m_active = topLevel;
    m_popups.CancelAll();
    return m_active == topLevel;
}

void Activation::OnHiding(WindowRecord& record) {
    if (record.handle == m_active) {
        m_context.GetDisplay().GiveBackFocus();
    }
}

void Activation::OnHidden(HWND window) {
    if (m_active == window) {
        const HWND owner = m_tree.ParentOf(window);
        m_active = m_tree.IsVisible(owner) ? owner : HWND();
        MoveFocusTo(m_active);
    } else if (m_tree.IsWithin(m_focus, window)) {
        MoveFocusTo(m_tree.TopLevelOf(window));
    }
}

/// A disabled window can't have the focus: it goes to its top-level window, to be handed on there, or to nobody.
void Activation::OnEnabledChanged(HWND window, bool enabled) {
    if (!enabled && m_tree.IsWithin(m_focus, window)) {
        const HWND topLevel = m_tree.TopLevelOf(window);
        MoveFocusTo(m_tree.TakesInput(topLevel) ? topLevel : HWND());
    } else if (enabled && window == m_active && !m_focus) {
        MoveFocusTo(m_active);
    }
}

void Activation::OnDestroyed(HWND window) {
    for (HWND* holder : {&m_focus, &m_active}) {
        if (*holder == window) {
            *holder = {};
        }
    }
}

}  // namespace veldan
