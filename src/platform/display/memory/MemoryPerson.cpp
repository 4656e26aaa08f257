#include "platform/display/memory/MemoryDisplay.h"

#include "platform/core/Keys.h"

#include <algorithm>
#include <utility>

namespace veldan {

namespace {

UINT FlagOf(int button) {
    return button == 1 ? MK_LBUTTON : button == 2 ? MK_MBUTTON : MK_RBUTTON;
}

constexpr UINT kAnyButton = MK_LBUTTON | MK_MBUTTON | MK_RBUTTON;

/// What a key types that types no visible character, or nothing.
std::string ControlCharacterOf(UINT key, UINT flags) {
    const bool isControl = key == VK_BACK || key == VK_TAB || key == VK_RETURN || key == VK_ESCAPE;
    if (isControl) {
        return {static_cast<char>(key)};
    }
    const bool isLetter = key >= 'A' && key <= 'Z';
    return isLetter && (flags & MK_CONTROL) != 0 ? std::string(1, static_cast<char>(key - 'A' + 1)) : std::string();
}

}  // namespace

void MemoryDisplay::MovePointer(CPoint screen) {
    m_ptPointer = screen;
    if (m_grabWindow != 0) {
        Send(DisplayEventKind::PointerMove, m_grabWindow);
        return;
    }
    const TopLevelId before = m_pointerWindow;
    PointerMayHaveCrossed();
    if (m_pointerWindow != 0 && m_pointerWindow == before) {
        Send(DisplayEventKind::PointerMove, m_pointerWindow);
    }
}

void MemoryDisplay::PressButton(int button) {
    m_uFlags |= FlagOf(button);
    const Window* under = WindowUnderPointer();
    if (m_grabWindow != 0 || (under != nullptr && !under->foreign)) {
        m_grabWindow = m_grabWindow != 0 ? m_grabWindow : under->id;
        Send(DisplayEventKind::ButtonPress, m_grabWindow, button);
        return;
    }
    if (AnyOwnVisible()) {
        Send(DisplayEventKind::OutsidePress, 0, button);
    }
    if (under != nullptr) {
        FocusForeignWindow(under->id);
    }
}

void MemoryDisplay::ReleaseButton(int button) {
    m_uFlags &= ~FlagOf(button);
    if (m_grabWindow == 0) {
        return;
    }
    Send(DisplayEventKind::ButtonRelease, m_grabWindow, button);
    if ((m_uFlags & kAnyButton) == 0) {
        m_grabWindow = 0;
        PointerMayHaveCrossed();
    }
}

void MemoryDisplay::TurnWheel(int delta) {
    const Window* under = WindowUnderPointer();
    if (under != nullptr && !under->foreign) {
        Send(DisplayEventKind::Wheel, under->id, 0, delta);
    }
}

void MemoryDisplay::PressKey(UINT key, const std::string& text, UINT flags) {
    if (Find(m_focus) == nullptr || Find(m_focus)->foreign) {
        return;
    }
    Send(DisplayEventKind::KeyPress, m_focus);
    DisplayEvent& event = m_events.back();
    event.key = key;
    event.flags |= flags;
    event.repeat = !m_heldKeys.insert(key).second;
    event.text = text.empty() && (flags & MK_ALT) == 0 ? ControlCharacterOf(key, flags) : text;
}

void MemoryDisplay::ReleaseKey(UINT key) {
    m_heldKeys.erase(key);
    if (Find(m_focus) != nullptr && !Find(m_focus)->foreign) {
        Send(DisplayEventKind::KeyRelease, m_focus);
        m_events.back().key = key;
    }
}

TopLevelId MemoryDisplay::AddForeignWindow(const CRect& rect) {
    // Numbers of own windows have a generation in their upper half.
    Window window;
    window.id = m_nNextForeign++;
    window.foreign = true;
    window.visible = true;
    window.rect = rect;
    m_windows.insert(m_windows.begin(), std::move(window));
    PointerMayHaveCrossed();
    return m_windows.front().id;
}

void MemoryDisplay::FocusForeignWindow(TopLevelId id) {
    const Window* window = Find(id);
    if (window == nullptr || !window->foreign) {
        SetFocusTo(id);
        return;
    }
    Restack(id, StackPlace::Top, 0);
    SetFocusTo(id);
    if (AnyOwnVisible()) {
        Send(DisplayEventKind::ForeignActive, 0);
    }
}

void MemoryDisplay::MoveFrame(TopLevelId id, const CRect& rect) {
    if (Window* window = Find(id)) {
        const CSize smallest = window->traits.smallest;
        window->rect = CRect::FromSize(rect.TopLeft(),
                                       {std::max(rect.Width(), smallest.cx), std::max(rect.Height(), smallest.cy)});
        Send(DisplayEventKind::Moved, id);
        m_events.back().rect = window->rect;
        PointerMayHaveCrossed();
    }
}

void MemoryDisplay::KeepFrameOff(TopLevelId id) {
    Window* frame = Find(id);
    if (frame == nullptr || !frame->visible || !frame->traits.managed) {
        return;
    }
    frame->keptOff = true;
    const auto isGone = [this](TopLevelId each) { return Find(each) != nullptr && !IsOnScreen(*Find(each)); };
    m_grabWindow = isGone(m_grabWindow) ? 0 : m_grabWindow;
    if (isGone(m_focus)) {
        SetFocusTo(0);
    }
    PointerMayHaveCrossed();
}

void MemoryDisplay::BringFrameBack(TopLevelId id) {
    Window* frame = Find(id);
    if (frame == nullptr || !frame->keptOff) {
        return;
    }
    frame->keptOff = false;
    std::vector<TopLevelId> owned;  // from the lowest to the topmost
    for (auto window = m_windows.rbegin(); window != m_windows.rend(); ++window) {
        if (IsOwnedBy(*window, id)) {
            owned.push_back(window->id);
        }
    }
    MoveInStack(id, StackPlace::Top, 0);
    for (const TopLevelId each : owned) {
        MoveInStack(each, StackPlace::Top, 0);
    }
    SetFocusTo(id);
    PointerMayHaveCrossed();
}

void MemoryDisplay::RequestClose(TopLevelId id) {
    Send(DisplayEventKind::CloseRequest, id);
}

void MemoryDisplay::UnmapByForce(TopLevelId id) {
    const Window* window = Find(id);
    if (window != nullptr && window->visible) {
        SetVisible(id, false);
        Send(DisplayEventKind::Hidden, id);
    }
}

void MemoryDisplay::Lose() {
    m_bAlive = false;
    m_windows.clear();
    m_events.clear();
    Send(DisplayEventKind::Lost, 0);
}

}  // namespace veldan
