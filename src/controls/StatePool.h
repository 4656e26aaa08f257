#pragma once

#include "controls/GPFrozenState.h"
#include "platform/window/Wnd.h"

#include <cstddef>
#include <list>
#include <unordered_map>

namespace veldan {

/// Bounds what the states of rows cost, whatever was ever on the screen. A state that can be made again is entered each
/// time it is painted; beyond the bound those that were not painted for longest lose their pixels. States of windows
/// that can be seen now stay. One thread.
class CStatePool {
public:
    static constexpr std::size_t kMostBytes = 12 * 1024 * 1024;

    /// Notes a paint. The state belongs to the caller, who calls Forget before it goes.
    void Use(CGPFrozenState& state, HWND owner);
    void Forget(const CGPFrozenState& state);

    /// What the states take together.
    [[nodiscard]] std::size_t Bytes() const { return m_nBytes; }

private:
    struct Entry {
        CGPFrozenState* pState;
        HWND hOwner;
        std::size_t nBytes;
    };

    void Shrink();

    std::list<Entry> m_entries;  // the latest paint first
    std::unordered_map<const CGPFrozenState*, std::list<Entry>::iterator> m_mapPlaces;
    std::size_t m_nBytes = 0;
};

}  // namespace veldan
