#include "platform/window/ChildList.h"

#include <algorithm>

namespace veldan {

namespace {

template <class Iterator>
void MoveEntry(Iterator from, Iterator to) {
    if (from < to) {
        std::rotate(from, from + 1, to + 1);
    } else {
        std::rotate(to, from, from + 1);
    }
}

}  // namespace

std::size_t ChildList::Append(const Entry& entry) {
    m_entries.push_back(entry);
    return m_entries.size() - 1;
}

void ChildList::Remove(std::size_t place) {
    m_entries[place] = {};
    ++m_gaps;
}

void ChildList::MoveToTop(std::size_t place) {
    MoveEntry(m_entries.begin() + std::ptrdiff_t(place), m_entries.begin());
}

void ChildList::MoveToBottom(std::size_t place) {
    MoveEntry(m_entries.begin() + std::ptrdiff_t(place), m_entries.end() - 1);
}

void ChildList::MoveBelow(std::size_t place, std::size_t sibling) {
    const std::size_t target = place < sibling ? sibling : sibling + 1;
    if (place != sibling) {
        MoveEntry(m_entries.begin() + std::ptrdiff_t(place), m_entries.begin() + std::ptrdiff_t(target));
    }
}

void ChildList::Compact() {
    std::erase_if(m_entries, [](const Entry& entry) { return !entry.window; });
    m_gaps = 0;
}

}  // namespace veldan
