#pragma once

#include "platform/display/x11/X11TopLevel.h"

#include <memory>
#include <unordered_map>

namespace veldan {

/// The own top-level windows, found by the window layer's number or by the server's.
class X11Windows {
public:
    void Add(std::unique_ptr<X11TopLevel> topLevel);
    void Remove(TopLevelId id);
    /// Makes a window anew that another program has destroyed.
    void Recreate(X11TopLevel& topLevel);
    void Clear();

    /// Null where there is no such window.
    [[nodiscard]] X11TopLevel* Find(TopLevelId id) const;
    [[nodiscard]] X11TopLevel* FindWindow(xcb_window_t window) const;
    [[nodiscard]] bool IsAnyVisible() const;
    /// The shown window that a child of the root is or, as a manager's frame, surrounds.
    [[nodiscard]] const X11TopLevel* FindOutermost(xcb_window_t child) const;

    [[nodiscard]] auto begin() const { return m_byId.begin(); }
    [[nodiscard]] auto end() const { return m_byId.end(); }

private:
    void SetOwnerHint(X11TopLevel& topLevel) const;

    std::unordered_map<TopLevelId, std::unique_ptr<X11TopLevel>> m_byId;
    std::unordered_map<xcb_window_t, X11TopLevel*> m_byWindow;
};

}  // namespace veldan
