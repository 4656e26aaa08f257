#include "platform/window/DesktopContext.h"

#include <utility>

namespace veldan {

DesktopContext::DesktopContext(std::unique_ptr<Display> display, std::unique_ptr<Clock> clock)
    : m_clock(std::move(clock)), m_display(std::move(display)) {
    WatchDisplay();
}

void DesktopContext::WatchDisplay() {
    const int connection = m_display->Descriptor();
    if (connection != m_nWatched) {
        m_waitSet.Remove(std::exchange(m_nWatched, connection));
        m_waitSet.Add(connection);
    }
}

}  // namespace veldan
