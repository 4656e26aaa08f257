#pragma once

#include "platform/core/FileHandle.h"
#include "platform/core/Text.h"

#include <optional>

#include <sys/stat.h>

namespace veldan {

/// A path as the kernel is to be asked for it.
struct ResolvedPath {
    /// In the spelling that stands on the disk. A last component that doesn't stand there keeps the given one.
    CString strPath;
    /// The folder part of it, `.` where there is none, and the last component, empty behind a closing separator.
    CString strFolder;
    CString strName;
    bool bExists = false;
    /// Of the file behind links; only meaningful where it exists.
    struct stat status = {};
};

/// Finds what a path means: both separators, doubled ones too; each component by its exact spelling or, failing that,
/// by the byte-smallest name that differs only in case. Nothing where a folder on the way is missing or the path is one
/// that `IsUsablePath` refuses.
[[nodiscard]] std::optional<ResolvedPath> ResolvePath(std::string_view path);

/// False for a path of separators only, the empty one included, and for one with a NUL byte. Such a path is refused
/// everywhere, without a system call.
[[nodiscard]] bool IsUsablePath(std::string_view path);

/// Whether a file of that name may be created: it isn't empty, `.` or `..` and holds none of `< > : " | ? *`, no
/// backslash and no control character.
[[nodiscard]] bool IsCreatableName(std::string_view name);

/// The spelling of a name in an open folder, its exact one or else the byte-smallest that differs only in case; empty
/// where no name matches. Lists the folder.
[[nodiscard]] CString FindNameIn(const FileHandle& folder, std::string_view name);

/// A path as the calls of the system take it that start in an open folder.
struct SystemPath {
    int folder;
    const char* path;
};

/// A path as it is spelled, good until the next call and no longer than the path itself. While a snapshot stands, the
/// folder that was last asked for is kept open, so that for many files in it the system looks it up just once.
[[nodiscard]] SystemPath StartOf(const CString& path);

/// To be called after a file came, went or changed its name: the snapshot of this thread, if any, lists folders anew.
void ForgetListings();

}  // namespace veldan
