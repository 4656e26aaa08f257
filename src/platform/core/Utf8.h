#pragma once

#include "platform/core/Text.h"

namespace veldan {

/// The first character of a text. A byte that starts no valid character stands for itself, one byte long.
struct Utf8Character {
    char32_t value = 0;
    std::size_t nLength = 1;
    bool bValid = false;
};

/// Decodes the first character of a text that isn't empty. Overlong forms, surrogates and numbers past U+10FFFF are not
/// valid.
[[nodiscard]] VELDAN_PLATFORM_API Utf8Character DecodeUtf8(std::string_view text);

/// Appends a character; it must be one that `DecodeUtf8` calls valid.
void AppendUtf8(CString& text, char32_t character);

/// The key under which names that differ only in case are equal: each character by its own simple mapping to upper
/// case, independent of the locale; bytes that aren't valid UTF-8 stay as they are.
[[nodiscard]] VELDAN_PLATFORM_API CString FoldCase(std::string_view text);

}  // namespace veldan
