#pragma once

#include "platform/core/Export.h"

#include <cstdint>

namespace veldan {

/// One descriptor behind which everything that can wake the library sits: a display's connection, a timer and a flag.
class WaitSet {
public:
    WaitSet();
    ~WaitSet();
    WaitSet(const WaitSet&) = delete;
    WaitSet& operator=(const WaitSet&) = delete;

    /// Readable while anything in the set is.
    [[nodiscard]] int Descriptor() const { return m_epoll; }
    /// Watches a connection in place of the one before; -1 watches none.
    void Watch(int connection);
    /// Makes the descriptor readable in so many milliseconds; negative: not by time.
    void WakeAfter(std::int64_t milliseconds);
    /// Makes the descriptor readable at once, or takes that back.
    void SetAwake(bool awake);
    /// Waits until the descriptor is readable.
    void Wait();

private:
    void Add(int descriptor) const;

    int m_epoll = -1;
    int m_timer = -1;
    int m_flag = -1;
    int m_connection = -1;
    bool m_bAwake = false;
    std::int64_t m_nArmed = -1;
};

}  // namespace veldan
