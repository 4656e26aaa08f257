#include "platform/window/ChildList.h"

#include <algorithm>

namespace veldan {

std::size_t ChildList::Append(const Entry& entry) {
    const std::size_t place = m_entries.size();
    m_entries.push_back(entry);
    if (entry.visible) {
        m_visible.push_back(place);
    }
    return place;
}

void ChildList::Remove(std::size_t place) {
    SetVisible(place, false);
    m_entries[place] = {};
    ++m_gaps;
}

void ChildList::SetVisible(std::size_t place, bool visible) {
    if (m_entries[place].visible == visible) {
        return;
    }
    m_entries[place].visible = visible;
    const auto at = std::ranges::lower_bound(m_visible, place);
    if (visible) {
        m_visible.insert(at, place);
    } else {
        m_visible.erase(at);
    }
}

void ChildList::MoveToTop(std::size_t place) {
    MoveEntry(place, 0);
}

void ChildList::MoveToBottom(std::size_t place) {
    MoveEntry(place, m_entries.size() - 1);
}

void ChildList::MoveBelow(std::size_t place, std::size_t sibling) {
    if (place != sibling) {
        MoveEntry(place, place < sibling ? sibling : sibling + 1);
    }
}

void ChildList::MoveEntry(std::size_t from, std::size_t to) {
    const auto at = [this](std::size_t place) { return m_entries.begin() + static_cast<std::ptrdiff_t>(place); };
    if (from < to) {
        std::rotate(at(from), at(from) + 1, at(to) + 1);
    } else {
        std::rotate(at(to), at(from), at(from) + 1);
    }
    ListVisible();
}

std::span<const std::size_t> ChildList::VisibleAbove(std::size_t place) const {
    return {m_visible.begin(), std::ranges::lower_bound(m_visible, place)};
}

void ChildList::Compact() {
    std::erase_if(m_entries, [](const Entry& entry) { return !entry.window; });
    m_gaps = 0;
    ListVisible();
}

void ChildList::ListVisible() {
    m_visible.clear();
    for (std::size_t place = 0; place < m_entries.size(); ++place) {
        if (m_entries[place].visible) {
            m_visible.push_back(place);
        }
    }
}

}  // namespace veldan
