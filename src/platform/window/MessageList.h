#pragma once

/// Every message of the layer: name, number, and the signature its handlers have (see MessageMap.h). Constants, names
/// for the message spy and the decoding of arguments all come from this list.
///
/// Life of a window
///   WM_CREATE        sent by creation before the window can be seen; -1 refuses the window.
///   WM_DESTROY       sent when destruction starts, parents before children; the window is hidden already.
///   WM_NCDESTROY     the last message, children before parents; the object is detached behind it.
///   WM_INITDIALOG    sent to a dialog when it and its controls exist.
///   WM_CLOSE         a person asked to close a frame; the default destroys it.
/// Place and state
///   WM_MOVE          sent after a real move; the new client corner, in the parent's or the screen's pixels.
///   WM_SIZE          sent after a real change of size; the new client size.
///   WM_SHOWWINDOW    sent when the window's own visible flag changes.
///   WM_ENABLE        sent when the window's enabled flag changes.
///   WM_SETFONT       gives a window the font of its text: a const CFont* in wParam, null for the system font, which is
///                    copied; lParam tells whether to paint again. WM_GETFONT answers with that copy, or null.
/// Focus
///   WM_SETFOCUS      sent to the window that now has the keyboard focus; the argument is the one that had it.
///   WM_KILLFOCUS     sent to the window that lost it; the argument is the one that gets it, or null.
///   WM_CANCELMODE    sent to an open popup that is to end without a choice; it is out of the chain of popups by then.
/// Painting
///   WM_ERASEBKGND    sent before a paint, or before the window's pixels are read; TRUE: the background is drawn.
///   WM_PAINT         retrieved while an update region is left on a visible window.
///   WM_CTLCOLOR...   sent by a control to its parent before it draws, by the kind of control; the CDC in wParam, the
///                    control's handle in lParam; the result is a brush or null. OnCtlColors makes one entry for them
///                    all.
///   WM_MEASUREITEM   sent by an owner-drawn control to its parent to ask for the size of an item.
///   WM_DRAWITEM      sent by an owner-drawn control to its parent to have an item drawn.
///   WM_SETCURSOR     sent to the window under the pointer at each move; TRUE: the cursor is set.
/// Input, retrieved from the queue; positions are client pixels, but for WM_MOUSEWHEEL's, which are the screen's
///   WM_MOUSEHOVER and WM_MOUSELEAVE come only when asked for with TrackMouseEvent, once each.
///   WM_CAPTURECHANGED is sent to a window that loses the mouse capture.
///   WM_OUTSIDEPRESS  sent to a shown popup when a button goes down outside of it and of all that it owns.
/// Notification
///   WM_COMMAND       sent by a control to its parent: id and code in wParam, the control's handle in lParam.
///   WM_TIMER         retrieved when a timer is due; at most one per timer waits.
/// Reflection: the parent hands a control's own messages back to it before it looks at its own handlers
///   OCM_CTLCOLOR     for each WM_CTLCOLOR...: the CDC in wParam, a CTLCOLOR_... kind in lParam.
///   OCM_DRAWITEM     for WM_DRAWITEM, OCM_MEASUREITEM for WM_MEASUREITEM: with the same arguments.
///   OCM_COMMAND      for WM_COMMAND, with the same arguments. OnReflected handles one notification code.
#define VELDAN_MESSAGES(X)                     \
    X(WM_CREATE, 0x0001, Create)               \
    X(WM_DESTROY, 0x0002, Nothing)             \
    X(WM_MOVE, 0x0003, Move)                   \
    X(WM_SIZE, 0x0005, Size)                   \
    X(WM_SETFOCUS, 0x0007, OtherWindow)        \
    X(WM_KILLFOCUS, 0x0008, OtherWindow)       \
    X(WM_ENABLE, 0x000a, Flag)                 \
    X(WM_PAINT, 0x000f, Nothing)               \
    X(WM_CLOSE, 0x0010, Nothing)               \
    X(WM_ERASEBKGND, 0x0014, Erase)            \
    X(WM_SHOWWINDOW, 0x0018, ShowWindow)       \
    X(WM_CANCELMODE, 0x001f, Nothing)          \
    X(WM_SETCURSOR, 0x0020, SetCursor)         \
    X(WM_DRAWITEM, 0x002b, DrawItem)           \
    X(WM_MEASUREITEM, 0x002c, MeasureItem)     \
    X(WM_SETFONT, 0x0030, Raw)                 \
    X(WM_GETFONT, 0x0031, Raw)                 \
    X(WM_NCDESTROY, 0x0082, Nothing)           \
    X(WM_KEYDOWN, 0x0100, Key)                 \
    X(WM_KEYUP, 0x0101, Key)                   \
    X(WM_CHAR, 0x0102, Key)                    \
    X(WM_INITDIALOG, 0x0110, Raw)              \
    X(WM_COMMAND, 0x0111, Raw)                 \
    X(WM_TIMER, 0x0113, Timer)                 \
    X(WM_CTLCOLORMSGBOX, 0x0132, Raw)          \
    X(WM_CTLCOLOREDIT, 0x0133, Raw)            \
    X(WM_CTLCOLORLISTBOX, 0x0134, Raw)         \
    X(WM_CTLCOLORBTN, 0x0135, Raw)             \
    X(WM_CTLCOLORDLG, 0x0136, Raw)             \
    X(WM_CTLCOLORSCROLLBAR, 0x0137, Raw)       \
    X(WM_CTLCOLORSTATIC, 0x0138, Raw)          \
    X(WM_MOUSEMOVE, 0x0200, Mouse)             \
    X(WM_LBUTTONDOWN, 0x0201, Mouse)           \
    X(WM_LBUTTONUP, 0x0202, Mouse)             \
    X(WM_LBUTTONDBLCLK, 0x0203, Mouse)         \
    X(WM_RBUTTONDOWN, 0x0204, Mouse)           \
    X(WM_RBUTTONUP, 0x0205, Mouse)             \
    X(WM_RBUTTONDBLCLK, 0x0206, Mouse)         \
    X(WM_MBUTTONDOWN, 0x0207, Mouse)           \
    X(WM_MBUTTONUP, 0x0208, Mouse)             \
    X(WM_MBUTTONDBLCLK, 0x0209, Mouse)         \
    X(WM_MOUSEWHEEL, 0x020a, Wheel)            \
    X(WM_CAPTURECHANGED, 0x0215, OtherWindow)  \
    X(WM_MOUSEHOVER, 0x02a1, Raw)              \
    X(WM_MOUSELEAVE, 0x02a3, Raw)              \
    X(WM_OUTSIDEPRESS, 0x0360, Nothing)        \
    X(OCM_CTLCOLOR, 0xbc19, CtlColorReflected) \
    X(OCM_DRAWITEM, 0xbc2b, DrawItem)          \
    X(OCM_MEASUREITEM, 0xbc2c, MeasureItem)    \
    X(OCM_COMMAND, 0xbd11, Raw)
