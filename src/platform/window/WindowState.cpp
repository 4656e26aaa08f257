#include "platform/window/WindowState.h"

#include <utility>

namespace veldan {

bool WindowState::Show(HWND window, ShowCommand command) {
    WindowRecord* record = m_tree.Find(window);
    if (record == nullptr || record->destroying) {
        return false;
    }
    const bool wasVisible = record->visible;
    if (command == ShowCommand::Hide) {
        Hide(window);
    } else if (record->IsChild()) {
        ShowChild(*record);
    } else {
        ShowTopLevel(window, command == ShowCommand::Show);
    }
    return wasVisible;
}

void WindowState::Hide(HWND window) {
    WindowRecord* record = m_tree.Find(window);
    if (record == nullptr || !record->visible) {
        return;
    }
    // The flag goes first: whatever the messages below set off finds the window hidden already.
    m_tree.SetVisible(*record, false);
    if (!record->IsChild()) {
        m_context.GetDisplay().SetVisible(window.Value(), false);
    }
    m_messenger.Send(window, WM_SHOWWINDOW, FALSE);
    m_tree.Announce(&WindowListener::OnHidden, window);
}

void WindowState::ShowChild(WindowRecord& record) {
    if (!record.visible) {
        m_tree.SetVisible(record, true);
        m_messenger.Send(record.handle, WM_SHOWWINDOW, TRUE);
    }
}

void WindowState::ShowTopLevel(HWND window, bool activate) {
    WindowRecord* record = m_tree.Find(window);
    if (!m_context.GetDisplayQuietly().IsAlive()) {
        return;
    }
    if (!record->visible) {
        m_tree.SetVisible(*record, true);
        m_messenger.Send(window, WM_SHOWWINDOW, TRUE);
        record = m_tree.Find(window);
        if (record == nullptr || !record->visible) {
            return;
        }
        // Painted before it is mapped, so that the first frame on the screen is the right one.
        m_painting.ResumeTree(*record);
        m_painting.Update(window);
        record = m_tree.Find(window);
        if (record == nullptr || !record->visible) {
            return;
        }
        m_surfaces.Present(*record);
        m_context.GetDisplay().SetVisible(window.Value(), true);
    } else if (m_events.DropHidden(window.Value())) {
        m_context.GetDisplay().SetVisible(window.Value(), true);
    }
    record->topLevel->shownAt = m_context.GetDisplay().Mark();
    if (activate && (record->exStyle & WS_EX_NOACTIVATE) == 0) {
        m_activation.Activate(window);
    }
}

bool WindowState::Place(HWND window, const CRect& rect, Stacking stacking, HWND sibling, UINT flags) {
    WindowRecord* record = m_tree.Find(window);
    if (record == nullptr || record->destroying) {
        return false;
    }
    const CRect before = record->rect;
    const CPoint at = (flags & SWP_NOMOVE) != 0 ? before.TopLeft() : rect.TopLeft();
    const CSize size = (flags & SWP_NOSIZE) != 0 ? before.Size() : ClampSides(rect).Size();
    const CRect place = CRect::FromSize(at, size);
    if ((flags & SWP_NOZORDER) == 0 && stacking != Stacking::Keep) {
        record->IsChild() ? void(m_tree.Restack(*record, stacking, sibling))
                          : m_stack.Restack(*record, stacking, sibling);
    }
    if (place != before) {
        m_tree.SetRect(*record, place);
        if (!record->IsChild()) {
            m_context.GetDisplay().SetRect(window.Value(), place);
        }
        SendPlaceMessages(window, before, place);
    }
    if ((flags & SWP_HIDEWINDOW) != 0) {
        Show(window, SW_HIDE);
    } else if ((flags & SWP_SHOWWINDOW) != 0) {
        Show(window, (flags & SWP_NOACTIVATE) != 0 ? SW_SHOWNA : SW_SHOW);
    }
    return true;
}

void WindowState::SendPlaceMessages(HWND window, const CRect& before, const CRect& after) {
    if (before.TopLeft() != after.TopLeft()) {
        m_messenger.Send(window, WM_MOVE, 0, MakeLParam(after.left, after.top));
    }
    if (before.Size() != after.Size()) {
        m_messenger.Send(window, WM_SIZE, 0, MakeLParam(after.Width(), after.Height()));
    }
}

bool WindowState::Enable(HWND window, bool enable, HWND modal) {
    WindowRecord* record = m_tree.Find(window);
    if (record == nullptr) {
        return false;
    }
    const bool wasDisabled = !std::exchange(record->enabled, enable);
    if (!record->IsChild() && (enable || modal)) {
        record->topLevel->disabledFor = modal;
    }
    if (wasDisabled == enable) {
        m_tree.Announce(&WindowListener::OnEnabledChanged, window, enable);
        m_messenger.Send(window, WM_ENABLE, enable ? TRUE : FALSE);
    }
    return wasDisabled;
}

bool WindowState::ModifyStyle(HWND window, UINT remove, UINT add) {
    WindowRecord* record = m_tree.Find(window);
    if (record == nullptr) {
        return false;
    }
    const UINT style = (record->style & ~remove) | add;
    return std::exchange(record->style, style) != style;
}

void WindowState::SetText(HWND window, const CString& text) {
    WindowRecord* record = m_tree.Find(window);
    if (record == nullptr) {
        return;
    }
    record->text = text;
    if (!record->IsChild()) {
        m_context.GetDisplay().SetTitle(window.Value(), text);
    }
}

void WindowState::FrameMoved(HWND window, const CRect& rect) {
    WindowRecord* record = m_tree.Find(window);
    if (record == nullptr || record->destroying || record->rect == rect) {
        return;
    }
    const CRect before = record->rect;
    m_tree.SetRect(*record, rect);
    SendPlaceMessages(window, before, rect);
}

void WindowState::DisplayLost() {
    for (const HWND window : m_tree.TopLevels()) {
        m_tree.Find(window)->visible = false;
    }
}

}  // namespace veldan
