#pragma once

#include "platform/core/Text.h"

namespace veldan {

/// A path in the system's own form, for a path that the library handed out: every backslash becomes a slash.
[[nodiscard]] VELDAN_PLATFORM_API CString ToSystemPath(std::string_view path);

/// A path in the form that hosts get it: every slash becomes a backslash.
[[nodiscard]] VELDAN_PLATFORM_API CString ToHostPath(std::string_view path);

/// The full path of the running program, the host and not this library, with backslashes; empty if it can't be told.
[[nodiscard]] VELDAN_PLATFORM_API CString ExecutablePath();

/// Whether a name from a data file names something in the folder it is appended to: it isn't empty, `.` or `..` and
/// holds neither separators nor NUL bytes.
[[nodiscard]] VELDAN_PLATFORM_API bool IsPlainFileName(std::string_view name);

}  // namespace veldan
