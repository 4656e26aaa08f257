#include "platform/display/x11/X11Marks.h"

namespace veldan {

std::uint64_t X11Marks::Set() {
    if (m_connection.IsAlive()) {
        m_sequences.push_back(xcb_no_operation(m_connection.Get()).sequence);
    }
    return m_nReached + m_sequences.size();
}

void X11Marks::OnEvent(std::uint32_t sequence) {
    while (!m_sequences.empty() && static_cast<std::int32_t>(sequence - m_sequences.front()) >= 0) {
        m_sequences.pop_front();
        ++m_nReached;
    }
}

}  // namespace veldan
