#pragma once

#include "platform/core/Export.h"
#include "platform/core/Types.h"

#include <cstdarg>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veldan {

/// Text is UTF-8 everywhere. Bytes that aren't valid UTF-8 are passed on unchanged.
using CString = std::string;
using CStringArray = std::vector<CString>;
using CUIntArray = std::vector<UINT>;
template <class T>
using CMapStringToPtr = std::unordered_map<CString, T*>;

/// Formats text like `printf`; empty if the format is invalid.
[[nodiscard, gnu::format(printf, 1, 2)]] VELDAN_PLATFORM_API CString Format(const char* format, ...);
[[nodiscard, gnu::format(printf, 1, 0)]] VELDAN_PLATFORM_API CString FormatV(const char* format,
                                                                             std::va_list arguments);

/// The text that a pointer refers to; empty for a null pointer.
[[nodiscard]] inline CString TextOrEmpty(const char* text) {
    return text ? CString(text) : CString();
}

/// White space as in the C locale. Bytes above 0x7f never count, because they are parts of characters.
[[nodiscard]] constexpr bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// The text without white space at its ends. The result refers to the given text and is valid as long as that.
[[nodiscard]] VELDAN_PLATFORM_API std::string_view TrimLeft(std::string_view text);
[[nodiscard]] VELDAN_PLATFORM_API std::string_view TrimRight(std::string_view text);
[[nodiscard]] VELDAN_PLATFORM_API std::string_view Trim(std::string_view text);

/// Replaces every `from` by `to`, from left to right; an empty `from` replaces nothing.
[[nodiscard]] VELDAN_PLATFORM_API CString ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

/// The decimal number at the start of the text, after white space and a sign; 0 if there is none. A number that doesn't
/// fit 32 bits gives the nearest one that does.
[[nodiscard]] VELDAN_PLATFORM_API int Atoi(std::string_view text);

}  // namespace veldan
