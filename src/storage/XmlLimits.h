#pragma once

#include <string_view>

namespace veldan {

/// What is wrong with a document that must not even be parsed, null if nothing is: it has a document type, or so much
/// of one thing that the parser would take too long or too much memory over it.
[[nodiscard]] const char* FindXmlExcess(std::string_view text);

}  // namespace veldan
