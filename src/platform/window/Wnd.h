#pragma once

#include "platform/core/Text.h"
#include "platform/window/MessageMap.h"
#include "platform/window/Styles.h"

#include <memory>

namespace veldan {

class CFont;

/// A window as an object: creation, the operations on it, and its message handlers through a table.
///
/// The window itself lives in the desktop's table under its handle; the object is attached to it from creation until
/// the window's last message. Deleting the object destroys a window that is still there; destroying the window leaves
/// the object alone. An object may be deleted in any of its own handlers. Every operation on an object without a window
/// does nothing and answers with false, zero or null. One thread: the one that made the desktop.
class VELDAN_PLATFORM_API CWnd {
public:
    CWnd();
    virtual ~CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    // Life.

    /// Makes the window. `owner` is the parent of a child, the owner of a popup, and may be null for popups and frames.
    /// `rect` is in the parent's client pixels for a child, else in the screen's. False if the parent is gone, a window
    /// is attached already, or WM_CREATE refused.
    bool CreateEx(UINT exStyle, const WindowClass& windowClass, const CString& text, UINT style, const CRect& rect,
                  HWND owner, UINT id);
    virtual bool DestroyWindow();
    /// SubclassWindow for the child of a window that has this id.
    bool SubclassDlgItem(UINT id, const CWnd* parent);
    /// Takes a window over from the object that it has now, which is left without one and goes on to belong to its
    /// owner. The window keeps its text, styles and font; what the other object knew beside those is lost, so take it
    /// over while it is fresh. Runs PreSubclassWindow. False if this object has a window, or that one is gone.
    bool SubclassWindow(HWND hWnd);

    [[nodiscard]] HWND GetSafeHwnd() const { return m_hWnd; }
    /// The object attached to a handle, or null.
    [[nodiscard]] static CWnd* FromHandle(HWND hWnd);

    // Messages.

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    bool PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    // Relations.

    /// The parent of a child, the owner of a popup, or null.
    [[nodiscard]] CWnd* GetParent() const;
    [[nodiscard]] CWnd* GetDlgItem(UINT id) const;
    [[nodiscard]] UINT GetDlgCtrlID() const;

    // Place and state.

    /// The window on the screen.
    [[nodiscard]] CRect GetWindowRect() const;
    /// The window's own pixels; left and top are 0.
    [[nodiscard]] CRect GetClientRect() const;
    [[nodiscard]] CPoint ScreenToClient(CPoint screen) const;
    [[nodiscard]] CRect ScreenToClient(const CRect& screen) const;
    [[nodiscard]] CPoint ClientToScreen(CPoint client) const;
    /// Tells whether the window was visible before.
    bool ShowWindow(ShowCommand command);
    /// `after`: null or wndTop for the top, wndBottom for the bottom, or the window that this one goes directly below.
    bool SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags);
    bool MoveWindow(const CRect& rect);
    bool EnableWindow(bool enable);
    [[nodiscard]] bool IsWindowEnabled() const;
    /// The window's and all its ancestors' visible flags.
    [[nodiscard]] bool IsWindowVisible() const;
    bool ModifyStyle(UINT remove, UINT add);
    /// Promises that every paint covers all of the window's pixels; a paint of its parent then draws nothing under it.
    /// Who reads the parent's pixels there between the two paints finds what was there before.
    void SetOpaque();
    [[nodiscard]] UINT GetStyle() const;
    void SetWindowText(const CString& text);
    [[nodiscard]] CString GetWindowText() const;
    /// Gives the window a font for its text, by WM_SETFONT. Null: the system font.
    void SetFont(const CFont* font, bool redraw = true);
    /// The window's copy of its font, by WM_GETFONT, or null for the system font. Good until the next SetFont.
    [[nodiscard]] const CFont* GetFont();

    // Painting.

    void Invalidate(bool erase = true);
    void InvalidateRect(const CRect& client, bool erase = true);
    /// Paints now what is left to paint in this window and its children, if it can be seen, and shows it.
    void UpdateWindow();

    // Input.

    CWnd* SetFocus();
    [[nodiscard]] static CWnd* GetFocus();
    CWnd* SetCapture();
    static void ReleaseCapture();
    /// Asks for WM_MOUSEHOVER once the pointer has stayed in place for `hoverTime` milliseconds, and for WM_MOUSELEAVE.
    bool TrackMouseEvent(UINT flags, UINT hoverTime);
    /// Starts or replaces the timer with this id; the period is in milliseconds. Returns the id, 0 on failure.
    UINT_PTR SetTimer(UINT_PTR id, UINT period);
    bool KillTimer(UINT_PTR id);

    static const WindowClass kPlainClass;
    static const CWnd wndTop;
    static const CWnd wndBottom;

protected:
    friend class Messenger;
    friend class WindowLife;

    [[nodiscard]] static const MessageMap& ClassMessageMap();
    [[nodiscard]] virtual const MessageMap& GetMessageMap() const;

    /// The road of every message: the table, most derived class first, then DefWindowProc.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// Runs when the window is attached, before its first message.
    virtual void PreSubclassWindow();
    /// Runs behind the last message, with the window gone; the place for a `delete this`.
    virtual void PostNcDestroy();
    /// Sees a retrieved message of this window or of one of its children before it is dispatched, and may change it.
    /// True: the message is done with.
    virtual bool PreTranslateMessage(MSG& message);
    /// Draws an item of this owner-drawn control; reached through the parent, which has no handler for it.
    virtual void DrawItem(DRAWITEMSTRUCT* lpDrawItemStruct);
    /// Gives the size of an item of this owner-drawn control; reached in the same way.
    virtual void MeasureItem(MEASUREITEMSTRUCT* lpMeasureItemStruct);
    /// The default for OnCtlColors: asks the control itself, through OCM_CTLCOLOR. To be called from such a handler.
    HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind);
    /// The child that gets the focus when this window receives it and remembers none; null: the window keeps it.
    [[nodiscard]] virtual CWnd* GetFirstFocus();

    /// Runs the current message through the default processing with its original arguments.
    LRESULT Default();

private:
    bool OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool RouteCommand(WPARAM wParam, LPARAM lParam);
    bool CallEntry(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool Reflect(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool CallOverridable(UINT message, LPARAM lParam);
    LRESULT OnMouseWheelDefault(WPARAM wParam, LPARAM lParam);
    void OnPaintDefault();
    LRESULT OnSetCursorDefault();
    void OnSetFontDefault(const CFont* font, bool redraw);
    static LRESULT ReflectColors(UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT ReflectItem(UINT message, HWND control, WPARAM wParam, LPARAM lParam);

    HWND m_hWnd;
    std::unique_ptr<CFont> m_pFont;  // null: the system font
};

}  // namespace veldan
