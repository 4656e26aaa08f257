#pragma once

#include "platform/core/Export.h"

#include <cstdint>

namespace veldan {

/// The source of time for timers, hovering and double clicks.
class VELDAN_PLATFORM_API Clock {
public:
    virtual ~Clock();

    /// Milliseconds since some fixed time; never goes backwards.
    [[nodiscard]] virtual std::int64_t Now() const = 0;
};

/// The system's monotonic clock.
class VELDAN_PLATFORM_API SteadyClock final : public Clock {
public:
    [[nodiscard]] std::int64_t Now() const override;
};

/// A clock that moves only when a test advances it.
class VELDAN_PLATFORM_API ManualClock final : public Clock {
public:
    [[nodiscard]] std::int64_t Now() const override { return m_now; }
    void Advance(std::int64_t milliseconds) { m_now += milliseconds; }

private:
    std::int64_t m_now = 1000;
};

}  // namespace veldan
