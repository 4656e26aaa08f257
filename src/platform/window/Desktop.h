#pragma once

#include "platform/core/Clock.h"
#include "platform/display/Display.h"
#include "platform/draw/DC.h"
#include "platform/window/Messages.h"
#include "platform/window/Styles.h"
#include "platform/window/WaitSet.h"
#include "platform/window/WindowTable.h"

#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace veldan {

class CWnd;
struct CREATESTRUCT;

/// Called when a timer without a window is due.
using TimerProc = void (*)(UINT_PTR id);

/// The window system of the process: the table of windows, the message queue, focus, capture, hover tracking, timers,
/// the clock and the display. All of its state is in one object, which is made at the first use and never destroyed by
/// the end of the process; a test installs a fresh one.
///
/// Whatever calls out (handlers, callbacks) may destroy any window and delete its object; so only handles are kept
/// across calls, and each is asked again afterwards. Messages are retrieved in this order: posted, quit, input,
/// painting, timers; sent ones run at once, nested. Between paints in a row, input that the display still has is
/// fetched every few milliseconds. One thread.
class VELDAN_PLATFORM_API Desktop {
public:
    /// Sees every message that a window is given, in the order in which they start.
    using Observer = std::function<void(const MSG& message, bool sent)>;

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
    [[nodiscard]] const Clock& GetClock() const { return *m_clock; }
    [[nodiscard]] const WindowRecord* Find(HWND window) const;
    [[nodiscard]] CWnd* ObjectOf(HWND window) const;
    /// The top-level windows from the topmost to the lowest.
    [[nodiscard]] const std::vector<HWND>& TopLevels() const { return m_topLevels; }
    /// Number of windows in the table.
    [[nodiscard]] std::size_t WindowCount() const;
    void SetObserver(Observer observer) { m_observer = std::move(observer); }

    // Loops: the host's or the layer's own.

    /// Becomes readable when Dispatch has something to do, whoever caused it and by whatever call. Watch it for reading
    /// in any loop.
    [[nodiscard]] int Descriptor() const { return m_waitSet.Descriptor(); }
    /// Handles everything that waits, without blocking.
    void Dispatch();
    /// Handles messages until a quit message; its result.
    int Run();
    /// Waits for one message and handles it. False: it was the quit message.
    bool PumpMessage();
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
    [[nodiscard]] const MSG& CurrentMessage() const { return m_currentMessage; }
    /// Puts another message in its place while a parent hands a message back to a control; gives the one before.
    MSG ExchangeCurrentMessage(const MSG& message) { return std::exchange(m_currentMessage, message); }

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
    enum class Stacking { Keep, Top, Bottom, Below };
    bool PlaceWindow(HWND window, const CRect& rect, Stacking stacking, HWND sibling, UINT flags);
    bool EnableWindow(HWND window, bool enable);
    bool ModifyStyle(HWND window, UINT remove, UINT add);
    /// Every paint of the window covers all of its pixels, so what its parent would draw under it needn't be drawn.
    void SetOpaque(HWND window);
    void SetText(HWND window, const CString& text);
    /// The deepest visible enabled window at a point of the screen within a top-level window, or null.
    [[nodiscard]] HWND WindowAt(HWND topLevel, CPoint screen) const;

    // Painting.

    void Invalidate(HWND window, const CRect& client, bool erase);
    void UpdateWindow(HWND window);
    /// A device context on the window's pixels, after its pending erase and those of its ancestors have run.
    [[nodiscard]] HDC WindowDC(HWND window);
    /// The same, limited to what is left to paint, which counts as painted from now on. `area`: what that was.
    [[nodiscard]] HDC BeginPaint(HWND window, Region& area);
    /// What was drawn on the window is to be shown.
    void MarkDrawn(HWND window);

    // Focus and activation.

    [[nodiscard]] HWND Focus() const { return m_focus; }
    [[nodiscard]] HWND Active() const { return m_active; }
    HWND SetFocus(HWND window);
    void Activate(HWND topLevel);
    void Deactivate();

    // Pointer.

    [[nodiscard]] HWND Capture() const { return m_capture; }
    HWND SetCapture(HWND window);
    bool TrackMouseEvent(HWND window, UINT flags, UINT hoverTime);
    /// The pointer's place on the screen, also outside of all own windows.
    [[nodiscard]] CPoint CursorPos();
    void SetCursor(CursorShape shape);
    /// Ends what grabs the pointer on the display. To be called before code outside of the library runs for long.
    void ReleaseGrab();

    // Timers.

    UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT period, TimerProc proc = nullptr);
    bool KillTimer(HWND window, UINT_PTR id);

