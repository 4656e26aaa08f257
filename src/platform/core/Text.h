#pragma once

#include "platform/core/Export.h"
#include "platform/core/Types.h"

#include <cstdarg>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veldan {

/// Text is UTF-8 everywhere; bytes that aren't are carried along as they are.
using CString = std::string;
using CStringArray = std::vector<CString>;
using CUIntArray = std::vector<UINT>;
template <class T>
using CMapStringToPtr = std::unordered_map<CString, T*>;

/// Text in the manner of `printf`; the empty text where the format can't be followed.
[[nodiscard, gnu::format(printf, 1, 2)]] VELDAN_PLATFORM_API CString Format(const char* format, ...);
[[nodiscard, gnu::format(printf, 1, 0)]] VELDAN_PLATFORM_API CString FormatV(const char* format,
                                                                             std::va_list arguments);

/// The text behind a pointer that may be null, which stands for the empty text.
[[nodiscard]] inline CString TextOrEmpty(const char* text) {
    return text ? CString(text) : CString();
}

/// White space as C knows it. Bytes above 0x7f never count, whatever the locale says: they are parts of characters.
[[nodiscard]] constexpr bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Parts of the given text without the white space at its ends. They live no longer than the text behind them.
[[nodiscard]] VELDAN_PLATFORM_API std::string_view TrimLeft(std::string_view text);
[[nodiscard]] VELDAN_PLATFORM_API std::string_view TrimRight(std::string_view text);
[[nodiscard]] VELDAN_PLATFORM_API std::string_view Trim(std::string_view text);

/// Every `from` replaced by `to`, from left to right; an empty `from` replaces nothing.
[[nodiscard]] VELDAN_PLATFORM_API CString ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

/// The decimal number at the start of the text, behind white space and a sign; 0 where there is none. Numbers beyond 32
/// bits give the nearest that fits.
[[nodiscard]] VELDAN_PLATFORM_API int Atoi(std::string_view text);

}  // namespace veldan
