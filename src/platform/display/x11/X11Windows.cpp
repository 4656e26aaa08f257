#include "platform/display/x11/X11Windows.h"

#include <algorithm>

namespace veldan {

void X11Windows::Add(std::unique_ptr<X11TopLevel> topLevel) {
    m_byWindow[topLevel->Window()] = topLevel.get();
    const TopLevelId id = topLevel->Id();
    SetOwnerHint(*topLevel);
    m_byId[id] = std::move(topLevel);
}

void X11Windows::SetOwnerHint(X11TopLevel& topLevel) const {
    if (const X11TopLevel* owner = Find(topLevel.Owner())) {
        topLevel.SetOwnerHint(owner->Window());
    }
}

void X11Windows::Recreate(X11TopLevel& topLevel) {
    m_byWindow.erase(topLevel.Window());
    topLevel.Recreate();
    m_byWindow[topLevel.Window()] = &topLevel;
    SetOwnerHint(topLevel);
    for (const auto& [id, other] : m_byId) {
        if (other->Owner() == topLevel.Id()) {
            other->SetOwnerHint(topLevel.Window());
        }
    }
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

const X11TopLevel* X11Windows::FindOutermost(xcb_window_t child) const {
    const auto found = std::find_if(begin(), end(), [child](const auto& entry) {
        return entry.second->IsVisible() && entry.second->Outermost() == child;
    });
    return found == end() ? nullptr : found->second.get();
}

}  // namespace veldan
