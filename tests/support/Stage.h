#pragma once

#include "platform/core/Geometry.h"
#include "platform/window/Handle.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace veldan {

enum class StageKind { Memory, X11, X11WithManager };

[[nodiscard]] std::string NameOf(StageKind kind);

/// Where a scenario takes place: a fresh desktop on one of the displays, with the user's hand and eyes. The same
/// scenario has the same outcome on each. When a gesture returns, the window system has handled what it caused at once;
/// what takes time, such as a hover or the work of a window manager, is awaited with Eventually.
class Stage {
public:
    /// Null if the stage can't be set up, which is an error of the test.
    [[nodiscard]] static std::unique_ptr<Stage> Make(StageKind kind);
    virtual ~Stage() = default;

    virtual void Move(CPoint screen) = 0;
    virtual void Press(int button = 1) = 0;
    virtual void Release(int button = 1) = 0;
    /// One step of the wheel: 1 is away from the user, -1 towards them.
    virtual void Turn(int direction) = 0;
    /// Lets time pass.
    virtual void Wait(int milliseconds) = 0;
    /// The colour that the user sees, 0x00RRGGBB.
    [[nodiscard]] virtual std::uint32_t Seen(CPoint screen) = 0;
    /// Shows a window of another program, on top of the others and in a colour of its own.
    virtual void OpenForeignWindow(const CRect& rect) = 0;
    /// Switches to it by the keyboard.
    virtual void SwitchToForeignWindow() = 0;
    /// Another program unmaps a top-level window of ours.
    virtual void Unmap(HWND window) = 0;
    /// Waits until a window manager has finished with the frames made so far and has given the last one the focus.
    virtual void LetFramesSettle() { Wait(20); }
    /// Lets time pass until a condition holds; false if it never does.
    [[nodiscard]] bool Eventually(const std::function<bool()>& condition);

    void Click(CPoint screen, int button = 1);
    /// Positive steps are away from the user.
    void Wheel(int steps);

    /// The screen has at least this size.
    static constexpr CSize kScreen{1024, 768};
};

}  // namespace veldan
