#pragma once

#include "platform/display/Display.h"

#include <memory>

namespace veldan {

class Clock;

/// Makes the display that the environment asks for: VELDAN_DISPLAY=memory or x11; without it X11 where DISPLAY is set
/// and a server answers, else the one in memory. Never null.
[[nodiscard]] VELDAN_PLATFORM_API std::unique_ptr<Display> CreateDisplay(const Clock& clock);

}  // namespace veldan
