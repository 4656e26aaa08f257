#pragma once

#include "platform/core/Clock.h"
#include "platform/display/Display.h"
#include "platform/draw/DC.h"
#include "platform/window/Messenger.h"
#include "platform/window/Timers.h"
#include "platform/window/WaitSet.h"
#include "platform/window/WindowRecord.h"

#include <functional>
#include <memory>
#include <vector>

namespace veldan {

class CWnd;
struct CREATESTRUCT;

/// The window system of the process. It owns the parts that do the work (the tree of windows, the queue, painting,
/// activation, pointer, keyboard, timers, the loop), each with its own state, and is what everybody else calls. It is
/// made at the first use and never destroyed by the end of the process; a test installs a fresh one.
///
/// Whatever calls out (handlers, callbacks) may destroy any window and delete its object; so only handles are kept
/// across calls, and each is asked again afterwards. Messages are retrieved in this order: posted, quit, input,
/// painting, timers; sent ones run at once, nested. Between paints in a row, input that the display still has is
/// fetched every few milliseconds. One thread.
class VELDAN_PLATFORM_API Desktop {
public:
    Desktop(std::unique_ptr<Display> display, std::unique_ptr<Clock> clock);
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// The process's desktop; made at the first call, on the display that the environment asks for.
    [[nodiscard]] static Desktop& Get();
    /// Puts another desktop in place and gives the old one back. For tests, with no window left.
    static std::unique_ptr<Desktop> Install(std::unique_ptr<Desktop> desktop);

    /// Asking the display for anything may take in events or leave requests unsent, so the loop comes round after it.
    [[nodiscard]] Display& GetDisplay();
    [[nodiscard]] const Clock& GetClock() const;
    [[nodiscard]] const WindowRecord* Find(HWND window) const;
    [[nodiscard]] CWnd* ObjectOf(HWND window) const;
    /// The top-level windows from the topmost to the lowest.
    [[nodiscard]] const std::vector<HWND>& TopLevels() const;
    /// Number of windows in the table.
    [[nodiscard]] std::size_t WindowCount() const;
    void SetObserver(MessageObserver observer);

    // Loops: the host's or the layer's own.

    /// Becomes readable when Dispatch has something to do, whoever caused it and by whatever call. Watch it for reading
    /// in any loop.
    [[nodiscard]] int Descriptor() const;
    /// Handles everything that waits, without blocking.
    void Dispatch();
    /// Handles messages until a quit message; its result.
    int Run();
    /// Waits for one message and handles it. False: it was the quit message.
    bool PumpMessage();
    /// Handles messages for as long as `goesOn` answers true, as Run does: the loop of modal dialogs and drags. False:
    /// a quit message ended it, which the loop outside of this one gets too, or the host quits, or the display is gone.
    bool RunWhile(const std::function<bool()>& goesOn);
    /// Puts the host's own wait in the place of the layer's, which waits on the descriptor. All loops of the layer wait
    /// there: Run, modal dialogs, popup menus, drags. The function runs one turn of the host's loop, which may block
    /// and must dispatch when the descriptor is readable. False: the host quits, and each loop ends. Empty: the layer's
    /// own.
    void SetWaitFunction(WaitFunction wait);
    /// Takes the next message without waiting; false: there is none.
    bool PeekMessage(MSG& message);
    /// Runs the PreTranslateMessage walk from the message's window up its parents, then hands the message to its
    /// window.
    void TranslateAndDispatch(MSG& message);
    /// Ends Run, once what was posted before is handled. Hosts with a loop of their own don't notice it.
    void PostQuitMessage(int result);
    /// The end of every public entry and of each dispatch: shows what was drawn, sends out requests, and sees to it
    /// that the descriptor is readable if and only if something waits.
    void Settle();

    // Life of windows.

    HWND CreateWindow(CWnd& object, const WindowClass& windowClass, const CREATESTRUCT& create);
    bool DestroyWindow(HWND window);
    /// Attaches another object to a window; the one before is left without a window. False if the window is gone.
    bool ReplaceObject(HWND window, CWnd& object);
    /// Forgets the object of a window whose object is being deleted.
    void DetachObject(HWND window);

    // Messages.

