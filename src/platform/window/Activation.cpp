#include "platform/window/Activation.h"

namespace veldan {

HWND Activation::SetFocus(HWND window) {
    const HWND before = m_focus;
    if (!window) {
        MoveFocusTo({});
        return before;
    }
    const WindowRecord* record = m_tree.Find(window);
    if (record == nullptr || record->destroying || !record->enabled) {
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
    const WindowRecord* record = m_tree.Find(topLevel);
    if (record == nullptr || record->destroying || !record->visible || topLevel == m_active) {
        return;
    }
    // Popups belong to what was active. They hear of their end when the new state stands.
    m_active = topLevel;
    m_popups.CancelAll();
    if (m_active != topLevel) {
        return;
    }
    // The news of a frame made just now would close the menu that its host shows at once.
    m_input.DropFocusNews();
    m_context.GetDisplay().TakeFocus(topLevel.Value());
    MoveFocusTo(topLevel);
}

void Activation::FocusReceived(HWND topLevel) {
    const WindowRecord* record = m_tree.Find(topLevel);
    if (record == nullptr || !record->visible || topLevel == m_active) {
        return;
    }
    m_active = topLevel;
    m_popups.CancelAll();
    if (m_active == topLevel) {
        MoveFocusTo(topLevel);
    }
}

void Activation::Deactivate() {
    m_active = {};
    m_popups.CancelAll();
    if (!m_active) {
        MoveFocusTo({});
    }
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

void Activation::OnDestroyed(HWND window) {
    for (HWND* holder : {&m_focus, &m_active}) {
        if (*holder == window) {
            *holder = {};
        }
    }
}

}  // namespace veldan
