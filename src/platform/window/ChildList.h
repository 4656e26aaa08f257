#pragma once

#include "platform/core/Geometry.h"
#include "platform/window/Handle.h"

#include <cstddef>
#include <span>
#include <vector>

namespace veldan {

/// The children of a window from the topmost to the lowest, with what hit tests and clipping ask for. The visible ones are
/// listed apart, so that any number of hidden children costs those questions nothing. Removal leaves a gap that is closed
/// later, so making and destroying children costs the same for any number.
class ChildList {
public:
    struct Entry {
        CRect rect;   ///< In the parent's client pixels.
        HWND window;  ///< Null for a gap.
        bool visible = false;
    };

    /// Adds below all others; returns the place by which the entry is known until Compact or a move changes it.
    std::size_t Append(const Entry& entry);
    void Remove(std::size_t place);
    void SetRect(std::size_t place, const CRect& rect) { m_entries[place].rect = rect; }
    void SetVisible(std::size_t place, bool visible);

    void MoveToTop(std::size_t place);
    void MoveToBottom(std::size_t place);
    void MoveBelow(std::size_t place, std::size_t sibling);

    [[nodiscard]] const Entry& At(std::size_t place) const { return m_entries[place]; }
    [[nodiscard]] const std::vector<Entry>& Entries() const { return m_entries; }
    /// Places of the visible entries, from the topmost to the lowest.
    [[nodiscard]] const std::vector<std::size_t>& Visible() const { return m_visible; }
    /// Those of them that lie above a place.
    [[nodiscard]] std::span<const std::size_t> VisibleAbove(std::size_t place) const;

    [[nodiscard]] bool WantsCompacting() const { return m_gaps > 32 && m_gaps * 2 > m_entries.size(); }
    /// Closes the gaps. Every place changes.
    void Compact();

private:
    void MoveEntry(std::size_t from, std::size_t to);
    void ListVisible();

    std::vector<Entry> m_entries;
    std::vector<std::size_t> m_visible;
    std::size_t m_gaps = 0;
};

}  // namespace veldan
