#pragma once

#include "platform/core/Text.h"

namespace veldan {

/// The first character of a text. A byte that doesn't start a valid character is returned as itself, with length 1.
struct Utf8Character {
    char32_t value = 0;
    std::size_t nLength = 1;
    bool bValid = false;
};

/// Decodes the first character of a text that isn't empty. Overlong forms, surrogates and numbers above U+10FFFF are
/// invalid.
[[nodiscard]] VELDAN_PLATFORM_API Utf8Character DecodeUtf8(std::string_view text);

/// Appends a character, which must be one that `DecodeUtf8` considers valid.
void AppendUtf8(CString& text, char32_t character);

/// A key that is equal for names that differ only in case: each character is replaced by its simple upper-case mapping,
/// independent of the locale; bytes that aren't valid UTF-8 are kept.
[[nodiscard]] VELDAN_PLATFORM_API CString FoldCase(std::string_view text);

}  // namespace veldan
