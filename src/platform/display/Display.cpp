#include "platform/display/Display.h"

#include "platform/draw/Surface.h"

namespace veldan {

Display::~Display() = default;

std::shared_ptr<Surface> Display::MakeSurface(TopLevelId /*id*/, CSize size) {
    return std::make_shared<Surface>(size.cx, size.cy);
}

}  // namespace veldan
