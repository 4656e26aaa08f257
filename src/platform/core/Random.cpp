#include "platform/core/Random.h"

#include <chrono>

#include <sys/random.h>
#include <unistd.h>

namespace veldan {

std::uint64_t RandomBits() {
    std::uint64_t bits = 0;
    if (getrandom(&bits, sizeof bits, GRND_NONBLOCK) != sizeof bits) {
        // Early at the start of a machine, or where a sandbox forbids the call. Two calls, or processes, still differ.
        bits = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
        bits = (bits ^ static_cast<std::uint64_t>(getpid()) << 40U) * 0x9e3779b97f4a7c15U;
    }
    return bits;
}

}  // namespace veldan
