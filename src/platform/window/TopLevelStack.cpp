#include "platform/window/TopLevelStack.h"

#include <algorithm>
#include <ranges>

namespace veldan {

namespace {

StackPlace PlaceOf(Stacking stacking) {
    switch (stacking) {
        case Stacking::Bottom:
            return StackPlace::Bottom;
        case Stacking::Below:
            return StackPlace::Below;
        default:
            return StackPlace::Top;
    }
}

}  // namespace

void TopLevelStack::Restack(WindowRecord& record, Stacking stacking, HWND sibling) {
    if (m_tree.Restack(record, stacking, sibling)) {
        m_context.GetDisplay().Restack(record.handle.Value(), PlaceOf(stacking), sibling.Value());
    }
}

void TopLevelStack::Raise(HWND topLevel) {
    for (const HWND window : m_tree.WithOwned(topLevel) | std::views::reverse) {
        Restack(*m_tree.Find(window), Stacking::Top, {});
    }
}

void TopLevelStack::RaiseIfBelow(HWND topLevel) {
    const std::vector<HWND> group = m_tree.WithOwned(topLevel);
    if (!std::ranges::equal(group, m_tree.TopLevels() | std::views::take(group.size()))) {
        Raise(topLevel);
    }
}

void TopLevelStack::NoteRaised(HWND topLevel) {
    std::vector<HWND> group = m_tree.WithOwned(topLevel);
    m_tree.Restack(*m_tree.Find(topLevel), Stacking::Top, {});
    group.pop_back();
    for (const HWND window : group | std::views::reverse) {
        Restack(*m_tree.Find(window), Stacking::Top, {});
    }
}

}  // namespace veldan
