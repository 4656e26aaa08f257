#pragma once

#include <map>
#include <string>

namespace veldan {

/// What a library must leave as its host has set it.
class ProcessState {
public:
    [[nodiscard]] static ProcessState Now();
    /// The names of what is different, each with a blank before it; empty for nothing.
    [[nodiscard]] std::string DifferenceFrom(const ProcessState& other) const;

private:
    std::map<std::string, std::string> m_mapValues;
};

}  // namespace veldan
