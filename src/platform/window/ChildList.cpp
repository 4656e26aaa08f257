#include "platform/window/ChildList.h"

#include <algorithm>

namespace veldan {

std::size_t ChildList::Append(const Entry& entry) {
    const std::size_t place = m_entries.size();
    m_entries.push_back(entry);
    m_visible.resize(place / kWordBits + 1);
    MarkVisible(place);
    return place;
}

void ChildList::Remove(std::size_t place) {
    SetVisible(place, false);
    m_entries[place] = {};
    ++m_gaps;
}

void ChildList::SetVisible(std::size_t place, bool visible) {
    m_entries[place].visible = visible;
    MarkVisible(place);
}

void ChildList::MarkVisible(std::size_t place) {
    const std::uint64_t bit = std::uint64_t{1} << place % kWordBits;
    std::uint64_t& word = m_visible[place / kWordBits];
    word = m_entries[place].visible ? word | bit : word & ~bit;
}

bool ChildList::MoveToTop(std::size_t place) {
    return MoveEntry(place, 0);
}

bool ChildList::MoveToBottom(std::size_t place) {
    return MoveEntry(place, m_entries.size() - 1);
}

bool ChildList::MoveBelow(std::size_t place, std::size_t sibling) {
    return place != sibling && MoveEntry(place, place < sibling ? sibling : sibling + 1);
}

bool ChildList::MoveEntry(std::size_t from, std::size_t to) {
    const auto at = [this](std::size_t place) { return m_entries.begin() + static_cast<std::ptrdiff_t>(place); };
    const auto first = from < to ? at(from) + 1 : at(to);
    const auto last = from < to ? at(to) + 1 : at(from);
    if (std::none_of(first, last, [](const Entry& entry) { return static_cast<bool>(entry.window); })) {
        return false;
    }
    if (from < to) {
        std::rotate(at(from), at(from) + 1, at(to) + 1);
    } else {
        std::rotate(at(to), at(from), at(from) + 1);
    }
    MarkAllVisible();
    return true;
}

void ChildList::Compact() {
    std::erase_if(m_entries, [](const Entry& entry) { return !entry.window; });
    m_gaps = 0;
    MarkAllVisible();
}

void ChildList::MarkAllVisible() {
    m_visible.assign(m_entries.size() / kWordBits + 1, 0);
    for (std::size_t place = 0; place < m_entries.size(); ++place) {
        MarkVisible(place);
    }
}

}  // namespace veldan
