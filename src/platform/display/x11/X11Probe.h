#pragma once

namespace veldan {

/// Tells whether a server answers at a display, null for the one that DISPLAY names, and lets this process in. A server
/// that refuses says why, and the connection library writes that to the standard error output, which is the host's; so
/// the attempt is made aside, where the words reach nobody. Where that can't be done the answer is true.
[[nodiscard]] bool IsServerWilling(const char* displayName);

}  // namespace veldan
