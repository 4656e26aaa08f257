#pragma once

#include "platform/display/Display.h"
#include "platform/draw/Surface.h"

#include <deque>
#include <memory>
#include <set>
#include <vector>

namespace veldan {

/// A display that exists in memory only: it keeps real state, answers each request with the notification that a server
/// would send, and composes its windows into a picture. Without a person at it, a test or a demonstration moves its
/// pointer and keys by hand.
class VELDAN_PLATFORM_API MemoryDisplay final : public Display {
public:
    explicit MemoryDisplay(CSize screen = {1920, 1080});
    ~MemoryDisplay() override;

    // The person's side. Positions are pixels of the screen.

    void MovePointer(CPoint screen);
    void PressButton(int button);
    void ReleaseButton(int button);
    /// One step; positive is away from the person.
    void TurnWheel(int delta);
    /// `flags`: MK_SHIFT, MK_CONTROL and MK_ALT, as they are held with the key. A key that is pressed again before it
    /// was released repeats. Without a text, keys type the control characters that they type on a real keyboard.
    void PressKey(UINT key, const std::string& text = {}, UINT flags = 0);
    void ReleaseKey(UINT key);
    /// A window of another program, on top of everything. A press on it gives it the focus.
    TopLevelId AddForeignWindow(const CRect& rect);
    /// What a window manager's switch to another program does: the window comes to the top and has the focus, no button
    /// is pressed. An own window only gets the focus.
    void FocusForeignWindow(TopLevelId id);
    /// A window manager moves a frame, and makes it no smaller than its host wants it.
    void MoveFrame(TopLevelId id, const CRect& rect);
    /// A window manager makes a frame an icon or shows another desktop; and takes that back, which raises the frame and
    /// gives it the focus.
    void KeepFrameOff(TopLevelId id);
    void BringFrameBack(TopLevelId id);
    void RequestClose(TopLevelId id);
    /// Another program unmaps a window of ours.
    void UnmapByForce(TopLevelId id);
    /// The display dies.
    void Lose();
    /// What a person sees.
    [[nodiscard]] std::unique_ptr<Surface> Picture() const;
    /// One pixel of that, 0xffRRGGBB.
    [[nodiscard]] std::uint32_t PixelAt(CPoint screen) const;
    [[nodiscard]] TopLevelId FocusWindow() const { return m_focus; }
    /// Pixels that were presented so far, counted over all windows.
    [[nodiscard]] std::uint64_t PresentedPixels() const { return m_nPresentedPixels; }

    // The window layer's side.

    [[nodiscard]] std::string_view Name() const override { return "memory"; }
    [[nodiscard]] bool IsAlive() const override { return m_bAlive; }
    [[nodiscard]] CRect ScreenRect() const override { return CRect::FromSize({}, m_screen); }
    void CreateTopLevel(TopLevelId id, const TopLevelTraits& traits, const CRect& rect) override;
    void DestroyTopLevel(TopLevelId id) override;
    void SetTitle(TopLevelId id, const std::string& title) override;
    void SetRect(TopLevelId id, const CRect& rect) override;
    void SetVisible(TopLevelId id, bool visible) override;
    void Restack(TopLevelId id, StackPlace place, TopLevelId sibling) override;
    void TakeFocus(TopLevelId id) override;
    void GiveBackFocus() override;
    void Present(TopLevelId id, const Surface& pixels, const Region& dirty) override;
    void SetCursor(TopLevelId id, CursorShape shape) override;
    [[nodiscard]] CPoint QueryPointer() override;
    void ReleaseGrab() override;
    [[nodiscard]] std::uint64_t Mark() override { return ++m_nMark; }
    [[nodiscard]] int Descriptor() const override { return -1; }
    [[nodiscard]] bool NextEvent(DisplayEvent& event) override;
    void Flush() override {}
    void Sync() override { ++m_nRoundTrips; }
    [[nodiscard]] std::uint64_t RoundTrips() const override { return m_nRoundTrips; }

private:
    struct Window {
        TopLevelId id = 0;
        TopLevelTraits traits;
        bool foreign = false;
        bool visible = false;
        bool keptOff = false;  // a managed one, by the manager
        CRect rect;
        CursorShape cursor = CursorShape::Arrow;
        std::unique_ptr<Surface> pixels;
    };

    [[nodiscard]] Window* Find(TopLevelId id);
    [[nodiscard]] const Window* Find(TopLevelId id) const;
    [[nodiscard]] bool IsOnScreen(const Window& window) const;
    [[nodiscard]] bool IsOwnedBy(const Window& window, TopLevelId frame) const;
    [[nodiscard]] const Window* WindowUnderPointer() const;
    [[nodiscard]] bool AnyOwnVisible() const;
    [[nodiscard]] static std::uint32_t PixelOf(const Window& window, CPoint screen);
    void Send(DisplayEventKind kind, TopLevelId window, int button = 0, int delta = 0);
    void MoveInStack(TopLevelId id, StackPlace place, TopLevelId sibling);
    void PointerMayHaveCrossed();
    void SetFocusTo(TopLevelId id);

    CSize m_screen;
    std::vector<Window> m_windows;  // from the topmost to the lowest
    std::deque<DisplayEvent> m_events;
    CPoint m_ptPointer{-1, -1};
    UINT m_uFlags = 0;
    std::set<UINT> m_heldKeys;
    TopLevelId m_pointerWindow = 0;  // the own window that the pointer was last reported in
    TopLevelId m_grabWindow = 0;     // gets all pointer events while a button is down
    TopLevelId m_focus = 0;
    TopLevelId m_focusBefore = 0;
    TopLevelId m_nNextForeign = 1;
    bool m_bAlive = true;
    std::uint64_t m_nMark = 0;
    std::uint64_t m_nRoundTrips = 0;
    std::uint64_t m_nPresentedPixels = 0;
};

}  // namespace veldan
