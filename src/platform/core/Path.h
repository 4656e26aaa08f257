#pragma once

#include "platform/core/Text.h"

namespace veldan {

/// Turns a path that the library passed to the host into one that can be opened: every backslash becomes a slash.
[[nodiscard]] VELDAN_PLATFORM_API CString ToSystemPath(std::string_view path);

/// Turns a path into the form that hosts receive: every slash becomes a backslash.
[[nodiscard]] VELDAN_PLATFORM_API CString ToHostPath(std::string_view path);

/// The full path of the running program (the host, not this library) with backslashes; empty if it is unknown.
[[nodiscard]] VELDAN_PLATFORM_API CString ExecutablePath();

/// Whether a name from a data file names something directly in the folder that it is appended to: it is not empty, `.`
/// or `..` and contains neither separators nor NUL bytes.
[[nodiscard]] VELDAN_PLATFORM_API bool IsPlainFileName(std::string_view name);

}  // namespace veldan
