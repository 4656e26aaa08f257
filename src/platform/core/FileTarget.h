#pragma once

#include "platform/core/FileHandle.h"
#include "platform/core/Text.h"

#include <optional>

#include <sys/stat.h>

namespace veldan {

/// A file that is to be written, created or deleted. Its folder stays open, so what is done by the name is done in that
/// folder, whatever takes the folder's place meanwhile.
struct FileTarget {
    /// Only the start of a path for other calls; it can't be read or synced itself.
    FileHandle folder;
    /// In the spelling that stands on the disk; as given where nothing of that name stands there.
    CString strName;
    /// Of what stands there, of a link the link's own.
    std::optional<struct stat> status;

    /// Whether a regular file stands there that the rules allow to be replaced or deleted.
    [[nodiscard]] bool IsChangeableFile(const WriteRules& rules) const;
};

/// Finds a path of any spelling for writing, as the rules tell. Nothing where a folder on the way is missing or is a
/// link that may not be followed.
[[nodiscard]] std::optional<FileTarget> FindTarget(std::string_view path, const WriteRules& rules);

/// Opens a folder in the same way. Without a root the whole path may lead over links.
[[nodiscard]] FileHandle OpenTargetFolder(std::string_view path, const WriteRules& rules);

}  // namespace veldan
