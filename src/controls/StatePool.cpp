#include "controls/StatePool.h"

#include "platform/window/Desktop.h"

namespace veldan {

void CStatePool::Use(CGPFrozenState& state, HWND owner) {
    if (const auto known = m_mapPlaces.find(&state); known != m_mapPlaces.end()) {
        m_entries.splice(m_entries.begin(), m_entries, known->second);
        return;
    }
    m_entries.push_front({&state, owner, state.GetBytes()});
    m_mapPlaces.emplace(&state, m_entries.begin());
    m_nBytes += m_entries.front().nBytes;
    Shrink();
}

void CStatePool::Forget(const CGPFrozenState& state) {
    if (const auto known = m_mapPlaces.find(&state); known != m_mapPlaces.end()) {
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
            m_mapPlaces.erase(entry->pState);
            entry->pState->Release();
            entry = m_entries.erase(entry);
        }
    }
}

}  // namespace veldan
