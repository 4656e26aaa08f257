#pragma once

#include <chrono>
#include <thread>

namespace veldan {

/// How long a test waits for what must come; far more than a machine under load needs.
inline constexpr std::chrono::seconds kPatience{20};

/// Asks again and again until the condition holds; false when it never did.
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
