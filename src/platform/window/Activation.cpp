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
    if (!m_tree.IsVisible(topLevel)) {
        Remember(window);
        return before;
    }
    if (topLevel != m_active) {
        Activate(topLevel);
    }
    if (topLevel == m_active) {
        MoveFocusTo(window);
    }
    return before;
}

/// The child that its top-level window hands the focus to when it is activated.
void Activation::Remember(HWND focus) const {
    if (const WindowRecord* record = m_tree.Find(focus); record != nullptr && record->IsChild()) {
        m_tree.Find(m_tree.TopLevelOf(focus))->topLevel->lastFocus = focus;
    }
}

/// The new focus stands before anybody hears of it, and a handler that moves it on has the last word.
void Activation::MoveFocusTo(HWND window) {
    const HWND before = m_focus;
    if (before == window) {
        return;
    }
    m_focus = window;
    Remember(window);
    m_messenger.Send(before, WM_KILLFOCUS, window.Value());
    if (m_focus == window) {
        m_messenger.Send(window, WM_SETFOCUS, before.Value());
    }
}

void Activation::Activate(HWND topLevel) {
    if (!m_tree.TakesInput(topLevel) || !m_tree.IsVisible(topLevel)) {
        return;
    }
    if (topLevel == m_active) {
        m_stack.RaiseIfBelow(topLevel);
        return;
    }
    if (!ChangeActive(topLevel)) {
        return;
    }
    m_stack.Raise(topLevel);
    // The news of a frame made just now would close the menu that its host shows at once.
    m_input.DropFocusNews();
    m_context.GetDisplay().TakeFocus(topLevel.Value());
    MoveFocusTo(topLevel);
}

void Activation::FocusReceived(HWND topLevel) {
    if (!m_tree.IsVisible(topLevel) || topLevel == m_active) {
        return;
    }
    m_stack.NoteRaised(topLevel);
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

/// Who is active after the active window was hidden: the next owner that can be, or the window that is to be used
/// before that one.
HWND Activation::SuccessorOf(HWND hidden) const {
    HWND owner = m_tree.ParentOf(hidden);
    while (owner && !m_tree.IsVisible(owner)) {
        owner = m_tree.ParentOf(owner);
    }
    return !owner || m_tree.TakesInput(owner) ? owner : m_tree.ModalOf(owner);
}

/// The display gives the keyboard back to whoever had it, but it remembers none of our popups.
void Activation::OnHiding(WindowRecord& record) {
    if (record.handle != m_active) {
        return;
    }
    const WindowRecord* next = m_tree.Find(SuccessorOf(record.handle));
    if (next != nullptr && (next->style & WS_POPUP) != 0) {
        m_context.GetDisplay().TakeFocus(next->handle.Value());
    } else {
        m_context.GetDisplay().GiveBackFocus();
    }
}

void Activation::OnHidden(HWND window) {
    if (m_active == window) {
        m_active = SuccessorOf(window);
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
