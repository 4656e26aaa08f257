#include "platform/window/WindowTree.h"

#include <algorithm>
#include <utility>

namespace veldan {

CRect ClampSides(const CRect& rect) {
    constexpr int kMaxSide = 32767;
    return CRect::FromSize(rect.TopLeft(),
                           {std::clamp(rect.Width(), 0, kMaxSide), std::clamp(rect.Height(), 0, kMaxSide)});
}

HWND WindowTree::ParentOf(HWND window) const {
    const WindowRecord* record = Find(window);
    if (record == nullptr) {
        return {};
    }
    return record->IsChild() ? record->parent : record->topLevel->owner;
}

HWND WindowTree::TopLevelOf(HWND window) const {
    const WindowRecord* record = Find(window);
    while (record != nullptr && record->IsChild()) {
        record = Find(record->parent);
    }
    return record != nullptr ? record->handle : HWND();
}

bool WindowTree::IsWithin(HWND window, HWND ancestor) const {
    const WindowRecord* record = Find(window);
    while (record != nullptr && record->handle != ancestor) {
        record = record->IsChild() ? Find(record->parent) : nullptr;
    }
    return record != nullptr;
}

HWND WindowTree::ChildWithId(HWND parent, UINT id) const {
    const WindowRecord* record = Find(parent);
    if (record == nullptr) {
        return {};
    }
    for (const ChildList::Entry& entry : record->children.Entries()) {
        const WindowRecord* child = Find(entry.window);
        if (child != nullptr && child->id == id) {
            return entry.window;
        }
    }
    return {};
}

std::vector<HWND> WindowTree::ChildrenOf(HWND parent) const {
    std::vector<HWND> children;
    if (const WindowRecord* record = Find(parent)) {
        for (const ChildList::Entry& entry : record->children.Entries()) {
            if (entry.window) {
                children.push_back(entry.window);
            }
        }
    }
    return children;
}

std::vector<HWND> WindowTree::VisibleChildrenOf(HWND parent) const {
    std::vector<HWND> children;
    if (const WindowRecord* record = Find(parent)) {
        record->children.ForVisible([&](const ChildList::Entry& entry) {
            children.push_back(entry.window);
            return true;
        });
    }
    return children;
}

HWND WindowTree::TopmostVisibleFrame() const {
    const auto isFrame = [this](HWND window) {
        const WindowRecord* record = Find(window);
        return record->visible && (record->style & WS_POPUP) == 0;
    };
    const auto found = std::ranges::find_if(m_topLevels, isFrame);
    return found != m_topLevels.end() ? *found : HWND();
}

CRect WindowTree::WindowRect(HWND window) const {
    const WindowRecord* record = Find(window);
    if (record == nullptr) {
        return {};
    }
    CRect rect = record->rect;
    while (record->IsChild()) {
        record = Find(record->parent);
        rect = rect.Offset(record->rect.TopLeft());
    }
    return rect;
}

bool WindowTree::IsVisible(HWND window) const {
    const WindowRecord* record = Find(window);
    while (record != nullptr && record->visible && record->IsChild()) {
        record = Find(record->parent);
    }
    return record != nullptr && record->visible;
}

CPoint WindowTree::OriginOf(const WindowRecord& record) const {
    CPoint origin;
    for (const WindowRecord* window = &record; window->IsChild(); window = Find(window->parent)) {
        origin = origin + window->rect.TopLeft();
    }
    return origin;
}

Region WindowTree::VisibleRegion(const WindowRecord& record) const {
    CRect bounds = record.ClientRect().Offset(OriginOf(record));
    for (const WindowRecord* window = &record; window->IsChild();) {
        if (!window->visible) {
            return {};
        }
        window = Find(window->parent);
        bounds = bounds.Intersect(window->ClientRect().Offset(OriginOf(*window)));
    }
    if (bounds.IsEmpty()) {
        return {};
    }
    Region region(bounds);
    for (const WindowRecord* window = &record; window->IsChild();) {
        const WindowRecord* parent = Find(window->parent);
        const CPoint origin = OriginOf(*parent);
        const CRect local = bounds.Offset(-origin);
        parent->children.ForVisibleAbove(window->place, [&](const ChildList::Entry& sibling) {
            if (sibling.rect.Intersects(local)) {
                region.Subtract(sibling.rect.Offset(origin));
            }
            return true;
        });
        window = parent;
    }
    return region;
}

HWND WindowTree::WindowAt(HWND topLevel, CPoint screen) const {
    const WindowRecord* record = Find(topLevel);
    if (!TakesInput(topLevel) || !record->visible || !record->rect.Contains(screen)) {
        return {};
    }
    CPoint point = screen - record->rect.TopLeft();
    for (;;) {
        const WindowRecord* hit = nullptr;
        record->children.ForVisible([&](const ChildList::Entry& entry) {
            const WindowRecord* child = entry.rect.Contains(point) ? Find(entry.window) : nullptr;
            if (child != nullptr && (child->windowClass->style & CS_POINTERTHROUGH) == 0) {
                hit = child;
            }
            return hit == nullptr;
        });
        // What falls on a disabled child is its parent's.
        if (hit == nullptr || !hit->enabled) {
            return record->handle;
        }
        point = point - hit->rect.TopLeft();
        record = hit;
    }
}

bool WindowTree::TakesInput(HWND window) const {
    const WindowRecord* record = Find(window);
    while (record != nullptr && record->enabled && !record->destroying && record->IsChild()) {
        record = Find(record->parent);
    }
    return record != nullptr && record->enabled && !record->destroying;
}

HWND WindowTree::ModalOf(HWND topLevel) const {
    HWND modal = topLevel;
    // Bounded, as windows might be disabled for each other.
    for (std::size_t i = 0; i < m_topLevels.size() && Find(modal) != nullptr && !Find(modal)->enabled; ++i) {
        modal = Find(modal)->topLevel->disabledFor;
    }
    const auto isUsable = [this](HWND window) { return TakesInput(window) && Find(window)->visible; };
    if (isUsable(modal)) {
        return modal;
    }
    const std::vector<HWND> owned = WithOwned(topLevel);
    const auto found = std::ranges::find_if(owned, isUsable);
    return found != owned.end() ? *found : HWND();
}

std::vector<HWND> WindowTree::WithOwned(HWND topLevel) const {
    std::vector<HWND> windows;
    for (const HWND other : m_topLevels) {
        if (Find(other)->topLevel->owner == topLevel) {
            const std::vector<HWND> group = WithOwned(other);
            windows.insert(windows.end(), group.begin(), group.end());
        }
    }
    windows.push_back(topLevel);
    return windows;
}

WindowRecord& WindowTree::Add(HWND parent, HWND owner, const CRect& rect) {
    WindowRecord& record = m_table.Add();
    record.rect = rect;
    record.parent = parent;
    if (WindowRecord* above = Find(parent)) {
        record.depth = above->depth + 1;
        record.place = above->children.Append({rect, record.handle, false});
    } else {
        record.topLevel = std::make_unique<TopLevelState>();
        record.topLevel->owner = owner;
        m_topLevels.insert(m_topLevels.begin(), record.handle);
    }
    Announce(&WindowListener::OnAdded, record);
    return record;
}

void WindowTree::Remove(HWND window) {
    if (const WindowRecord* record = Find(window)) {
        for (DestructionListener* listener : m_destructionListeners) {
            listener->OnDestroyed(window);
        }
        Unlink(*record);
        m_table.Remove(window);
    }
}

void WindowTree::Unlink(const WindowRecord& record) {
    if (!record.IsChild()) {
        std::erase(m_topLevels, record.handle);
        return;
    }
    if (WindowRecord* parent = Find(record.parent)) {
        parent->children.Remove(record.place);
        if (parent->children.WantsCompacting()) {
            parent->children.Compact();
            RenumberChildren(*parent);
        }
    }
}

void WindowTree::RenumberChildren(const WindowRecord& parent) {
    std::size_t place = 0;
    for (const ChildList::Entry& entry : parent.children.Entries()) {
        if (WindowRecord* child = Find(entry.window)) {
            child->place = place;
        }
        ++place;
    }
}

void WindowTree::SetVisible(WindowRecord& record, bool visible) {
    record.visible = visible;
    if (WindowRecord* parent = Find(record.parent)) {
        parent->children.SetVisible(record.place, visible);
    }
    Announce(visible ? &WindowListener::OnShown : &WindowListener::OnHiding, record);
}

void WindowTree::SetRect(WindowRecord& record, const CRect& rect) {
    const CRect before = std::exchange(record.rect, rect);
    if (WindowRecord* parent = Find(record.parent)) {
        parent->children.SetRect(record.place, rect);
    }
    Announce(&WindowListener::OnPlaced, record, before);
}

bool WindowTree::Restack(WindowRecord& record, Stacking stacking, HWND sibling) {
    const bool done =
        record.IsChild() ? RestackChild(record, stacking, sibling) : RestackTopLevel(record.handle, stacking, sibling);
    if (done) {
        Announce(&WindowListener::OnRestacked, record);
    }
    return done;
}

bool WindowTree::RestackChild(const WindowRecord& record, Stacking stacking, HWND sibling) {
    WindowRecord& parent = *Find(record.parent);
    bool moved = false;
    if (stacking == Stacking::Top) {
        moved = parent.children.MoveToTop(record.place);
    } else if (stacking == Stacking::Bottom) {
        moved = parent.children.MoveToBottom(record.place);
    } else if (const WindowRecord* other = Find(sibling); other != nullptr && other->parent == record.parent) {
        moved = parent.children.MoveBelow(record.place, other->place);
    }
    if (moved) {
        RenumberChildren(parent);
    }
    return moved;
}

bool WindowTree::RestackTopLevel(HWND window, Stacking stacking, HWND sibling) {
    const bool below = stacking == Stacking::Below;
    if (below && (sibling == window || std::ranges::find(m_topLevels, sibling) == m_topLevels.end())) {
        return false;
    }
    std::erase(m_topLevels, window);
    if (below) {
        m_topLevels.insert(std::ranges::find(m_topLevels, sibling) + 1, window);
    } else {
        m_topLevels.insert(stacking == Stacking::Top ? m_topLevels.begin() : m_topLevels.end(), window);
    }
    return true;
}

}  // namespace veldan
