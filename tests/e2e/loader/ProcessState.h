#pragma once

#include <map>
#include <string>

namespace veldan {

/// What a library must leave as its host has set it, by its name.
[[nodiscard]] std::map<std::string, std::string> StateOfProcess();

}  // namespace veldan
