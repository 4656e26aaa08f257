#include "platform/window/Surfaces.h"

#include <utility>

namespace veldan {

HDC Surfaces::DCOf(const WindowRecord& record, const Region& clip) {
    return CreateSurfaceDC(SurfaceOf(record.handle), m_tree.OriginOf(record), clip);
}

/// The pixels of the window's top-level window, made at the first call.
const std::shared_ptr<Surface>& Surfaces::SurfaceOf(HWND window) {
    const WindowRecord& topLevel = *m_tree.Find(m_tree.TopLevelOf(window));
    std::shared_ptr<Surface>& surface = topLevel.topLevel->surface;
    if (!surface) {
        surface = m_context.GetDisplayQuietly().MakeSurface(topLevel.handle.Value(), topLevel.rect.Size());
    }
    return surface;
}

void Surfaces::AddDirty(HWND window, const Region& area) {
    m_tree.Find(m_tree.TopLevelOf(window))->topLevel->dirty.Add(area);
    m_context.Wake();
}

void Surfaces::Present(const WindowRecord& topLevel) {
    TopLevelState& state = *topLevel.topLevel;
    if (topLevel.visible && state.surface && !state.dirty.IsEmpty()) {
        const Region dirty = std::exchange(state.dirty, {});
        m_context.GetDisplayQuietly().Present(topLevel.handle.Value(), *state.surface, dirty);
    }
}

void Surfaces::PresentAll() {
    for (const HWND window : m_tree.TopLevels()) {
        Present(*m_tree.Find(window));
    }
}

void Surfaces::Drop(const WindowRecord& topLevel) {
    topLevel.topLevel->surface.reset();
    topLevel.topLevel->dirty.Clear();
}

}  // namespace veldan
