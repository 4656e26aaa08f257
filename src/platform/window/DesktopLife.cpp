#include "platform/window/Desktop.h"
#include "platform/window/Wnd.h"

#include <algorithm>

namespace veldan {

namespace {

TopLevelKind KindOf(const WindowRecord& record) {
    if ((record.exStyle & WS_EX_TRANSPARENT) != 0) {
        return TopLevelKind::ToolTip;
    }
    return (record.style & WS_POPUP) != 0 ? TopLevelKind::Popup : TopLevelKind::Frame;
}

/// Sides of windows stay within what displays can show.
CRect Clamped(const CRect& rect) {
    constexpr int kLargestSide = 32767;
    return CRect::FromSize(rect.TopLeft(),
                           {std::clamp(rect.Width(), 0, kLargestSide), std::clamp(rect.Height(), 0, kLargestSide)});
}

}  // namespace

HWND Desktop::CreateWindow(CWnd& object, const WindowClass& windowClass, const CREATESTRUCT& create) {
    const bool isChild = (create.style & WS_CHILD) != 0;
    const WindowRecord* parent = m_table.Find(create.parent);
    if (isChild && (parent == nullptr || parent->destroying)) {
        return {};
    }
    WindowRecord& record = m_table.Add();
    const HWND window = record.handle;
    record.object = &object;
    record.windowClass = &windowClass;
    record.style = create.style & ~WS_VISIBLE;
    record.exStyle = create.exStyle;
    record.enabled = (create.style & WS_DISABLED) == 0;
    record.id = create.id;
    record.text = create.text;
    record.rect = Clamped(create.rect);
    record.parent = isChild ? create.parent : HWND();
    if (isChild) {
        AttachToParent(record);
    } else {
        record.topLevel = std::make_unique<TopLevelState>();
        record.topLevel->owner = TopLevelOf(create.parent);
        m_topLevels.insert(m_topLevels.begin(), window);
        const TopLevelTraits traits{KindOf(record), record.text, record.topLevel->owner.Value(), windowClass.smallest};
        GetDisplay().CreateTopLevel(window.Value(), traits, record.rect);
        InvalidateArea(record, record.ClientRect(), true);
    }
    object.m_hWnd = window;
    object.PreSubclassWindow();
    CREATESTRUCT arguments = create;
    if (SendMessage(window, WM_CREATE, 0, reinterpret_cast<LPARAM>(&arguments)) == -1) {
        DestroyWindow(window);
    }
    if ((create.style & WS_VISIBLE) != 0) {
        ShowWindow(window, SW_SHOW);
    }
    return m_table.Find(window) != nullptr ? window : HWND();
}

void Desktop::AttachToParent(WindowRecord& record) {
    WindowRecord& parent = *m_table.Find(record.parent);
    record.depth = parent.depth + 1;
    record.place = parent.children.Append({record.rect, record.handle, false});
}

void Desktop::UnlinkFromParent(WindowRecord& record) {
    if (!record.IsChild()) {
        std::erase(m_topLevels, record.handle);
        return;
    }
    WindowRecord* parent = m_table.Find(record.parent);
    if (parent != nullptr) {
        parent->children.Remove(record.place);
        if (parent->children.WantsCompacting()) {
            parent->children.Compact();
            RenumberChildren(*parent);
        }
    }
}

void Desktop::RenumberChildren(WindowRecord& parent) {
    std::size_t place = 0;
    for (const ChildList::Entry& entry : parent.children.Entries()) {
        if (WindowRecord* child = m_table.Find(entry.window)) {
            child->place = place;
        }
        ++place;
    }
}

std::vector<HWND> Desktop::ChildrenOf(HWND window) const {
    std::vector<HWND> children;
    if (const WindowRecord* record = m_table.Find(window)) {
        for (const ChildList::Entry& entry : record->children.Entries()) {
            if (entry.window) {
                children.push_back(entry.window);
            }
        }
    }
    return children;
}

bool Desktop::DestroyWindow(HWND window) {
    WindowRecord* record = m_table.Find(window);
    if (record == nullptr || record->destroying) {
        return false;
    }
    record->destroying = true;
    DestroyOwned(window);
    Hide(window);
    SendDestroy(window);
    FinishDestroy(window);
    return true;
}

void Desktop::DestroyOwned(HWND owner) {
    const std::vector<HWND> topLevels = m_topLevels;
    for (const HWND other : topLevels) {
        const WindowRecord* record = m_table.Find(other);
        if (record != nullptr && record->topLevel->owner == owner) {
            DestroyWindow(other);
        }
    }
}

void Desktop::SendDestroy(HWND window) {
    if (WindowRecord* record = m_table.Find(window)) {
        record->destroying = true;
        SendMessage(window, WM_DESTROY);
        for (const HWND child : ChildrenOf(window)) {
            SendDestroy(child);
        }
    }
}

void Desktop::FinishDestroy(HWND window) {
    for (const HWND child : ChildrenOf(window)) {
        FinishDestroy(child);
    }
    SendMessage(window, WM_NCDESTROY);
    WindowRecord* record = m_table.Find(window);
    if (record == nullptr) {
        return;
    }
    CWnd* object = record->object;
    ForgetWindow(window);
    UnlinkFromParent(*record);
    if (!record->IsChild()) {
        GetDisplay().DestroyTopLevel(window.Value());
    }
    m_table.Remove(window);
    if (object != nullptr) {
        object->m_hWnd = {};
        object->PostNcDestroy();
    }
}

/// Whatever still names the window lets go of it.
void Desktop::ForgetWindow(HWND window) {
    std::erase_if(m_posted, [window](const MSG& message) { return message.hwnd == window; });
    std::erase_if(m_timers, [window](const Timer& timer) { return timer.window == window; });
    for (HWND* holder : {&m_focus, &m_active, &m_capture, &m_pointerTopLevel, &m_mouseWindow, &m_lastPress.window}) {
        if (*holder == window) {
            *holder = {};
        }
    }
    if (m_tracking.window == window) {
        m_tracking = {};
    }
    RetestPointerSoon();
}

bool Desktop::ReplaceObject(HWND window, CWnd& object) {
    WindowRecord* record = m_table.Find(window);
    if (record == nullptr || record->destroying || record->object == nullptr) {
        return false;
    }
    object.m_pFont = std::move(record->object->m_pFont);
    std::exchange(record->object, &object)->m_hWnd = {};
    object.m_hWnd = window;
    return true;
}

void Desktop::DetachObject(HWND window) {
    if (WindowRecord* record = m_table.Find(window)) {
        record->object = nullptr;
    }
}

}  // namespace veldan