    LRESULT SendMessage(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    bool PostMessage(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    /// The message whose handler runs, innermost.
    [[nodiscard]] const MSG& CurrentMessage() const;
    /// Negative if Shift, Ctrl, Alt (VK_MENU) or a button of the pointer was held when the input came that led to the
    /// message whose handler runs; 0 otherwise, and for all other keys.
    [[nodiscard]] short GetKeyState(UINT key) const;
    /// Puts another message in its place while a parent hands a message back to a control; gives the one before.
    MSG ExchangeCurrentMessage(const MSG& message);

    // Relations.

    [[nodiscard]] HWND ParentOf(HWND window) const;
    [[nodiscard]] HWND TopLevelOf(HWND window) const;
    [[nodiscard]] bool IsWithin(HWND window, HWND ancestor) const;
    [[nodiscard]] HWND ChildWithId(HWND parent, UINT id) const;
    /// The children whose own visible flag is set, from the topmost to the lowest.
    [[nodiscard]] std::vector<HWND> VisibleChildrenOf(HWND parent) const;
    /// The owner of a popup that is made without one: the active window, else the topmost visible frame.
    [[nodiscard]] HWND DefaultOwner() const;

    // Place and state.

    [[nodiscard]] CRect WindowRect(HWND window) const;
    [[nodiscard]] bool IsVisible(HWND window) const;
    bool ShowWindow(HWND window, ShowCommand command);
    bool PlaceWindow(HWND window, const CRect& rect, Stacking stacking, HWND sibling, UINT flags);
    /// Tells whether the window was disabled before. `modal`: the window that has a disabled top-level window's input;
    /// a press on the disabled one raises, activates and flashes it.
    bool EnableWindow(HWND window, bool enable, HWND modal = {});
    /// Whether input may go to the window: it and all its ancestors are enabled.
    [[nodiscard]] bool TakesInput(HWND window) const;
    bool ModifyStyle(HWND window, UINT remove, UINT add);
    /// Every paint of the window covers all of its pixels, so what its parent would draw under it needn't be drawn.
    void SetOpaque(HWND window);
    void SetText(HWND window, const CString& text);
    /// The deepest visible window at a point of the screen within a top-level window that takes input, or null.
    [[nodiscard]] HWND WindowAt(HWND topLevel, CPoint screen) const;

    // Painting.

    void Invalidate(HWND window, const CRect& client, bool erase);
    /// Paints what is left of the window and its children, and shows it at once.
    void UpdateWindow(HWND window);
    /// A device context on the window's pixels, after its pending erase and those of its ancestors have run.
    [[nodiscard]] HDC WindowDC(HWND window);
    /// The same, limited to what is left to paint, which counts as painted from now on. `area`: what that was.
    [[nodiscard]] HDC BeginPaint(HWND window, Region& area);
    /// What was drawn on the window is to be shown.
    void MarkDrawn(HWND window);

    // Focus and activation.

    [[nodiscard]] HWND Focus() const;
    [[nodiscard]] HWND Active() const;
    HWND SetFocus(HWND window);
    void Activate(HWND topLevel);
    void Deactivate();

    // Popups: drop lists and menus.

    /// Puts a top-level window that never takes the focus (WS_EX_NOACTIVATE) at the end of the chain of open popups, on
    /// behalf of a window. Keys go to it, the pointer is for the chain alone, and a press elsewhere ends the chain and
    /// does nothing else. It also ends with its owner's death, hiding or disabling, with a change of the active window,
    /// and before a modal dialog. What ends is sent WM_CANCELMODE, and is to hide or destroy itself. A popup opened for
    /// a window outside of the chain begins a new one. False if one of the two is gone.
    bool OpenPopup(HWND popup, HWND owner);
    /// Takes a popup out of the chain that ends by itself, and ends those that it opened.
    void ClosePopup(HWND popup);
    void CancelPopups();

    // Pointer.

    [[nodiscard]] HWND Capture() const;
    HWND SetCapture(HWND window);
    bool TrackMouseEvent(HWND window, UINT flags, UINT hoverTime);
    /// The pointer's place on the screen, also outside of all own windows.
    [[nodiscard]] CPoint CursorPos();
    void SetCursor(CursorShape shape);
    /// Ends what grabs the pointer on the display. To be called before code outside of the library runs for long.
    void ReleaseGrab();

    // Timers.

    /// Starts or replaces a window's timer; the period is in milliseconds. Returns the id, 0 for a window that is gone.
    UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT period);
    /// Starts a timer that calls a function until it is killed, by the null handle, or its owner goes. Returns its id.
    UINT_PTR SetTimer(const TimerOwner& owner, UINT period, TimerProc proc);
    bool KillTimer(HWND window, UINT_PTR id);

private:
    struct Parts;

    std::unique_ptr<Parts> m_parts;
};

}  // namespace veldan
