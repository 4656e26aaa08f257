#pragma once

#include "platform/core/Geometry.h"
#include "platform/window/Handle.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace veldan {

/// The children of a window from the topmost to the lowest, with what hit tests and clipping ask for. The visible ones
/// are marked apart, so that any number of hidden children costs those questions next to nothing. Removal leaves a gap
/// that is closed later, so making and destroying children costs the same for any number.
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

    // Each tells whether a window changed its place.

    bool MoveToTop(std::size_t place);
    bool MoveToBottom(std::size_t place);
    bool MoveBelow(std::size_t place, std::size_t sibling);

    [[nodiscard]] const Entry& At(std::size_t place) const { return m_entries[place]; }
    [[nodiscard]] const std::vector<Entry>& Entries() const { return m_entries; }
    /// Calls `see` with the visible entries from the topmost to the lowest, as long as it answers true.
    template <class See>
    void ForVisible(See see) const {
        ForVisibleAbove(m_entries.size(), see);
    }
    /// The same for those that lie above a place.
    template <class See>
    void ForVisibleAbove(std::size_t end, See see) const {
        for (std::size_t word = 0; word * kWordBits < end; ++word) {
            for (std::uint64_t bits = m_visible[word]; bits != 0; bits &= bits - 1) {
                const std::size_t place = word * kWordBits + static_cast<std::size_t>(std::countr_zero(bits));
                if (place >= end || !see(m_entries[place])) {
                    return;
                }
            }
        }
    }

    [[nodiscard]] bool WantsCompacting() const { return m_gaps > 32 && m_gaps * 2 > m_entries.size(); }
    /// Closes the gaps. Every place changes.
    void Compact();

private:
    static constexpr std::size_t kWordBits = 64;

    bool MoveEntry(std::size_t from, std::size_t to);
    void MarkVisible(std::size_t place);
    void MarkAllVisible();

    std::vector<Entry> m_entries;
    std::vector<std::uint64_t> m_visible;  // a bit an entry
    std::size_t m_gaps = 0;
};

}  // namespace veldan
