#include "platform/display/x11/X11Windows.h"

#include <algorithm>
#include <span>

namespace veldan {

void X11Windows::Add(std::unique_ptr<X11TopLevel> topLevel) {
    m_byWindow[topLevel->Window()] = topLevel.get();
    SetOwnerHint(*topLevel);
    topLevel->KeepOff(IsOwnerKeptOff(*topLevel));
    const TopLevelId id = topLevel->Id();
    m_byId[id] = std::move(topLevel);
}

void X11Windows::Remove(TopLevelId id) {
    const auto found = m_byId.find(id);
    if (found == m_byId.end()) {
        return;
    }
    m_byWindow.erase(found->second->Window());
    m_byId.erase(found);
}

void X11Windows::Clear() {
    m_byWindow.clear();
    m_byId.clear();
}

void X11Windows::Recreate(X11TopLevel& topLevel) {
    m_byWindow.erase(topLevel.Window());
    topLevel.Recreate();
    m_byWindow[topLevel.Window()] = &topLevel;
    SetOwnerHint(topLevel);
    for (const auto& [id, other] : m_byId) {
        if (other->Traits().owner == topLevel.Id()) {
            SetOwnerHint(*other);
        }
    }
}

void X11Windows::SetOwnerHint(const X11TopLevel& topLevel) const {
    if (const X11TopLevel* owner = Find(topLevel.Traits().owner)) {
        topLevel.Properties().SetOwner(owner->Window());
    }
}

X11TopLevel* X11Windows::Find(TopLevelId id) const {
    const auto found = m_byId.find(id);
    return found == m_byId.end() ? nullptr : found->second.get();
}

X11TopLevel* X11Windows::FindWindow(xcb_window_t window) const {
    const auto found = m_byWindow.find(window);
    return found == m_byWindow.end() ? nullptr : found->second;
}

bool X11Windows::IsAnyVisible() const {
    return std::any_of(begin(), end(), [](const auto& entry) { return entry.second->IsVisible(); });
}

X11TopLevel* X11Windows::FindOutermost(xcb_window_t child) const {
    const auto found = std::find_if(begin(), end(), [child](const auto& entry) {
        return entry.second->IsOnScreen() && entry.second->Outermost() == child;
    });
    return found == end() ? nullptr : found->second.get();
}

X11TopLevel* X11Windows::FindFramed(xcb_window_t frame) const {
    const auto found = std::find_if(begin(), end(), [frame](const auto& entry) {
        return entry.second->Traits().managed && entry.second->Outermost() == frame;
    });
    return found == end() ? nullptr : found->second.get();
}

bool X11Windows::IsOwnerKeptOff(const X11TopLevel& topLevel) const {
    const X11TopLevel* owner = Find(topLevel.Traits().owner);
    while (owner != nullptr && !owner->Traits().managed) {
        owner = Find(owner->Traits().owner);
    }
    return owner != nullptr && owner->IsKeptOff();
}

std::vector<X11TopLevel*> X11Windows::UpdateKeptOff() {
    std::vector<X11TopLevel*> takenOff;
    std::vector<X11TopLevel*> returning;
    for (const auto& [id, topLevel] : m_byId) {
        const bool keepOff = IsOwnerKeptOff(*topLevel);
        // Frames are the manager's, with owners too.
        if (!topLevel->Traits().managed && keepOff != topLevel->IsKeptOff()) {
            (keepOff ? takenOff : returning).push_back(topLevel.get());
        }
    }
    for (X11TopLevel* topLevel : takenOff) {
        topLevel->KeepOff(true);
    }
    PutBack(std::move(returning));
    return takenOff;
}

/// In the order in which they lay before, since a dialog's companion must not come to lie above it.
void X11Windows::PutBack(std::vector<X11TopLevel*> topLevels) {
    if (topLevels.size() > 1) {
        SortFromLowest(topLevels);
    }
    std::unordered_map<TopLevelId, xcb_window_t> topmost;  // above each owner
    for (X11TopLevel* topLevel : topLevels) {
        if (const X11TopLevel* owner = Find(topLevel->Traits().owner)) {
            const auto below = topmost.try_emplace(owner->Id(), owner->Outermost()).first;
            topLevel->Restack(XCB_STACK_MODE_ABOVE, below->second);
            below->second = topLevel->Window();
        }
        topLevel->KeepOff(false);
    }
}

void X11Windows::SortFromLowest(std::vector<X11TopLevel*>& topLevels) {
    const auto tree = m_connection.Ask<&xcb_query_tree_reply>(xcb_query_tree(m_connection.Get(), m_connection.Root()));
    if (!tree) {
        return;
    }
    const std::span stack(xcb_query_tree_children(tree.get()), tree->children_len);
    std::ranges::sort(topLevels, {}, [stack](const X11TopLevel* each) {
        return std::ranges::find(stack, each->Window()) - stack.begin();
    });
}

}  // namespace veldan
