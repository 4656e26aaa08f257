#include "platform/window/Desktop.h"

namespace veldan {

HWND Desktop::SetFocus(HWND window) {
    const HWND before = m_focus;
    if (!window) {
        MoveFocusTo({});
        return before;
    }
    const WindowRecord* record = m_table.Find(window);
    if (record == nullptr || record->destroying || !record->enabled) {
        return before;
    }
    const HWND topLevel = TopLevelOf(window);
    if (topLevel != m_active) {
        Activate(topLevel);
    }
    if (topLevel == m_active) {
        MoveFocusTo(window);
    }
    return before;
}

/// The new focus stands before anybody hears of it, and a handler that moves it on has the last word.
void Desktop::MoveFocusTo(HWND window) {
    const HWND before = m_focus;
    if (before == window) {
        return;
    }
    m_focus = window;
    if (const WindowRecord* record = m_table.Find(window); record != nullptr && record->IsChild()) {
        m_table.Find(TopLevelOf(window))->topLevel->lastFocus = window;
    }
    SendMessage(before, WM_KILLFOCUS, window.Value());
    if (m_focus == window) {
        SendMessage(window, WM_SETFOCUS, before.Value());
    }
}

void Desktop::LeaveFocusOf(HWND hidden) {
    if (IsWithin(m_focus, hidden)) {
        MoveFocusTo(TopLevelOf(hidden));
    }
}

void Desktop::Activate(HWND topLevel) {
    const WindowRecord* record = m_table.Find(topLevel);
    if (record == nullptr || record->destroying || !record->visible || topLevel == m_active) {
        return;
    }
    m_active = topLevel;
    // News of the focus from before this wish no longer count: those of a frame made just now would close the menu that
    // its host shows at once.
    std::erase_if(m_input, [](const DisplayEvent& event) {
        return event.kind == DisplayEventKind::FocusIn || event.kind == DisplayEventKind::FocusOut;
    });
    GetDisplay().TakeFocus(topLevel.Value());
    MoveFocusTo(topLevel);
}

void Desktop::FocusReceived(HWND topLevel) {
    const WindowRecord* record = m_table.Find(topLevel);
    if (record == nullptr || !record->visible || topLevel == m_active) {
        return;
    }
    m_active = topLevel;
    MoveFocusTo(topLevel);
}

void Desktop::Deactivate() {
    m_active = {};
    MoveFocusTo({});
}

}  // namespace veldan
