#pragma once

#include "platform/core/FileHandle.h"
#include "platform/core/Text.h"

#include <optional>

#include <sys/stat.h>

namespace veldan {

/// A path in the form that the kernel needs.
struct ResolvedPath {
    /// In the spelling on the disk. If the last component doesn't exist, it keeps the given spelling.
    CString strPath;
    /// Its folder, `.` if there is none, and its last component, which is empty after a final separator.
    CString strFolder;
    CString strName;
    bool bExists = false;
    /// Of the file that links lead to; only valid if it exists.
    struct stat status = {};
};

/// Finds what a path refers to. It may contain both separators, also doubled. Each component is matched by its exact
/// spelling or else by the bytewise smallest name that differs only in case. Empty if a folder of the path is missing,
/// or if `IsUsablePath` refuses the path.
[[nodiscard]] std::optional<ResolvedPath> ResolvePath(std::string_view path);

/// False for an empty path or one that consists of separators only, and for one that contains a NUL byte. Such a path
/// is refused everywhere, without a system call.
[[nodiscard]] bool IsUsablePath(std::string_view path);

/// Whether a file of that name may be created: it is not empty, `.` or `..` and contains none of `< > : " | ? *`, no
/// backslash and no control character.
[[nodiscard]] bool IsCreatableName(std::string_view name);

/// The spelling of a name in an open folder: its exact one, or else the bytewise smallest that differs only in case.
/// Empty if no name matches. Lists the folder.
[[nodiscard]] CString FindNameIn(const FileHandle& folder, std::string_view name);

/// A path in the form of those system calls that start in an open folder.
struct SystemPath {
    int folder;
    const char* path;
};

/// The path for a system call, valid until the next call of this function and as long as `path`. While a snapshot
/// exists, the folder that was last used stays open, so that the system resolves it only once for many files.
[[nodiscard]] SystemPath StartOf(const CString& path);

/// Call this after a file was created, deleted or renamed: the snapshot of this thread, if any, then lists folders
/// again.
void ForgetListings();

}  // namespace veldan
