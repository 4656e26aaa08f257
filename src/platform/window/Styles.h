#pragma once

#include "platform/core/Types.h"
#include "platform/display/Display.h"

namespace veldan {

/// Window styles. A window is a child, a popup, or, with neither, a frame that a window manager may handle.
inline constexpr UINT WS_POPUP = 0x80000000;
inline constexpr UINT WS_CHILD = 0x40000000;
inline constexpr UINT WS_VISIBLE = 0x10000000;
inline constexpr UINT WS_DISABLED = 0x08000000;
inline constexpr UINT WS_OVERLAPPED = 0x00000000;

/// Styles of controls in a dialog: the Tab key stops here; the first of a group that arrow keys go through.
inline constexpr UINT WS_GROUP = 0x00020000;
inline constexpr UINT WS_TABSTOP = 0x00010000;

/// Extended styles.
inline constexpr UINT WS_EX_TRANSPARENT = 0x20;       ///< The pointer falls through; tooltips.
inline constexpr UINT WS_EX_NOACTIVATE = 0x08000000;  ///< Never takes the activation.

/// Class styles.
inline constexpr UINT CS_DBLCLKS = 0x08;
inline constexpr UINT CS_POINTERTHROUGH = 0x10000;  ///< The pointer passes through to the parent; labels.

/// What windows of one sort have in common. Instances are constants that outlive their windows.
struct WindowClass {
    const char* name;
    UINT style = 0;
    CursorShape cursor = CursorShape::Arrow;
    CSize smallest{};  ///< Of a frame: the size below which nobody can shrink it; {} for any.
};

enum class ShowCommand { Hide, Show, ShowNoActivate };
inline constexpr ShowCommand SW_HIDE = ShowCommand::Hide;
inline constexpr ShowCommand SW_SHOW = ShowCommand::Show;
inline constexpr ShowCommand SW_SHOWNA = ShowCommand::ShowNoActivate;

/// Where a window goes among its siblings.
enum class Stacking { Keep, Top, Bottom, Below };

/// Flags of SetWindowPos.
inline constexpr UINT SWP_NOSIZE = 0x0001;
inline constexpr UINT SWP_NOMOVE = 0x0002;
inline constexpr UINT SWP_NOZORDER = 0x0004;
inline constexpr UINT SWP_NOACTIVATE = 0x0010;
inline constexpr UINT SWP_SHOWWINDOW = 0x0040;
inline constexpr UINT SWP_HIDEWINDOW = 0x0080;

/// Flags of TrackMouseEvent.
inline constexpr UINT TME_HOVER = 1;
inline constexpr UINT TME_LEAVE = 2;

}  // namespace veldan
