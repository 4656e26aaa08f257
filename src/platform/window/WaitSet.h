#pragma once

#include "platform/core/Export.h"

#include <cstdint>
#include <functional>

namespace veldan {

/// Waits in place of the layer: runs one turn of the host's loop, which dispatches when the desktop's descriptor is
/// readable. False: the host quits.
using WaitFunction = std::function<bool()>;

/// One descriptor behind which everything that can wake the library sits: a timer, a flag, and any number of others.
class WaitSet {
public:
    WaitSet();
    ~WaitSet();
    WaitSet(const WaitSet&) = delete;
    WaitSet& operator=(const WaitSet&) = delete;

    /// Readable while anything in the set is.
    [[nodiscard]] int Descriptor() const { return m_epoll; }
    /// Watches a descriptor as well, until Remove. The caller keeps it open meanwhile; -1 does nothing.
    void Add(int descriptor) const;
    void Remove(int descriptor) const;
    /// Makes the descriptor readable in so many milliseconds; negative: not by time.
    void WakeAfter(std::int64_t milliseconds);
    /// Makes the descriptor readable at once, or takes that back.
    void SetAwake(bool awake);
    /// Waits until the descriptor is readable.
    void Wait();

private:
    int m_epoll = -1;
    int m_timer = -1;
    int m_flag = -1;
    bool m_bAwake = false;
    std::int64_t m_nArmed = -1;
};

}  // namespace veldan
