#include "platform/window/WindowLife.h"

#include "platform/draw/Font.h"
#include "platform/window/Wnd.h"

#include <utility>

namespace veldan {

namespace {

TopLevelTraits TraitsOf(const WindowRecord& record, HWND owner) {
    const bool isPopup = (record.style & WS_POPUP) != 0;
    const bool isTransparent = (record.exStyle & WS_EX_TRANSPARENT) != 0;
    TopLevelTraits traits;
    traits.type = isTransparent ? TopLevelType::ToolTip : isPopup ? TopLevelType::PopupMenu : TopLevelType::Normal;
    traits.managed = !isPopup && !isTransparent;
    traits.takesFocus = !isTransparent && (record.exStyle & WS_EX_NOACTIVATE) == 0;
    traits.letsInputThrough = isTransparent;
    traits.title = record.text;
    traits.owner = owner.Value();
    traits.smallest = record.windowClass->smallest;
    return traits;
}

}  // namespace

HWND WindowLife::Create(CWnd& object, const WindowClass& windowClass, const CREATESTRUCT& create) {
    const bool isChild = (create.style & WS_CHILD) != 0;
    const WindowRecord* parent = m_tree.Find(create.parent);
    if (isChild && (parent == nullptr || parent->destroying)) {
        return {};
    }
    const HWND owner = isChild ? HWND() : m_tree.TopLevelOf(create.parent);
    WindowRecord& record = m_tree.Add(isChild ? create.parent : HWND(), owner, ClampSides(create.rect));
    const HWND window = record.handle;
    record.object = &object;
    record.windowClass = &windowClass;
    record.style = create.style & ~WS_VISIBLE;
    record.exStyle = create.exStyle;
    record.enabled = (create.style & WS_DISABLED) == 0;
    record.id = create.id;
    record.text = create.text;
    if (!isChild) {
        m_context.GetDisplay().CreateTopLevel(window.Value(), TraitsOf(record, owner), record.rect);
    }
    object.m_hWnd = window;
    object.PreSubclassWindow();
    CREATESTRUCT arguments = create;
    if (m_messenger.Send(window, WM_CREATE, 0, reinterpret_cast<LPARAM>(&arguments)) == -1) {
        Destroy(window);
    }
    if ((create.style & WS_VISIBLE) != 0) {
        m_state.Show(window, SW_SHOW);
    }
    return m_tree.Find(window) != nullptr ? window : HWND();
}

bool WindowLife::Destroy(HWND window) {
    WindowRecord* record = m_tree.Find(window);
    if (record == nullptr || record->destroying) {
        return false;
    }
    record->destroying = true;
    DestroyOwned(window);
    m_state.Hide(window);
    SendDestroy(window);
    FinishDestroy(window);
    return true;
}

void WindowLife::DestroyOwned(HWND owner) {
    const std::vector<HWND> topLevels = m_tree.TopLevels();
    for (const HWND other : topLevels) {
        const WindowRecord* record = m_tree.Find(other);
        if (record != nullptr && record->topLevel->owner == owner) {
            Destroy(other);
        }
    }
}

void WindowLife::SendDestroy(HWND window) {
    if (WindowRecord* record = m_tree.Find(window)) {
        record->destroying = true;
        m_messenger.Send(window, WM_DESTROY);
        for (const HWND child : m_tree.ChildrenOf(window)) {
            SendDestroy(child);
        }
    }
}

void WindowLife::FinishDestroy(HWND window) {
    for (const HWND child : m_tree.ChildrenOf(window)) {
        FinishDestroy(child);
    }
    m_messenger.Send(window, WM_NCDESTROY);
    const WindowRecord* record = m_tree.Find(window);
    if (record == nullptr) {
        return;
    }
    CWnd* object = record->object;
    const bool isChild = record->IsChild();
    m_tree.Remove(window);
    if (!isChild) {
        m_context.GetDisplay().DestroyTopLevel(window.Value());
    }
    if (object != nullptr) {
        object->m_hWnd = {};
        object->PostNcDestroy();
    }
}

bool WindowLife::ReplaceObject(HWND window, CWnd& object) {
    WindowRecord* record = m_tree.Find(window);
    if (record == nullptr || record->destroying || record->object == nullptr) {
        return false;
    }
    object.m_pFont = std::move(record->object->m_pFont);
    std::exchange(record->object, &object)->m_hWnd = {};
    object.m_hWnd = window;
    return true;
}

void WindowLife::DetachObject(HWND window) {
    if (WindowRecord* record = m_tree.Find(window)) {
        record->object = nullptr;
    }
}

}  // namespace veldan
