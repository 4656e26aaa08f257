#pragma once

#include "platform/display/x11/X11TopLevel.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace veldan {

/// The own top-level windows, found by the window layer's number or by the server's.
class X11Windows {
public:
    explicit X11Windows(X11Connection& connection) : m_connection(connection) {}

    void Add(std::unique_ptr<X11TopLevel> topLevel);
    void Remove(TopLevelId id);
    void Clear();
    /// Makes a window anew that another program has destroyed.
    void Recreate(X11TopLevel& topLevel);

    /// Null where there is no such window.
    [[nodiscard]] X11TopLevel* Find(TopLevelId id) const;
    [[nodiscard]] X11TopLevel* FindWindow(xcb_window_t window) const;
    [[nodiscard]] bool IsAnyVisible() const;
    /// The managed window that a manager's frame surrounds.
    [[nodiscard]] X11TopLevel* FindFramed(xcb_window_t frame) const;
    /// The window on the screen that a child of the root is or, as a manager's frame, surrounds.
    [[nodiscard]] X11TopLevel* FindOutermost(xcb_window_t child) const;

    /// Takes windows off the screen whose owners have gone from it by a manager's will, and puts back those whose
    /// owners are there again, directly above them. Those that were taken off. May wait for an answer.
    std::vector<X11TopLevel*> UpdateKeptOff();

    [[nodiscard]] auto begin() const { return m_byId.begin(); }
    [[nodiscard]] auto end() const { return m_byId.end(); }

private:
    void SetOwnerHint(const X11TopLevel& topLevel) const;
    [[nodiscard]] bool IsOwnerKeptOff(const X11TopLevel& topLevel) const;
    void PutBack(std::vector<X11TopLevel*> topLevels);
    void SortFromLowest(std::vector<X11TopLevel*>& topLevels);

    X11Connection& m_connection;
    std::unordered_map<TopLevelId, std::unique_ptr<X11TopLevel>> m_byId;
    std::unordered_map<xcb_window_t, X11TopLevel*> m_byWindow;
};

}  // namespace veldan
