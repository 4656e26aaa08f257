#pragma once

#include "platform/core/Text.h"

#include <cstdint>
#include <optional>

namespace veldan {

/// A document's text may have so many bytes, as it stands in the file and in UTF-8.
inline constexpr std::int64_t kMostXmlBytes = 16LL * 1024 * 1024;

/// The declaration that a text begins with, with its brackets; empty where it begins with none.
[[nodiscard]] std::string_view XmlDeclarationOf(std::string_view text);

/// A declaration without the encoding that it names.
[[nodiscard]] CString WithoutEncoding(std::string_view declaration);

/// The text of a file in UTF-8, without a mark. The encoding is told by the mark or by the declaration; both have to
/// agree. Nothing where the encoding isn't known, the bytes don't keep to it, or the text isn't one for XML.
[[nodiscard]] std::optional<CString> DecodeXml(CString bytes);

}  // namespace veldan
