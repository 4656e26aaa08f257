#pragma once

#include "platform/window/WindowRecord.h"

#include <vector>

namespace veldan {

/// All windows by handle. Records stay where they are in memory for the life of their window.
class WindowTable {
public:
    /// A fresh record with a handle that was never used before.
    WindowRecord& Add();
    void Remove(HWND window);
    /// The record, or null for the null handle and for windows that are gone.
    [[nodiscard]] WindowRecord* Find(HWND window) const {
        const bool known = window && window.slot < m_slots.size();
        const Slot* slot = known ? &m_slots[window.slot] : nullptr;
        return known && slot->generation == window.generation ? slot->record.get() : nullptr;
    }
    [[nodiscard]] std::size_t Count() const { return m_slots.size() - m_free.size(); }

private:
    struct Slot {
        std::unique_ptr<WindowRecord> record;
        std::uint32_t generation = 0;
    };

    std::vector<Slot> m_slots;
    std::vector<std::uint32_t> m_free;
};

}  // namespace veldan
