#include "controls/StatePool.h"

#include "platform/draw/Surface.h"
#include "platform/window/Desktop.h"

namespace veldan {
namespace {

std::size_t BytesOf(const CDC& surface) {
    const std::shared_ptr<Surface> pixels = surface.GetSurface();
    return pixels ? sizeof(std::uint32_t) * static_cast<std::size_t>(pixels->Width()) *
                        static_cast<std::size_t>(pixels->Height())
                  : 0;
}

}  // namespace

CStatePool& CStatePool::Get() {
    static CStatePool pool;
    return pool;
}

void CStatePool::Use(CDC& surface, HWND owner) {
    if (const auto known = m_mapPlaces.find(&surface); known != m_mapPlaces.end()) {
        m_entries.splice(m_entries.begin(), m_entries, known->second);
        return;
    }
    m_entries.push_front({&surface, owner, BytesOf(surface)});
    m_mapPlaces.emplace(&surface, m_entries.begin());
    m_nBytes += m_entries.front().nBytes;
    Shrink();
}

void CStatePool::Forget(const CDC& surface) {
    if (const auto known = m_mapPlaces.find(&surface); known != m_mapPlaces.end()) {
        m_nBytes -= known->second->nBytes;
        m_entries.erase(known->second);
        m_mapPlaces.erase(known);
    }
}

void CStatePool::Shrink() {
    const Desktop& desktop = Desktop::Get();
    for (auto entry = m_entries.end(); m_nBytes > kMostBytes && entry != m_entries.begin();) {
        --entry;
        if (!desktop.IsVisible(entry->hOwner)) {
            m_nBytes -= entry->nBytes;
            m_mapPlaces.erase(entry->pSurface);
            entry->pSurface->DeleteDC();
            entry = m_entries.erase(entry);
        }
    }
}

}  // namespace veldan
