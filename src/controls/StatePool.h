#pragma once

#include "platform/draw/DC.h"
#include "platform/window/Wnd.h"

#include <cstddef>
#include <list>
#include <unordered_map>

namespace veldan {

/// Bounds what the surfaces of rows cost, whatever was ever on the screen. A surface that can be made again is entered
/// each time it is painted; beyond the bound those that were not painted for longest lose their pixels. Surfaces of
/// windows that can be seen now stay. One thread.
class CStatePool {
public:
    static constexpr std::size_t kMostBytes = 20 * 1024 * 1024;

    [[nodiscard]] static CStatePool& Get();

    /// Notes a paint. The surface belongs to the caller, who calls Forget before it goes.
    void Use(CDC& surface, HWND owner);
    void Forget(const CDC& surface);

    /// What the surfaces take together.
    [[nodiscard]] std::size_t Bytes() const { return m_nBytes; }

private:
    struct Entry {
        CDC* pSurface;
        HWND hOwner;
        std::size_t nBytes;
    };

    void Shrink();

    std::list<Entry> m_entries;  // the latest paint first
    std::unordered_map<const CDC*, std::list<Entry>::iterator> m_mapPlaces;
    std::size_t m_nBytes = 0;
};

}  // namespace veldan
