#pragma once

#include "platform/core/FileHandle.h"
#include "platform/core/Text.h"

#include <optional>

#include <sys/stat.h>

namespace veldan {

/// A file that is to be written, created or deleted. Its folder is kept open, so that operations by name take place in
/// that folder even if another one has replaced it.
struct FileTarget {
    /// Only a starting point for paths; it can't be read or synced itself.
    FileHandle folder;
    /// In the spelling on the disk; as given if nothing has that name.
    CString strName;
    /// Of what has that name; for a link, that of the link itself.
    std::optional<struct stat> status;

    /// Whether it is a regular file that the rules allow to be replaced or deleted.
    [[nodiscard]] bool IsChangeableFile(const WriteRules& rules) const;
};

/// Finds a path of any spelling for writing, according to the rules. Empty if a folder of the path is missing or is a
/// link that may not be followed.
[[nodiscard]] std::optional<FileTarget> FindTarget(std::string_view path, const WriteRules& rules);

/// Opens a folder in the same way. Without a root all links of the path are followed.
[[nodiscard]] FileHandle OpenTargetFolder(std::string_view path, const WriteRules& rules);

}  // namespace veldan
