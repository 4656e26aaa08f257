#include "platform/display/memory/MemoryDisplay.h"

#include "platform/draw/Region.h"

#include <algorithm>
#include <utility>

namespace veldan {

MemoryDisplay::MemoryDisplay(CSize screen) : m_screen(screen) {}

MemoryDisplay::~MemoryDisplay() = default;

MemoryDisplay::Window* MemoryDisplay::Find(TopLevelId id) {
    const auto found = std::ranges::find(m_windows, id, &Window::id);
    return found != m_windows.end() ? &*found : nullptr;
}

const MemoryDisplay::Window* MemoryDisplay::Find(TopLevelId id) const {
    const auto found = std::ranges::find(m_windows, id, &Window::id);
    return found != m_windows.end() ? &*found : nullptr;
}

bool MemoryDisplay::IsOnScreen(const Window& window) const {
    const Window* owner = &window;
    while (owner != nullptr && !owner->traits.managed) {
        owner = Find(owner->traits.owner);
    }
    return window.visible && (owner == nullptr || !owner->keptOff);
}

const MemoryDisplay::Window* MemoryDisplay::WindowUnderPointer() const {
    const auto found = std::ranges::find_if(m_windows, [this](const Window& window) {
        return IsOnScreen(window) && !window.traits.letsInputThrough && window.rect.Contains(m_ptPointer);
    });
    return found != m_windows.end() ? &*found : nullptr;
}

/// Itself, or through others that it owns.
bool MemoryDisplay::IsOwnedBy(const Window& window, TopLevelId frame) const {
    const Window* owner = Find(window.traits.owner);
    while (owner != nullptr && owner->id != frame) {
        owner = Find(owner->traits.owner);
    }
    return owner != nullptr;
}

bool MemoryDisplay::AnyOwnVisible() const {
    return std::ranges::any_of(m_windows, [](const Window& window) { return window.visible && !window.foreign; });
}

void MemoryDisplay::Send(DisplayEventKind kind, TopLevelId window, int button, int delta) {
    DisplayEvent event;
    event.kind = kind;
    event.window = window;
    event.screen = m_ptPointer;
    event.button = button;
    event.delta = delta;
    event.flags = m_uFlags;
    event.mark = m_nMark;
    m_events.push_back(std::move(event));
}

/// Windows or the pointer changed: tells which own window the pointer is in now, if that is another one.
void MemoryDisplay::PointerMayHaveCrossed() {
    if (m_grabWindow != 0) {
        return;
    }
    const Window* under = WindowUnderPointer();
    const TopLevelId now = under != nullptr && !under->foreign ? under->id : 0;
    const TopLevelId before = std::exchange(m_pointerWindow, now);
    if (now != 0 && now != before) {
        Send(DisplayEventKind::PointerMove, now);
    } else if (now == 0 && before != 0) {
        Send(DisplayEventKind::PointerLeave, 0);
    }
}

void MemoryDisplay::CreateTopLevel(TopLevelId id, const TopLevelTraits& traits, const CRect& rect) {
    if (!m_bAlive) {
        return;
    }
    Window window;
    window.id = id;
    window.traits = traits;
    window.rect = rect;
    m_windows.insert(m_windows.begin(), std::move(window));
}

void MemoryDisplay::DestroyTopLevel(TopLevelId id) {
    SetVisible(id, false);
    std::erase_if(m_windows, [id](const Window& window) { return window.id == id; });
    m_focusBefore = m_focusBefore == id ? 0 : m_focusBefore;
}

void MemoryDisplay::SetTitle(TopLevelId id, const std::string& title) {
    if (Window* window = Find(id)) {
        window->traits.title = title;
    }
}

void MemoryDisplay::SetRect(TopLevelId id, const CRect& rect) {
    if (Window* window = Find(id)) {
        if (window->rect.Size() != rect.Size()) {
            window->pixels.reset();
        }
        window->rect = rect;
        PointerMayHaveCrossed();
    }
}

void MemoryDisplay::SetVisible(TopLevelId id, bool visible) {
    Window* window = Find(id);
    if (window == nullptr || window->visible == visible) {
        return;
    }
    window->visible = visible;
    window->keptOff = false;
    if (!visible && m_grabWindow == id) {
        m_grabWindow = 0;
    }
    if (!visible && m_focus == id) {
        SetFocusTo(0);
    }
    PointerMayHaveCrossed();
}

void MemoryDisplay::Restack(TopLevelId id, StackPlace place, TopLevelId sibling) {
    MoveInStack(id, place, sibling);
    PointerMayHaveCrossed();
}

void MemoryDisplay::MoveInStack(TopLevelId id, StackPlace place, TopLevelId sibling) {
    Window* found = Find(id);
    const bool isBeside = place == StackPlace::Above || place == StackPlace::Below;
    if (found == nullptr || (isBeside && (sibling == id || Find(sibling) == nullptr))) {
        return;
    }
    Window window = std::move(*found);
    m_windows.erase(m_windows.begin() + (found - m_windows.data()));
    auto target = place == StackPlace::Top ? m_windows.begin() : m_windows.end();
    if (isBeside) {
        target = std::ranges::find(m_windows, sibling, &Window::id) + (place == StackPlace::Below ? 1 : 0);
    }
    m_windows.insert(target, std::move(window));
}

void MemoryDisplay::SetFocusTo(TopLevelId id) {
    const TopLevelId before = std::exchange(m_focus, id);
    if (before == id) {
        return;
    }
    const Window* now = Find(id);
    if (now != nullptr && !now->foreign) {
        Send(DisplayEventKind::FocusIn, id);
    } else if (Find(before) != nullptr && !Find(before)->foreign) {
        Send(DisplayEventKind::FocusOut, before);
    }
}

void MemoryDisplay::TakeFocus(TopLevelId id) {
    const Window* window = Find(id);
    if (window == nullptr || !IsOnScreen(*window) || !window->traits.takesFocus || m_focus == id) {
        return;
    }
    // As on a server, where the focus goes back to what a window manager knows.
    const Window* before = Find(m_focus);
    if (before == nullptr || before->foreign || before->traits.managed) {
        m_focusBefore = m_focus;
    }
    std::erase_if(m_events, [](const DisplayEvent& event) {
        return event.kind == DisplayEventKind::FocusIn || event.kind == DisplayEventKind::FocusOut;
    });
    SetFocusTo(id);
}

void MemoryDisplay::GiveBackFocus() {
    const Window* window = Find(m_focus);
    const Window* before = Find(m_focusBefore);
    if (window != nullptr && !window->foreign) {
        SetFocusTo(before != nullptr && before->visible ? m_focusBefore : 0);
    }
}

void MemoryDisplay::Present(TopLevelId id, const Surface& pixels, const Region& dirty) {
    Window* window = Find(id);
    if (window == nullptr) {
        return;
    }
    if (!window->pixels) {
        window->pixels = std::make_unique<Surface>(pixels.Width(), pixels.Height());
    }
    const CRect shared = window->pixels->Bounds().Intersect(pixels.Bounds());
    for (const CRect& rect : Region(dirty).Intersect(shared).Rects()) {
        m_nPresentedPixels += static_cast<std::uint64_t>(rect.Width()) * static_cast<std::uint64_t>(rect.Height());
        for (int y = rect.top; y < rect.bottom; ++y) {
            std::copy(pixels.Row(y) + rect.left, pixels.Row(y) + rect.right, window->pixels->Row(y) + rect.left);
        }
    }
}

void MemoryDisplay::SetCursor(TopLevelId id, CursorShape shape) {
    if (Window* window = Find(id)) {
        window->cursor = shape;
    }
}

CPoint MemoryDisplay::QueryPointer() {
    ++m_nRoundTrips;
    return m_ptPointer;
}

void MemoryDisplay::ReleaseGrab() {
    m_grabWindow = 0;
}

bool MemoryDisplay::NextEvent(DisplayEvent& event) {
    if (m_events.empty()) {
        return false;
    }
    event = std::move(m_events.front());
    m_events.pop_front();
    return true;
}

}  // namespace veldan
