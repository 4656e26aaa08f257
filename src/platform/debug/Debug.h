#pragma once

#include "platform/core/Text.h"
#include "platform/window/Desktop.h"

namespace veldan {

/// The desktop's windows as text, a line each from the topmost to the lowest, children indented below their parents:
/// handle, class, id, place, what it is (shown, disabled, active, focus, capture) and its text.
[[nodiscard]] VELDAN_PLATFORM_API CString DumpWindowTree(const Desktop& desktop);

/// One message as text: how it came, name or number, window and arguments.
[[nodiscard]] VELDAN_PLATFORM_API CString DescribeMessage(const MSG& message, bool sent);

/// Writes a window's pixels as a PNG file, whole or not at all. False for a window that has drawn nothing yet and for a
/// path that can't be written.
VELDAN_PLATFORM_API bool SaveWindowPicture(const Desktop& desktop, HWND topLevel, const CString& path);

/// Starts the message spy if VELDAN_SPY names a file: every message of every window is appended to it, a line each.
/// Does nothing otherwise, and at every later call.
VELDAN_PLATFORM_API void StartMessageSpy(Desktop& desktop);

}  // namespace veldan
