#pragma once

#include "platform/core/Text.h"
#include "platform/draw/Region.h"
#include "platform/draw/Surface.h"
#include "platform/window/ChildList.h"
#include "platform/window/Styles.h"

#include <memory>

namespace veldan {

class CWnd;

/// What only a top-level window has.
struct TopLevelState {
    HWND owner;
    std::shared_ptr<Surface> surface;  ///< The pixels of the window and all its children; null until first asked for.
    Region dirty;                      ///< Drawn, but not yet handed to the display.
    HWND lastFocus;                    ///< The child that had the focus last.
    HWND disabledFor;                  ///< The window that has this one's input while it is disabled, if any.
    std::uint64_t shownAt = 0;         ///< The display's mark at the latest show.
};

/// One window in the table. Everything that the window system knows of it, apart from the object that handles its
/// messages.
struct WindowRecord {
    HWND handle;
    CWnd* object = nullptr;
    HWND parent;            ///< Null for a top-level window.
    std::size_t place = 0;  ///< In the parent's list of children.
    ChildList children;
    std::unique_ptr<TopLevelState> topLevel;  ///< Null for a child.
    const WindowClass* windowClass = nullptr;
    UINT style = 0;
    UINT exStyle = 0;
    UINT id = 0;
    int depth = 0;  ///< 0 for a top-level window.
    CString text;
    CRect rect;  ///< In the parent's client pixels, or the screen's.
    bool visible = false;
    bool enabled = true;
    bool destroying = false;
    bool opaque = false;  ///< Each paint covers all of the window's pixels.
    Region update;        ///< What is left to paint, in client pixels.
    bool erase = false;   ///< The update region wants its background first.
    bool queuedForPaint = false;
    bool paintBegun = false;  ///< The paint message that runs has asked for its device context.

    [[nodiscard]] bool IsChild() const { return !topLevel; }
    [[nodiscard]] CRect ClientRect() const { return {0, 0, rect.Width(), rect.Height()}; }
};

}  // namespace veldan
