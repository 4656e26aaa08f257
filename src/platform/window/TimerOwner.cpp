#include "platform/window/TimerOwner.h"

namespace veldan {

// Made here and not inline: what outlives the object is code of this library, which is never unloaded.
TimerOwner::TimerOwner() : m_life(std::make_shared<char>()) {}

TimerOwner::~TimerOwner() = default;

std::weak_ptr<const void> TimerOwner::Life() const {
    return m_life;
}

}  // namespace veldan
