#pragma once

#include "platform/core/Geometry.h"
#include "platform/window/Handle.h"

namespace veldan {

struct WindowRecord;

/// Hears from the tree of windows that one of them goes. Listeners are called in the order in which they were added.
class DestructionListener {
public:
    /// The window leaves the table after this call. Whoever still names it lets go of it.
    virtual void OnDestroyed(HWND window) = 0;

protected:
    ~DestructionListener() = default;
};

/// Hears from the tree what becomes of windows. Functions that take a record must not call out of the window system;
/// the record is as it will be.
class WindowListener : public DestructionListener {
public:
    virtual void OnAdded(WindowRecord& /*record*/) {}
    virtual void OnShown(WindowRecord& /*record*/) {}
    /// The window's own visible flag has fallen. The window has not been told yet.
    virtual void OnHiding(WindowRecord& /*record*/) {}
    /// The window has been told that it is hidden, and may be gone. What it held goes to others, who may be told.
    virtual void OnHidden(HWND /*window*/) {}
    /// The enabled flag has changed; the window has not been told yet. The others may be told.
    virtual void OnEnabledChanged(HWND /*window*/, bool /*enabled*/) {}
    virtual void OnPlaced(WindowRecord& /*record*/, const CRect& /*before*/) {}
    /// The window changed its place among its siblings.
    virtual void OnRestacked(WindowRecord& /*record*/) {}
    void OnDestroyed(HWND /*window*/) override {}

protected:
    ~WindowListener() = default;
};

}  // namespace veldan