private:
    struct Timer {
        HWND window;
        UINT_PTR id = 0;
        UINT period = 0;
        std::int64_t due = 0;
        TimerProc proc = nullptr;
    };
    struct Tracking {
        HWND window;
        bool hover = false;
        bool leave = false;
        UINT hoverTime = 0;
        CPoint anchor;
        std::int64_t due = 0;
    };
    struct Press {
        HWND window;
        int button = 0;
        std::int64_t time = 0;
        CPoint screen;
    };

    /// Something is left to do: makes the descriptor readable until the next Settle.
    void Wake();
    void RetestPointerSoon();

    LRESULT CallWindow(WindowRecord& record, UINT message, WPARAM wParam, LPARAM lParam, bool sent);
    void DispatchMessage(const MSG& message);

    void AttachToParent(WindowRecord& record);
    void UnlinkFromParent(WindowRecord& record);
    void RenumberChildren(WindowRecord& parent);
    [[nodiscard]] std::vector<HWND> ChildrenOf(HWND window) const;
    void DestroyOwned(HWND owner);
    void SendDestroy(HWND window);
    void FinishDestroy(HWND window);
    void ForgetWindow(HWND window);

    void Hide(HWND window);
    void HideChild(WindowRecord& record);
    void ShowChild(WindowRecord& record);
    void HideTopLevel(HWND window);
    void ShowTopLevel(HWND window, bool activate);
    bool TakeHidden(HWND window);
    void MoveTopLevel(WindowRecord& record, const CRect& rect);
    void DropSurface(WindowRecord& record);
    void MoveChild(WindowRecord& record, const CRect& rect);
    void RestackTopLevel(WindowRecord& record, Stacking stacking, HWND sibling);
    void RestackChild(WindowRecord& record, Stacking stacking, HWND sibling);
    void SendPlaceMessages(HWND window, const CRect& before, const CRect& after);
    void LeaveFocusOf(HWND hidden);

    [[nodiscard]] CPoint OriginOf(const WindowRecord& record) const;
    [[nodiscard]] Region VisibleRegion(const WindowRecord& record) const;
    [[nodiscard]] const std::shared_ptr<Surface>& SurfaceOf(HWND window);
    void AddDirty(HWND window, const Region& area);
    void InvalidateArea(WindowRecord& record, const CRect& client, bool erase);
    void QueuePaint(WindowRecord& record);
    void QueuePaintOfTree(WindowRecord& record);
    [[nodiscard]] HWND NextPaint(HWND ancestor);
    void PaintWindow(HWND window);
    /// What a pending erase leaves out: nothing where the pixels are to be read or drawn on, and the children that
    /// cover their own where all of it is painted anew.
    enum class EraseArea { Whole, AroundOpaqueChildren };
    void EraseNow(HWND window, EraseArea wanted);
    void SubtractOpaqueChildren(const WindowRecord& record, CPoint origin, Region& clip) const;
    void InvalidateChildren(const WindowRecord& record, const Region& area);
    void PresentAll();
    void Present(WindowRecord& topLevel);

    /// What a look for input gave: nothing, a message, or something that made the queue worth another look from the
    /// top.
    enum class Retrieved { Nothing, Message, Again };

    bool NextPosted(MSG& message);
    Retrieved NextInput(MSG& message);
    bool NextPaintMessage(MSG& message);
    bool NextTimer(MSG& message);
    void ReadDisplay();
    [[nodiscard]] bool HasWork() const;
    [[nodiscard]] std::int64_t NextDue() const;

    Retrieved TakeInput(const DisplayEvent& event, MSG& message);
    Retrieved RetestPointer(MSG& message);
    bool EnterWindow(HWND window);
    void LeaveAtOnce();
    Retrieved PointerMoved(const DisplayEvent& event, MSG& message);
    void PointerLeft(const DisplayEvent& event);
    Retrieved ButtonChanged(const DisplayEvent& event, MSG& message);
    Retrieved WheelTurned(const DisplayEvent& event, MSG& message);
    Retrieved KeyChanged(const DisplayEvent& event, MSG& message);
    void PostCharacters(HWND window, const std::string& text);
    void FrameMoved(const DisplayEvent& event);
    void FocusReceived(HWND topLevel);
    void DisplayLost();
    void NotePointer(const DisplayEvent& event);
    [[nodiscard]] HWND MouseTarget(HWND topLevel, CPoint screen) const;
    [[nodiscard]] MSG MouseMessage(HWND window, UINT message, UINT flags, CPoint screen) const;
    [[nodiscard]] bool IsDoubleClick(HWND window, int button, CPoint screen);
    bool HoverDue(MSG& message);
    void MoveFocusTo(HWND window);

    std::unique_ptr<Clock> m_clock;
    std::unique_ptr<Display> m_display;
    WindowTable m_table;
    std::vector<HWND> m_topLevels;
    WaitSet m_waitSet;
    Observer m_observer;

    std::deque<MSG> m_posted;
    std::deque<DisplayEvent> m_input;
    int m_nPaintsSinceRead = 0;
    std::int64_t m_inputReadAt = 0;
    bool m_bQuit = false;
    int m_nQuitResult = 0;
    MSG m_currentMessage;
    std::vector<std::vector<HWND>> m_paintByDepth;

    HWND m_focus;
    HWND m_active;
    HWND m_capture;

    HWND m_pointerTopLevel;  // the own top-level window that the pointer is in
    HWND m_mouseWindow;      // the window that the pointer was last known to be in
    CPoint m_ptPointer;
    UINT m_uPointerFlags = 0;
    bool m_bRetestPointer = false;
    Tracking m_tracking;
    Press m_lastPress;
    CursorShape m_cursor = CursorShape::Arrow;

    std::vector<Timer> m_timers;
    UINT_PTR m_nNextTimerId = 1;
};

}  // namespace veldan
