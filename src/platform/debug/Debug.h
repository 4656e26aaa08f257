#pragma once

#include "platform/core/Text.h"
#include "platform/window/Desktop.h"

namespace veldan {

/// All windows as text, one per line, from the topmost to the lowest, with children indented below their parents:
/// handle, class, id, rectangle, states (shown, disabled, active, focus, capture) and text.
[[nodiscard]] VELDAN_PLATFORM_API CString DumpWindowTree(const Desktop& desktop);

/// A message as text: sent or queued, name or number, window and arguments.
[[nodiscard]] VELDAN_PLATFORM_API CString DescribeMessage(const MSG& message, bool sent);

/// Writes a window's pixels to a PNG file, whole or not at all. False for a window that has drawn nothing yet, or if
/// the file can't be written.
VELDAN_PLATFORM_API bool SaveWindowPicture(const Desktop& desktop, HWND topLevel, const CString& path);

/// Starts the message spy if VELDAN_SPY names a file: every message of every window is then appended to it, one per
/// line. Does nothing otherwise, and at later calls.
VELDAN_PLATFORM_API void StartMessageSpy(Desktop& desktop);

}  // namespace veldan
