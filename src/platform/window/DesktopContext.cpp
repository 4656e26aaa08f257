#include "platform/window/DesktopContext.h"

#include <utility>

namespace veldan {

DesktopContext::DesktopContext(std::unique_ptr<Display> display, std::unique_ptr<Clock> clock)
    : m_clock(std::move(clock)), m_display(std::move(display)) {
    m_waitSet.Watch(m_display->Descriptor());
}

}  // namespace veldan
