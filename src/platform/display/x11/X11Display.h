#pragma once

#include "platform/display/Display.h"

#include <memory>

namespace veldan {

/// Connects to an X server, `displayName` as in the variable DISPLAY, whose value null stands for. Null where no server
/// answers, or one whose pictures aren't 32 bits a pixel in the order of this machine.
[[nodiscard]] std::unique_ptr<Display> CreateX11Display(const char* displayName);

}  // namespace veldan
