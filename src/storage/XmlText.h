#pragma once

#include <string_view>

namespace veldan {

/// Whether XML can hold a text: it is UTF-8 throughout and has none of the characters that XML leaves out, which are
/// the control characters but for tab and line ends, U+FFFE and U+FFFF.
[[nodiscard]] bool IsXmlText(std::string_view text);

/// Whether a text is a name without a prefix.
[[nodiscard]] bool IsXmlName(std::string_view text);

/// What XML calls white space: blanks, tabs and line ends.
[[nodiscard]] bool IsXmlSpace(std::string_view text);

}  // namespace veldan
