#pragma once

#include "platform/core/Text.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include <stdlib.h>

namespace veldan::testing {

/// An empty temporary folder, which the destructor removes.
class TempFolder {
public:
    TempFolder() : m_path(mkdtemp(m_strTemplate.data())) {}
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// The path of something in the folder, whether it exists or not.
    [[nodiscard]] CString operator/(std::string_view name) const { return m_path.string() + "/" + CString(name); }
    [[nodiscard]] CString Path() const { return m_path.string(); }

    /// Writes a file byte for byte, and makes the folders of its path; returns the path.
    CString Write(std::string_view name, std::string_view bytes) const {
        const CString path = *this / name;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

    /// The bytes of a file; empty if there is none.
    [[nodiscard]] CString Read(std::string_view name) const {
        std::ifstream stream(*this / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    /// The names of everything in the folder, or in one below it.
    [[nodiscard]] std::set<CString> Names(std::string_view below = "") const {
        std::set<CString> names;
        for (const auto& entry : std::filesystem::directory_iterator(*this / below)) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

private:
    CString m_strTemplate = (std::filesystem::temp_directory_path() / "veldan-test-XXXXXX").string();
    std::filesystem::path m_path;
};

}  // namespace veldan::testing
