#include "platform/window/Desktop.h"

#include <utility>

namespace veldan {

/// Where the window's client corner lies on its top-level window's surface.
CPoint Desktop::OriginOf(const WindowRecord& record) const {
    CPoint origin;
    for (const WindowRecord* window = &record; window->IsChild(); window = m_table.Find(window->parent)) {
        origin = origin + window->rect.TopLeft();
    }
    return origin;
}

/// The window's pixels on the surface, without what lies outside of its ancestors or under siblings above it. Its own
/// children are not taken out: they are painted after it.
Region Desktop::VisibleRegion(const WindowRecord& record) const {
    CRect bounds = record.ClientRect().Offset(OriginOf(record));
    for (const WindowRecord* window = &record; window->IsChild();) {
        window = m_table.Find(window->parent);
        bounds = bounds.Intersect(window->ClientRect().Offset(OriginOf(*window)));
    }
    if (bounds.IsEmpty()) {
        return {};
    }
    Region region(bounds);
    for (const WindowRecord* window = &record; window->IsChild();) {
        const WindowRecord* parent = m_table.Find(window->parent);
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

/// The pixels of the window's top-level window, made at the first call.
const std::shared_ptr<Surface>& Desktop::SurfaceOf(HWND window) {
    const WindowRecord& topLevel = *m_table.Find(TopLevelOf(window));
    std::shared_ptr<Surface>& surface = topLevel.topLevel->surface;
    if (!surface) {
        surface = m_display->MakeSurface(topLevel.handle.Value(), topLevel.rect.Size());
    }
    return surface;
}

void Desktop::Invalidate(HWND window, const CRect& client, bool erase) {
    if (WindowRecord* record = m_table.Find(window)) {
        InvalidateArea(*record, client, erase);
    }
}

/// The children in the area follow when it is painted, so that invalidating costs the same for any number of them.
void Desktop::InvalidateArea(WindowRecord& record, const CRect& client, bool erase) {
    const CRect area = client.Intersect(record.ClientRect());
    if (area.IsEmpty() || (record.IsChild() && !record.visible)) {
        return;
    }
    record.update.Add(area);
    record.erase = record.erase || erase;
    QueuePaint(record);
}

/// A window that is drawn anew takes its children's pixels with it.
void Desktop::InvalidateChildren(const WindowRecord& record, const Region& area) {
    record.children.ForVisible([&](const ChildList::Entry& entry) {
        if (area.Intersects(entry.rect)) {
            const CRect touched = entry.rect.Intersect(area.Bounds());
            InvalidateArea(*m_table.Find(entry.window), touched.Offset(-entry.rect.TopLeft()), true);
        }
        return true;
    });
}

void Desktop::QueuePaint(WindowRecord& record) {
    if (record.queuedForPaint) {
        return;
    }
    record.queuedForPaint = true;
    Wake();
    const auto depth = static_cast<std::size_t>(record.depth);
    if (depth >= m_paintByDepth.size()) {
        m_paintByDepth.resize(depth + 1);
    }
    std::vector<HWND>& queue = m_paintByDepth[depth];
    // Windows that died unpainted are taken out before they are the most of the queue.
    if (queue.size() > 2 * m_table.Count()) {
        std::erase_if(queue, [this](HWND window) { return m_table.Find(window) == nullptr; });
    }
    queue.push_back(record.handle);
}

/// A hidden window's update region waits; with the window shown it is asked for again.
void Desktop::QueuePaintOfTree(WindowRecord& record) {
    if (!record.update.IsEmpty()) {
        QueuePaint(record);
    }
    record.children.ForVisible([this](const ChildList::Entry& entry) {
        QueuePaintOfTree(*m_table.Find(entry.window));
        return true;
    });
}

/// The next window to paint, parents before children; only such within `ancestor`, unless that is null.
HWND Desktop::NextPaint(HWND ancestor) {
    for (std::vector<HWND>& queue : m_paintByDepth) {
        for (std::size_t i = 0; i < queue.size();) {
            WindowRecord* record = m_table.Find(queue[i]);
            const bool wanted = record != nullptr && !record->update.IsEmpty() && IsVisible(queue[i]);
            if (wanted && ancestor && !IsWithin(queue[i], ancestor)) {
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

void Desktop::PaintWindow(HWND window) {
    WindowRecord* record = m_table.Find(window);
    if (record == nullptr || record->update.IsEmpty() || !IsVisible(window)) {
        return;
    }
    record->paintBegun = false;
    CallWindow(*record, WM_PAINT, 0, 0, false);
    record = m_table.Find(window);
    // A handler that never asks for its device context would be called for ever.
    if (record != nullptr && !record->paintBegun) {
        record->update.Clear();
        record->erase = false;
    }
}

void Desktop::UpdateWindow(HWND window) {
    while (const HWND next = NextPaint(window)) {
        PaintWindow(next);
    }
}

/// Runs the pending erase of the window and, before it, of its ancestors.
void Desktop::EraseNow(HWND window, EraseArea wanted) {
    if (const WindowRecord* record = m_table.Find(window); record != nullptr && record->IsChild()) {
        EraseNow(record->parent, wanted);
    }
    WindowRecord* record = m_table.Find(window);
    if (record == nullptr || !record->erase || record->update.IsEmpty()) {
        return;
    }
    record->erase = false;
    const CPoint origin = OriginOf(*record);
    const Region area = record->update;
    Region clip = VisibleRegion(*record);
    clip.Intersect(Region(area).Translate(origin));
    AddDirty(window, clip);
    InvalidateChildren(*record, area);
    if (wanted == EraseArea::AroundOpaqueChildren) {
        SubtractOpaqueChildren(*record, origin, clip);
    }
    CDC dc;
    dc.Attach(CreateSurfaceDC(SurfaceOf(window), origin, clip));
    SendMessage(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(&dc));
}

/// Takes out what children will paint over. Where another child lies above such a one, nobody else paints.
void Desktop::SubtractOpaqueChildren(const WindowRecord& record, CPoint origin, Region& clip) const {
    const CRect bounds = clip.Bounds();
    Region seeThrough;
    record.children.ForVisible([&](const ChildList::Entry& entry) {
        const CRect place = entry.rect.Offset(origin);
        if (!place.Intersects(bounds)) {
            return true;
        }
        if (m_table.Find(entry.window)->opaque) {
            clip.Subtract(Region(place).Subtract(seeThrough));
        } else {
            seeThrough.Add(place);
        }
        return true;
    });
}

HDC Desktop::WindowDC(HWND window) {
    EraseNow(window, EraseArea::Whole);
    const WindowRecord* record = m_table.Find(window);
    if (record == nullptr) {
        return nullptr;
    }
    return CreateSurfaceDC(SurfaceOf(window), OriginOf(*record), VisibleRegion(*record));
}

HDC Desktop::BeginPaint(HWND window, Region& area) {
    EraseNow(window, EraseArea::AroundOpaqueChildren);
    WindowRecord* record = m_table.Find(window);
    if (record == nullptr) {
        return nullptr;
    }
    area = std::exchange(record->update, {});
    record->paintBegun = true;
    InvalidateChildren(*record, area);
    const CPoint origin = OriginOf(*record);
    Region clip = VisibleRegion(*record);
    clip.Intersect(Region(area).Translate(origin));
    AddDirty(window, clip);
    return CreateSurfaceDC(SurfaceOf(window), origin, clip);
}

void Desktop::MarkDrawn(HWND window) {
    if (const WindowRecord* record = m_table.Find(window)) {
        AddDirty(window, VisibleRegion(*record));
    }
}

void Desktop::AddDirty(HWND window, const Region& area) {
    m_table.Find(TopLevelOf(window))->topLevel->dirty.Add(area);
    Wake();
}

void Desktop::Present(WindowRecord& topLevel) {
    TopLevelState& state = *topLevel.topLevel;
    if (topLevel.visible && state.surface && !state.dirty.IsEmpty()) {
        const Region dirty = std::exchange(state.dirty, {});
        m_display->Present(topLevel.handle.Value(), *state.surface, dirty);
    }
}

void Desktop::PresentAll() {
    for (const HWND window : m_topLevels) {
        Present(*m_table.Find(window));
    }
}

}  // namespace veldan
