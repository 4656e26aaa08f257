#pragma once

#include "platform/core/Geometry.h"
#include "platform/window/Handle.h"

#include <cstddef>
#include <vector>

namespace veldan {

/// The children of a window from the topmost to the lowest, with what hit tests and clipping ask for kept side by side
/// in memory. Removal leaves a gap that is closed later, so making and destroying children costs the same for any
/// number.
class ChildList {
public:
    struct Entry {
        CRect rect;  ///< In the parent's client pixels.
        HWND window;
        bool visible = false;
    };

    /// Adds below all others; returns the place by which the entry is known until Compact or Raise move it.
    std::size_t Append(const Entry& entry);
    void Remove(std::size_t place);
    /// Moves an entry to `target`'s side: above everything, below everything, or directly below another entry.
    void MoveToTop(std::size_t place);
    void MoveToBottom(std::size_t place);
    void MoveBelow(std::size_t place, std::size_t sibling);

    [[nodiscard]] Entry& At(std::size_t place) { return m_entries[place]; }
    [[nodiscard]] const std::vector<Entry>& Entries() const { return m_entries; }
    [[nodiscard]] std::size_t Count() const { return m_entries.size() - m_gaps; }
    [[nodiscard]] bool WantsCompacting() const { return m_gaps > 32 && m_gaps * 2 > m_entries.size(); }
    /// Closes the gaps. Every place changes; a gap is an entry with a null window.
    void Compact();

private:
    std::vector<Entry> m_entries;
    std::size_t m_gaps = 0;
};

}  // namespace veldan
