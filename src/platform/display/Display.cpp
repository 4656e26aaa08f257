#include "platform/display/Display.h"

namespace veldan {

Display::~Display() = default;

}  // namespace veldan
