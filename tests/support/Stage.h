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

/// Where a scenario plays: a fresh desktop on one of the displays, and a person's hand and eyes. The same scenario
/// plays on each with the same outcome. A gesture ends with the window system having handled what it set off at once;
/// what takes time, a hover or a window manager's part, is waited for with Eventually.
class Stage {
public:
    /// Null if the stage can't be set up, which is a fault.
    [[nodiscard]] static std::unique_ptr<Stage> Make(StageKind kind);
    virtual ~Stage() = default;

    virtual void Move(CPoint screen) = 0;
    virtual void Press(int button = 1) = 0;
    virtual void Release(int button = 1) = 0;
    /// One step of the wheel: 1 is away from the person, -1 towards.
    virtual void Turn(int direction) = 0;
    /// Lets time pass.
    virtual void Wait(int milliseconds) = 0;
    /// The colour that the person sees, 0x00RRGGBB.
    [[nodiscard]] virtual std::uint32_t Seen(CPoint screen) = 0;
    /// A shown window of another program, the last one made; it has a colour of its own.
    virtual void OpenForeignWindow(const CRect& rect) = 0;
    /// Switches to it by the keyboard.
    virtual void SwitchToForeignWindow() = 0;
    /// Another program unmaps a top-level window of ours.
    virtual void Unmap(HWND window) = 0;
    /// Lets a window manager finish with the frames made so far, and the last of them have the focus.
    virtual void LetFramesSettle() { Wait(20); }
    /// Lets time pass until something holds; false when it never did.
    [[nodiscard]] bool Eventually(const std::function<bool()>& condition);

    void Click(CPoint screen, int button = 1);
    /// Positive steps are away from the person.
    void Wheel(int steps);

    /// A screen of at least this size.
    static constexpr CSize kScreen{1024, 768};
};

}  // namespace veldan
