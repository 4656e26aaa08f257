#pragma once

#include "support/TempFolder.h"

#include <filesystem>
#include <string>

namespace veldan {

/// A copy of the sample catalogue that a test may change.
class Catalogue {
public:
    Catalogue() {
        std::filesystem::copy(VELDAN_SAMPLES "/Profiles", m_folder / "Profiles",
                              std::filesystem::copy_options::recursive);
    }

    [[nodiscard]] std::string Base() const { return m_folder.Path(); }
    [[nodiscard]] const testing::TempFolder& Folder() const { return m_folder; }

    /// The value of a key in a group's index.
    [[nodiscard]] std::string Entry(const std::string& group, const std::string& key) const {
        const std::string text = "\n" + m_folder.Read("Profiles/" + group + "/order.ini");
        const std::size_t line = text.find("\n" + key + "=");
        if (line == std::string::npos) {
            return {};
        }
        const std::size_t value = line + key.size() + 2;
        return text.substr(value, text.find_first_of("\r\n", value) - value);
    }

    /// A path as a host receives it.
    [[nodiscard]] static std::string WithBackslashes(std::string path) {
        for (char& character : path) {
            character = character == '/' ? '\\' : character;
        }
        return path;
    }

private:
    testing::TempFolder m_folder;
};

}  // namespace veldan
