#include "platform/display/DisplayFactory.h"

#include "platform/display/memory/MemoryDisplay.h"
#include "platform/display/x11/X11Display.h"

#include <cstdlib>
#include <string_view>

namespace veldan {

std::unique_ptr<Display> CreateDisplay(const Clock& /*clock*/) {
    const char* wish = std::getenv("VELDAN_DISPLAY");
    if (wish == nullptr || std::string_view(wish) != "memory") {
        if (auto display = CreateX11Display(nullptr)) {
            return display;
        }
    }
    return std::make_unique<MemoryDisplay>();
}

}  // namespace veldan
