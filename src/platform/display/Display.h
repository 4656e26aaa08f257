#pragma once

#include "platform/core/Export.h"
#include "platform/core/Geometry.h"
#include "platform/core/Types.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace veldan {

class Region;
class Surface;

/// A top-level window on a display; the window layer chooses the number, never 0, and never uses one twice.
using TopLevelId = std::uint64_t;

/// What a window is for, as a hint for window managers and compositors.
enum class TopLevelType { Normal, Dialog, PopupMenu, ComboList, ToolTip };

/// What stays as it is for a window's life, apart from the title.
struct TopLevelTraits {
    TopLevelType type = TopLevelType::PopupMenu;
    /// A window manager may decorate, move, resize and iconify it, or put it on another desktop. Without this trait the
    /// window stands exactly where it is told.
    bool managed = false;
    bool takesFocus = true;
    bool letsInputThrough = false;  ///< The pointer doesn't notice it.
    std::string title{};
    /// While a window manager keeps the owner off the screen, as an icon or on another desktop, the window isn't on the
    /// screen either, whatever SetVisible says. It comes back with the owner, directly above it. An owner that is
    /// hidden by SetVisible hides nothing.
    TopLevelId owner = 0;
    CSize smallest{};  ///< Of a frame: a window manager makes it no smaller.
};

enum class StackPlace { Top, Bottom, Above, Below };

enum class CursorShape { Arrow, Wait, Hand, Text };

enum class DisplayEventKind {
    PointerMove,  ///< The pointer moved over, or came into, `window`. Also sent when windows moved under a resting one.
    PointerLeave,  ///< The pointer is in no own window any more; `screen` where it was last seen.
    ButtonPress,   ///< `button` 1 left, 2 middle, 3 right, over `window`.
    ButtonRelease,
    Wheel,     ///< `delta` is 120 for a step away from the person, -120 for one towards them.
    KeyPress,  ///< `key` is a virtual key code, `text` what the key typed as UTF-8, often empty; control characters
               ///< too.
    KeyRelease,
    FocusIn,        ///< `window` has the keyboard focus now.
    FocusOut,       ///< No own window has the keyboard focus any more.
    ForeignActive,  ///< A window of another program became the active one; only sent while an own window is shown.
                    ///< Where the focus went there as well, FocusOut comes first.
    OutsidePress,   ///< A button went down at `screen` where no own window is; only sent while an own window is shown.
    Moved,          ///< A window manager put the frame `window` to `rect`.
    Hidden,         ///< Another program unmapped or destroyed `window`, which was shown; showing it brings it back.
    CloseRequest,   ///< A person asked to close the frame `window`.
    Lost,           ///< The display is gone. Nothing follows.
};

/// State of buttons and modifiers with a pointer event, as in the wParam of mouse messages.
inline constexpr UINT MK_LBUTTON = 0x01;
inline constexpr UINT MK_RBUTTON = 0x02;
inline constexpr UINT MK_SHIFT = 0x04;
inline constexpr UINT MK_CONTROL = 0x08;
inline constexpr UINT MK_MBUTTON = 0x10;
inline constexpr UINT MK_ALT = 0x8000;  ///< With display events only.

/// The modifier that a key is, or 0.
[[nodiscard]] VELDAN_PLATFORM_API UINT ModifierOfKey(UINT key);

struct DisplayEvent {
    DisplayEventKind kind = DisplayEventKind::PointerMove;
    TopLevelId window = 0;
    CPoint screen{};
    int button = 0;
    int delta = 0;
    UINT flags = 0;  ///< MK_... as they are after the event.
    UINT key = 0;
    bool repeat = false;  ///< The key was down already.
    std::string text{};
    CRect rect{};
    std::uint64_t mark = 0;  ///< Of a press: the latest Mark that the display had come to by then.
};

/// Where top-level windows live: maps them, shows their pixels, hands over input. It only translates: child windows,
/// focus within a window, activation, hover and capture belong to the window layer. Calls on an unknown window do
/// nothing. All coordinates are pixels of the screen. One thread. No call throws, prints or ends the process; a display
/// that went away answers every call quietly.
class VELDAN_PLATFORM_API Display {
public:
    virtual ~Display();

    [[nodiscard]] virtual std::string_view Name() const = 0;
    [[nodiscard]] virtual bool IsAlive() const = 0;
    [[nodiscard]] virtual CRect ScreenRect() const = 0;

    /// The new window is hidden and stands above the others.
    virtual void CreateTopLevel(TopLevelId id, const TopLevelTraits& traits, const CRect& rect) = 0;
    virtual void DestroyTopLevel(TopLevelId id) = 0;
    virtual void SetTitle(TopLevelId id, const std::string& title) = 0;
    virtual void SetRect(TopLevelId id, const CRect& rect) = 0;
    /// Maps or unmaps. What was presented before is on the screen from the first frame, also where another program
    /// destroyed the window meanwhile.
    virtual void SetVisible(TopLevelId id, bool visible) = 0;
    /// `sibling` counts for Above and Below: `id` goes directly above or below it and its decoration. A popup that was
    /// put above its owner's frame lies no longer over windows of other programs that are above that frame.
    virtual void Restack(TopLevelId id, StackPlace place, TopLevelId sibling) = 0;

    /// Gives the keyboard focus to a shown window; remembers who had it before.
    virtual void TakeFocus(TopLevelId id) = 0;
    /// Hands the focus back to whoever had it before, where it is still ours.
    virtual void GiveBackFocus() = 0;

    /// Makes a surface for the pixels of a window of this size, for Present. A display may show it without a copy of
    /// its own: what is drawn on it can then be seen before it is presented. The surface stays good when the window or
    /// the display goes.
    [[nodiscard]] virtual std::shared_ptr<Surface> MakeSurface(TopLevelId id, CSize size);
    /// Takes over the dirty part of the window's pixels. `pixels` is the whole window, whoever made it, and may change
    /// after the call.
    virtual void Present(TopLevelId id, const Surface& pixels, const Region& dirty) = 0;

    virtual void SetCursor(TopLevelId id, CursorShape shape) = 0;
    /// The pointer's place now, also where it is in a foreign window; may wait for the display's answer.
    [[nodiscard]] virtual CPoint QueryPointer() = 0;
    /// Ends at once what grabs the pointer, so that code outside the library never runs under a grab of ours. A press
    /// that NextEvent hasn't come to yet may grab it anew.
    virtual void ReleaseGrab() = 0;

    /// Parts the presses that were made before this call from those made after it: only the latter carry at least this
    /// number. Grows with each call.
    [[nodiscard]] virtual std::uint64_t Mark() = 0;

    /// Becomes readable when NextEvent may have news; -1 where there is no connection, and from its loss on.
    [[nodiscard]] virtual int Descriptor() const = 0;
    /// Takes the next event, without waiting. False: there is none, and the descriptor will tell of the next.
    [[nodiscard]] virtual bool NextEvent(DisplayEvent& event) = 0;
    /// Sends out what is still buffered.
    virtual void Flush() = 0;
    /// Returns when the display has carried out everything so far.
    virtual void Sync() = 0;
    /// Number of waits for an answer of the display so far.
    [[nodiscard]] virtual std::uint64_t RoundTrips() const = 0;
};

}  // namespace veldan
