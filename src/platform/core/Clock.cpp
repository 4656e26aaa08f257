#include "platform/core/Clock.h"

#include <chrono>

namespace veldan {

Clock::~Clock() = default;

std::int64_t SteadyClock::Now() const {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace veldan
