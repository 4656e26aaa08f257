#pragma once

#include <chrono>
#include <thread>

namespace veldan {

/// How long a test waits for something that must happen; far longer than it takes on a busy machine.
inline constexpr std::chrono::seconds kPatience{20};

/// Checks repeatedly until the condition holds; false if it never does.
template <class Condition>
[[nodiscard]] bool WaitUntil(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

}  // namespace veldan
