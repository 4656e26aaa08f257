#pragma once

#include "platform/window/Activation.h"
#include "platform/window/HoverTracking.h"
#include "platform/window/MessageQueue.h"
#include "platform/window/OutsidePresses.h"
#include "platform/window/PressHistory.h"

#include <optional>

namespace veldan {

/// The pointer: which window it is in, who captured it, hovering and leaving, double clicks, and its cursor.
class Pointer final : public WindowListener {
public:
    Pointer(DesktopContext& context, const WindowTree& tree, Messenger& messenger, MessageQueue& queue,
            Activation& activation, Popups& popups, OutsidePresses& outside)
        : m_context(context),
          m_tree(tree),
          m_messenger(messenger),
          m_queue(queue),
          m_activation(activation),
          m_popups(popups),
          m_outside(outside) {}

    [[nodiscard]] HWND Capture() const { return m_capture; }
    /// Nothing changes for a window that takes no input. Returns the window that had the capture.
    HWND SetCapture(HWND window);
    bool TrackMouseEvent(HWND window, UINT flags, UINT hoverTime);
    /// The pointer's place on the screen, also outside of all own windows.
    [[nodiscard]] CPoint Place();
    void SetCursor(CursorShape shape);

    // The display's events.

    Taken Moved(const DisplayEvent& event, MSG& message);
    void Left(const DisplayEvent& event);
    Taken ButtonChanged(const DisplayEvent& event, MSG& message);
    Taken WheelTurned(const DisplayEvent& event, MSG& message);
    void DisplayLost();

    /// Windows came, went or moved while the pointer stood still.
    [[nodiscard]] bool WantsRetest() const { return m_bRetest; }
    /// Looks which window is under the pointer now. A move there, if that window is to hear of it as of a real one.
    std::optional<DisplayEvent> Retest();

    bool TakeHover(MSG& message);
    [[nodiscard]] std::int64_t NextDue() const { return m_tracking.NextDue(); }

    void OnShown(WindowRecord& record) override;
    void OnHiding(WindowRecord& record) override;
    void OnHidden(HWND window) override;
    void OnEnabledChanged(HWND window, bool enabled) override;
    void OnPlaced(WindowRecord& record, const CRect& before) override;
    void OnRestacked(WindowRecord& record) override;
    void OnDestroyed(HWND window) override;

private:
    void RetestSoon();
    bool Enter(HWND window);
    void Note(const DisplayEvent& event);
    [[nodiscard]] HWND TargetAt(CPoint screen) const;
    [[nodiscard]] MSG Make(HWND window, UINT message) const;
    [[nodiscard]] bool IsDoubleClick(HWND window, int button);

    DesktopContext& m_context;
    const WindowTree& m_tree;
    Messenger& m_messenger;
    MessageQueue& m_queue;
    Activation& m_activation;
    Popups& m_popups;
    OutsidePresses& m_outside;

    HWND m_capture;
    HWND m_topLevel;  // the own top-level window that the pointer is in
    HWND m_window;    // the window that the pointer was last known to be in
    UINT m_uFlags = 0;
    bool m_bRetest = false;
    HoverTracking m_tracking;
    PressHistory m_presses;
};

}  // namespace veldan
