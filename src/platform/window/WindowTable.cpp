#include "platform/window/WindowTable.h"

#include <limits>

namespace veldan {

WindowRecord& WindowTable::Add() {
    if (m_free.empty()) {
        m_free.push_back(static_cast<std::uint32_t>(m_slots.size()));
        m_slots.emplace_back();
    }
    const std::uint32_t index = m_free.back();
    m_free.pop_back();
    Slot& slot = m_slots[index];
    slot.record = std::make_unique<WindowRecord>();
    slot.record->handle = {index, ++slot.generation};
    return *slot.record;
}

void WindowTable::Remove(HWND window) {
    if (Find(window) == nullptr) {
        return;
    }
    Slot& slot = m_slots[window.slot];
    slot.record.reset();
    // A slot whose generations are used up is never handed out again.
    if (slot.generation < std::numeric_limits<std::uint32_t>::max()) {
        m_free.push_back(window.slot);
    }
}

}  // namespace veldan
