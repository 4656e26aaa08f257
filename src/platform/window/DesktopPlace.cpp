#include "platform/window/Desktop.h"

#include <algorithm>

namespace veldan {

CRect Desktop::WindowRect(HWND window) const {
    const WindowRecord* record = m_table.Find(window);
    if (record == nullptr) {
        return {};
    }
    CRect rect = record->rect;
    while (record->IsChild()) {
        record = m_table.Find(record->parent);
        rect = rect.Offset(record->rect.TopLeft());
    }
    return rect;
}

bool Desktop::IsVisible(HWND window) const {
    const WindowRecord* record = m_table.Find(window);
    while (record != nullptr && record->visible && record->IsChild()) {
        record = m_table.Find(record->parent);
    }
    return record != nullptr && record->visible;
}

bool Desktop::ShowWindow(HWND window, ShowCommand command) {
    WindowRecord* record = m_table.Find(window);
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

void Desktop::Hide(HWND window) {
    WindowRecord* record = m_table.Find(window);
    if (record == nullptr || !record->visible) {
        return;
    }
    // The flag goes first: whatever the messages below set off finds the window hidden already.
    record->visible = false;
    RetestPointerSoon();
    if (record->IsChild()) {
        HideChild(*record);
    } else {
        HideTopLevel(window);
    }
}

void Desktop::HideChild(WindowRecord& record) {
    const HWND window = record.handle;
    WindowRecord& parent = *m_table.Find(record.parent);
    parent.children.SetVisible(record.place, false);
    record.update.Clear();
    record.erase = false;
    InvalidateArea(parent, record.rect, true);
    SendMessage(window, WM_SHOWWINDOW, FALSE);
    if (IsWithin(m_capture, window)) {
        SetCapture({});
    }
    LeaveFocusOf(window);
}

void Desktop::ShowChild(WindowRecord& record) {
    if (record.visible) {
        return;
    }
    record.visible = true;
    RetestPointerSoon();
    m_table.Find(record.parent)->children.SetVisible(record.place, true);
    InvalidateArea(record, record.ClientRect(), true);
    SendMessage(record.handle, WM_SHOWWINDOW, TRUE);
}

void Desktop::HideTopLevel(HWND window) {
    const bool wasActive = m_active == window;
    m_pointerTopLevel = m_pointerTopLevel == window ? HWND() : m_pointerTopLevel;
    if (IsWithin(m_mouseWindow, window)) {
        LeaveAtOnce();
    }
    if (wasActive) {
        GetDisplay().GiveBackFocus();
    }
    GetDisplay().SetVisible(window.Value(), false);
    SendMessage(window, WM_SHOWWINDOW, FALSE);
    if (TopLevelOf(m_capture) == window) {
        SetCapture({});
    }
    if (m_active == window) {
        const HWND owner = ParentOf(window);
        m_active = IsVisible(owner) ? owner : HWND();
        MoveFocusTo(m_active);
    }
}

void Desktop::ShowTopLevel(HWND window, bool activate) {
    WindowRecord* record = m_table.Find(window);
    if (!m_display->IsAlive()) {
        return;
    }
    if (!record->visible) {
        record->visible = true;
        RetestPointerSoon();
        SendMessage(window, WM_SHOWWINDOW, TRUE);
        record = m_table.Find(window);
        if (record == nullptr || !record->visible) {
            return;
        }
        // Painted before it is mapped, so that the first frame on the screen is the right one.
        QueuePaintOfTree(*record);
        UpdateWindow(window);
        record = m_table.Find(window);
        if (record == nullptr || !record->visible) {
            return;
        }
        Present(*record);
        GetDisplay().SetVisible(window.Value(), true);
    } else if (TakeHidden(window)) {
        GetDisplay().SetVisible(window.Value(), true);
    }
    if (activate && (record->exStyle & WS_EX_NOACTIVATE) == 0) {
        Activate(window);
    }
}

/// Whether another program has hidden the window and the news of it still wait, which showing the window makes void.
bool Desktop::TakeHidden(HWND window) {
    ReadDisplay();
    return std::erase_if(m_input, [window](const DisplayEvent& event) {
               return event.kind == DisplayEventKind::Hidden && event.window == window.Value();
           }) != 0;
}

bool Desktop::PlaceWindow(HWND window, const CRect& rect, Stacking stacking, HWND sibling, UINT flags) {
    WindowRecord* record = m_table.Find(window);
    if (record == nullptr || record->destroying) {
        return false;
    }
    CPoint at = (flags & SWP_NOMOVE) != 0 ? record->rect.TopLeft() : rect.TopLeft();
    constexpr int kLargestSide = 32767;
    CSize size{std::clamp(rect.Width(), 0, kLargestSide), std::clamp(rect.Height(), 0, kLargestSide)};
    const CRect place = CRect::FromSize(at, (flags & SWP_NOSIZE) != 0 ? record->rect.Size() : size);
    if ((flags & SWP_NOZORDER) == 0 && stacking != Stacking::Keep) {
        record->IsChild() ? RestackChild(*record, stacking, sibling) : RestackTopLevel(*record, stacking, sibling);
    }
    if (place != record->rect) {
        const CRect before = record->rect;
        RetestPointerSoon();
        record->IsChild() ? MoveChild(*record, place) : MoveTopLevel(*record, place);
        SendPlaceMessages(window, before, place);
    }
    if ((flags & SWP_HIDEWINDOW) != 0) {
        ShowWindow(window, SW_HIDE);
    } else if ((flags & SWP_SHOWWINDOW) != 0) {
        ShowWindow(window, (flags & SWP_NOACTIVATE) != 0 ? SW_SHOWNA : SW_SHOW);
    }
    return true;
}

void Desktop::MoveChild(WindowRecord& record, const CRect& rect) {
    WindowRecord& parent = *m_table.Find(record.parent);
    const CRect before = record.rect;
    record.rect = rect;
    parent.children.SetRect(record.place, rect);
    if (record.visible) {
        InvalidateArea(parent, before, true);
        InvalidateArea(parent, rect, true);
    }
    record.update.Intersect(record.ClientRect());
}

void Desktop::MoveTopLevel(WindowRecord& record, const CRect& rect) {
    const bool resized = rect.Size() != record.rect.Size();
    record.rect = rect;
    GetDisplay().SetRect(record.handle.Value(), rect);
    if (resized) {
        DropSurface(record);
    }
}

/// The pixels no longer fit the window: all of it is painted anew.
void Desktop::DropSurface(WindowRecord& record) {
    record.topLevel->surface.reset();
    record.topLevel->dirty.Clear();
    record.update.Clear();
    InvalidateArea(record, record.ClientRect(), true);
}

void Desktop::SendPlaceMessages(HWND window, const CRect& before, const CRect& after) {
    if (before.TopLeft() != after.TopLeft()) {
        SendMessage(window, WM_MOVE, 0, MakeLParam(after.left, after.top));
    }
    if (before.Size() != after.Size()) {
        SendMessage(window, WM_SIZE, 0, MakeLParam(after.Width(), after.Height()));
    }
}

void Desktop::RestackChild(WindowRecord& record, Stacking stacking, HWND sibling) {
    WindowRecord& parent = *m_table.Find(record.parent);
    if (stacking == Stacking::Top) {
        parent.children.MoveToTop(record.place);
    } else if (stacking == Stacking::Bottom) {
        parent.children.MoveToBottom(record.place);
    } else {
        const WindowRecord* other = m_table.Find(sibling);
        if (other == nullptr || other->parent != record.parent) {
            return;
        }
        parent.children.MoveBelow(record.place, other->place);
    }
    RenumberChildren(parent);
    RetestPointerSoon();
    if (record.visible) {
        InvalidateArea(parent, record.rect, true);
    }
}

void Desktop::RestackTopLevel(WindowRecord& record, Stacking stacking, HWND sibling) {
    const HWND window = record.handle;
    auto below = m_topLevels.end();
    if (stacking == Stacking::Below) {
        below = std::ranges::find(m_topLevels, sibling);
        if (below == m_topLevels.end() || sibling == window) {
            return;
        }
    }
    std::erase(m_topLevels, window);
    if (stacking == Stacking::Below) {
        m_topLevels.insert(std::ranges::find(m_topLevels, sibling) + 1, window);
    } else {
        m_topLevels.insert(stacking == Stacking::Top ? m_topLevels.begin() : m_topLevels.end(), window);
    }
    const StackPlace place = stacking == Stacking::Top      ? StackPlace::Top
                             : stacking == Stacking::Bottom ? StackPlace::Bottom
                                                            : StackPlace::Below;
    GetDisplay().Restack(window.Value(), place, sibling.Value());
}

bool Desktop::EnableWindow(HWND window, bool enable) {
    WindowRecord* record = m_table.Find(window);
    if (record == nullptr) {
        return false;
    }
    const bool wasDisabled = !record->enabled;
    if (record->enabled != enable) {
        record->enabled = enable;
        RetestPointerSoon();
        if (!enable && IsWithin(m_capture, window)) {
            SetCapture({});
        }
        SendMessage(window, WM_ENABLE, enable ? TRUE : FALSE);
    }
    return wasDisabled;
}

}  // namespace veldan
