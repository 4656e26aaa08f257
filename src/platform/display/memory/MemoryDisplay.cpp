#include "platform/display/memory/MemoryDisplay.h"

#include "platform/core/Keys.h"
#include "platform/draw/Region.h"

#include <algorithm>
#include <utility>

namespace veldan {

namespace {

constexpr std::uint32_t kOpaque = 0xff000000;
constexpr std::uint32_t kBackground = 0xff5a6068;
constexpr std::uint32_t kForeignWindow = 0xffb8bcc2;

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

MemoryDisplay::MemoryDisplay(CSize screen) : m_screen(screen) {}

MemoryDisplay::~MemoryDisplay() = default;

MemoryDisplay::Window* MemoryDisplay::Find(TopLevelId id) {
    const auto found = std::ranges::find(m_windows, id, &Window::id);
    return found != m_windows.end() ? &*found : nullptr;
}

MemoryDisplay::Window* MemoryDisplay::WindowUnderPointer() {
    const auto found = std::ranges::find_if(m_windows, [this](const Window& window) {
        return window.visible && window.kind != TopLevelKind::ToolTip && window.rect.Contains(m_ptPointer);
    });
    return found != m_windows.end() ? &*found : nullptr;
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
        SetFocusTo(under->id);
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
    SetFocusTo(id);
}

void MemoryDisplay::MoveFrame(TopLevelId id, const CRect& rect) {
    if (Window* window = Find(id)) {
        window->rect = CRect::FromSize(rect.TopLeft(), {std::max(rect.Width(), window->smallest.cx),
                                                        std::max(rect.Height(), window->smallest.cy)});
        Send(DisplayEventKind::Moved, id);
        m_events.back().rect = window->rect;
        PointerMayHaveCrossed();
    }
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

std::uint32_t MemoryDisplay::PixelOf(const Window& window, CPoint screen) {
    if (window.foreign) {
        return kForeignWindow;
    }
    const CPoint point = screen - window.rect.TopLeft();
    return window.pixels ? window.pixels->At(point.x, point.y) | kOpaque : kOpaque;
}

std::uint32_t MemoryDisplay::PixelAt(CPoint screen) const {
    const auto found = std::ranges::find_if(
        m_windows, [screen](const Window& window) { return window.visible && window.rect.Contains(screen); });
    return found != m_windows.end() ? PixelOf(*found, screen) : kBackground;
}

std::unique_ptr<Surface> MemoryDisplay::Picture() const {
    auto picture = std::make_unique<Surface>(m_screen.cx, m_screen.cy);
    // Without memory the picture has no pixels.
    for (int y = 0; y < picture->Height(); ++y) {
        std::fill_n(picture->Row(y), picture->Width(), kBackground);
    }
    for (auto window = m_windows.rbegin(); window != m_windows.rend(); ++window) {
        const CRect shown = window->visible ? window->rect.Intersect(picture->Bounds()) : CRect();
        for (int y = shown.top; y < shown.bottom; ++y) {
            for (int x = shown.left; x < shown.right; ++x) {
                picture->Row(y)[x] = PixelOf(*window, {x, y});
            }
        }
    }
    return picture;
}

void MemoryDisplay::CreateTopLevel(TopLevelId id, const TopLevelTraits& traits, const CRect& rect) {
    if (!m_bAlive) {
        return;
    }
    Window window;
    window.id = id;
    window.kind = traits.kind;
    window.title = traits.title;
    window.rect = rect;
    window.smallest = traits.smallest;
    m_windows.insert(m_windows.begin(), std::move(window));
}

void MemoryDisplay::DestroyTopLevel(TopLevelId id) {
    SetVisible(id, false);
    std::erase_if(m_windows, [id](const Window& window) { return window.id == id; });
    m_focusBefore = m_focusBefore == id ? 0 : m_focusBefore;
}

void MemoryDisplay::SetTitle(TopLevelId id, const std::string& title) {
    if (Window* window = Find(id)) {
        window->title = title;
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
    if (!visible && m_grabWindow == id) {
        m_grabWindow = 0;
    }
    if (!visible && m_focus == id) {
        SetFocusTo(0);
    }
    PointerMayHaveCrossed();
}

void MemoryDisplay::Restack(TopLevelId id, StackPlace place, TopLevelId sibling) {
    Window* found = Find(id);
    if (found == nullptr || (place == StackPlace::Below && Find(sibling) == nullptr)) {
        return;
    }
    Window window = std::move(*found);
    m_windows.erase(m_windows.begin() + (found - m_windows.data()));
    auto target = place == StackPlace::Top ? m_windows.begin() : m_windows.end();
    if (place == StackPlace::Below && sibling != id) {
        target = std::ranges::find(m_windows, sibling, &Window::id) + 1;
    }
    m_windows.insert(target, std::move(window));
    PointerMayHaveCrossed();
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
    if (window == nullptr || !window->visible || m_focus == id) {
        return;
    }
    // As on a server, where the focus goes back to what a window manager knows.
    const Window* before = Find(m_focus);
    if (before == nullptr || before->foreign || before->kind == TopLevelKind::Frame) {
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
