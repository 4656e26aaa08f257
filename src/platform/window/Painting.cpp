#include "platform/window/Painting.h"

#include <algorithm>
#include <utility>

namespace veldan {

void Painting::Invalidate(WindowRecord& record, const CRect& client, bool erase) {
    const CRect area = client.Intersect(record.ClientRect());
    if (area.IsEmpty() || (record.IsChild() && !record.visible)) {
        return;
    }
    record.update.Add(area);
    record.erase = record.erase || erase;
    Queue(record);
}

void Painting::InvalidateParent(const WindowRecord& record, const CRect& area) {
    Invalidate(*m_tree.Find(record.parent), area, true);
}

/// A window that is drawn anew takes its children's pixels with it.
void Painting::InvalidateChildren(const WindowRecord& record, const Region& area) {
    record.children.ForVisible([&](const ChildList::Entry& entry) {
        if (area.Intersects(entry.rect)) {
            const CRect touched = entry.rect.Intersect(area.Bounds());
            Invalidate(*m_tree.Find(entry.window), touched.Offset(-entry.rect.TopLeft()), true);
        }
        return true;
    });
}

void Painting::OnAdded(WindowRecord& record) {
    Invalidate(record, record.ClientRect(), true);
}

void Painting::OnShown(WindowRecord& record) {
    if (record.IsChild()) {
        Invalidate(record, record.ClientRect(), true);
    }
}

void Painting::OnHiding(WindowRecord& record) {
    if (record.IsChild()) {
        record.update.Clear();
        record.erase = false;
        InvalidateParent(record, record.rect);
    }
}

void Painting::OnPlaced(WindowRecord& record, const CRect& before) {
    if (record.IsChild()) {
        if (record.visible) {
            InvalidateParent(record, before);
            InvalidateParent(record, record.rect);
        }
        record.update.Intersect(record.ClientRect());
    } else if (record.rect.Size() != before.Size()) {
        m_surfaces.Drop(record);
        record.update.Clear();
        Invalidate(record, record.ClientRect(), true);
    }
}

void Painting::OnRestacked(WindowRecord& record) {
    if (record.IsChild() && record.visible) {
        InvalidateParent(record, record.rect);
    }
}

void Painting::Queue(WindowRecord& record) {
    if (record.queuedForPaint) {
        return;
    }
    record.queuedForPaint = true;
    m_context.Wake();
    const auto depth = static_cast<std::size_t>(record.depth);
    if (depth >= m_byDepth.size()) {
        m_byDepth.resize(depth + 1);
    }
    std::vector<HWND>& queue = m_byDepth[depth];
    // Windows that died unpainted are taken out before they are the most of the queue.
    if (queue.size() > 2 * m_tree.Count()) {
        std::erase_if(queue, [this](HWND window) { return m_tree.Find(window) == nullptr; });
    }
    queue.push_back(record.handle);
}

void Painting::ResumeTree(WindowRecord& record) {
    if (!record.update.IsEmpty()) {
        Queue(record);
    }
    record.children.ForVisible([this](const ChildList::Entry& entry) {
        ResumeTree(*m_tree.Find(entry.window));
        return true;
    });
}

/// The next window to paint; only such within `ancestor`, unless that is null.
HWND Painting::NextWithin(HWND ancestor) {
    for (std::vector<HWND>& queue : m_byDepth) {
        for (std::size_t i = 0; i < queue.size();) {
            WindowRecord* record = m_tree.Find(queue[i]);
            const bool wanted = record != nullptr && !record->update.IsEmpty() && m_tree.IsVisible(queue[i]);
            if (wanted && ancestor && !m_tree.IsWithin(queue[i], ancestor)) {
                ++i;
                continue;
            }
            const HWND window = std::exchange(queue[i], queue.back());
            queue.pop_back();
            if (record != nullptr) {
                record->queuedForPaint = false;
            }
            if (wanted) {
                return window;
            }
        }
    }
    return {};
}

void Painting::Paint(HWND window) {
    WindowRecord* record = m_tree.Find(window);
    if (record == nullptr || record->update.IsEmpty() || !m_tree.IsVisible(window)) {
        return;
    }
    record->paintBegun = false;
    m_messenger.Dispatch(m_messenger.Make(window, WM_PAINT));
    record = m_tree.Find(window);
    // A handler that never asks for its device context would be called for ever.
    if (record != nullptr && !record->paintBegun) {
        record->update.Clear();
        record->erase = false;
    }
}

void Painting::Update(HWND window) {
    while (const HWND next = NextWithin(window)) {
        Paint(next);
    }
}

bool Painting::HasWork() const {
    return std::ranges::any_of(m_byDepth, [this](const std::vector<HWND>& queue) {
        return std::ranges::any_of(queue, [this](HWND window) {
            const WindowRecord* record = m_tree.Find(window);
            return record != nullptr && !record->update.IsEmpty() && m_tree.IsVisible(window);
        });
    });
}

/// Runs the pending erase of the window and, before it, of its ancestors.
void Painting::EraseNow(HWND window, EraseArea wanted) {
    if (const WindowRecord* record = m_tree.Find(window); record != nullptr && record->IsChild()) {
        EraseNow(record->parent, wanted);
    }
    WindowRecord* record = m_tree.Find(window);
    if (record == nullptr || !record->erase || record->update.IsEmpty()) {
        return;
    }
    record->erase = false;
    const CPoint origin = m_tree.OriginOf(*record);
    const Region area = record->update;
    Region clip = m_tree.VisibleRegion(*record);
    clip.Intersect(Region(area).Translate(origin));
    m_surfaces.AddDirty(window, clip);
    InvalidateChildren(*record, area);
    if (wanted == EraseArea::AroundOpaqueChildren) {
        SubtractOpaqueChildren(*record, origin, clip);
    }
    CDC dc;
    dc.Attach(m_surfaces.DCOf(*record, clip));
    m_messenger.Send(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(&dc));
}

/// Takes out what children will paint over. Where another child lies above such a one, nobody else paints.
void Painting::SubtractOpaqueChildren(const WindowRecord& record, CPoint origin, Region& clip) const {
    const CRect bounds = clip.Bounds();
    Region seeThrough;
    record.children.ForVisible([&](const ChildList::Entry& entry) {
        const CRect place = entry.rect.Offset(origin);
        if (!place.Intersects(bounds)) {
            return true;
        }
        if (m_tree.Find(entry.window)->opaque) {
            clip.Subtract(Region(place).Subtract(seeThrough));
        } else {
            seeThrough.Add(place);
        }
        return true;
    });
}

HDC Painting::WindowDC(HWND window) {
    EraseNow(window, EraseArea::Whole);
    const WindowRecord* record = m_tree.Find(window);
    return record != nullptr ? m_surfaces.DCOf(*record, m_tree.VisibleRegion(*record)) : nullptr;
}

HDC Painting::BeginPaint(HWND window, Region& area) {
    EraseNow(window, EraseArea::AroundOpaqueChildren);
    WindowRecord* record = m_tree.Find(window);
    if (record == nullptr) {
        return nullptr;
    }
    area = std::exchange(record->update, {});
    record->paintBegun = true;
    InvalidateChildren(*record, area);
    Region clip = m_tree.VisibleRegion(*record);
    clip.Intersect(Region(area).Translate(m_tree.OriginOf(*record)));
    m_surfaces.AddDirty(window, clip);
    return m_surfaces.DCOf(*record, clip);
}

}  // namespace veldan
