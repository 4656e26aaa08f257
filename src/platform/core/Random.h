#pragma once

#include "platform/core/Export.h"

#include <cstdint>

namespace veldan {

/// 64 bits that nobody outside of the process can foresee, as far as the system has such.
[[nodiscard]] VELDAN_PLATFORM_API std::uint64_t RandomBits();

}  // namespace veldan
