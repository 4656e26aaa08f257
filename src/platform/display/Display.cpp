#include "platform/display/Display.h"

#include "platform/core/Keys.h"
#include "platform/draw/Surface.h"

namespace veldan {

UINT ModifierOfKey(UINT key) {
    switch (key) {
        case VK_SHIFT:
            return MK_SHIFT;
        case VK_CONTROL:
            return MK_CONTROL;
        case VK_MENU:
            return MK_ALT;
        default:
            return 0;
    }
}

Display::~Display() = default;

std::shared_ptr<Surface> Display::MakeSurface(TopLevelId /*id*/, CSize size) {
    return std::make_shared<Surface>(size.cx, size.cy);
}

}  // namespace veldan
