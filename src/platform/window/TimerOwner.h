#pragma once

#include "platform/core/Export.h"

#include <memory>

namespace veldan {

/// Owns timers that have no window: they end with this object. The library that holds their functions holds the object,
/// too (a static one will do), so no timer calls into a library that was unloaded.
class VELDAN_PLATFORM_API TimerOwner {
public:
    TimerOwner();
    ~TimerOwner();
    TimerOwner(const TimerOwner&) = delete;
    TimerOwner& operator=(const TimerOwner&) = delete;

    /// Expires with the object.
    [[nodiscard]] std::weak_ptr<const void> Life() const;

private:
    std::shared_ptr<const void> m_life;
};

}  // namespace veldan
