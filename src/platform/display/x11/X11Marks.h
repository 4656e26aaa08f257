#pragma once

#include "platform/display/x11/X11Connection.h"

#include <deque>

namespace veldan {

/// Tells which of some moments an event came after, as the server saw them. A moment is a request that does nothing;
/// every event names the request that the server had come to by then.
class X11Marks {
public:
    explicit X11Marks(X11Connection& connection) : m_connection(connection) {}

    /// Marks this moment; its number.
    std::uint64_t Set();
    /// To be called for each event, in their order.
    void OnEvent(std::uint32_t sequence);
    /// The number of the latest moment that the event came after.
    [[nodiscard]] std::uint64_t Reached() const { return m_nReached; }
    [[nodiscard]] bool AllReached() const { return m_sequences.empty(); }

private:
    X11Connection& m_connection;
    std::deque<std::uint32_t> m_sequences;  // of the requests that no event came after yet
    std::uint64_t m_nReached = 0;
};

}  // namespace veldan
