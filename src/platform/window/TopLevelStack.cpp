#include "platform/window/TopLevelStack.h"

#include <algorithm>

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
    const std::vector<HWND> group = m_tree.WithOwned(topLevel);
    for (auto window = group.rbegin(); window != group.rend(); ++window) {
        Restack(*m_tree.Find(*window), Stacking::Top, {});
    }
}

void TopLevelStack::RaiseIfBelow(HWND topLevel) {
    const std::vector<HWND> group = m_tree.WithOwned(topLevel);
    if (!std::equal(group.begin(), group.end(), m_tree.TopLevels().begin())) {
        Raise(topLevel);
    }
}

void TopLevelStack::NoteRaised(HWND topLevel) {
    std::vector<HWND> group = m_tree.WithOwned(topLevel);
    m_tree.Restack(*m_tree.Find(topLevel), Stacking::Top, {});
    group.pop_back();
    for (auto window = group.rbegin(); window != group.rend(); ++window) {
        Restack(*m_tree.Find(*window), Stacking::Top, {});
    }
}

}  // namespace veldan
