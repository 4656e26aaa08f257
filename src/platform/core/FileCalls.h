#pragma once

#include "platform/core/Export.h"

#include <sys/types.h>

namespace veldan {

/// The system calls through which files are read and changed, in one table, so that a test can count them and make any
/// of them fail. They answer as the calls of the same name.
struct FileCalls {
    int (*openat)(int folder, const char* path, int flags, mode_t mode);
    ssize_t (*pread)(int file, void* bytes, size_t count, off_t offset);
    ssize_t (*write)(int file, const void* bytes, size_t count);
    int (*fsync)(int file);
    int (*fchmod)(int file, mode_t mode);
    int (*renameat)(int fromFolder, const char* from, int toFolder, const char* to);
    int (*unlinkat)(int folder, const char* path, int flags);
    int (*close)(int file);
};

/// The table with the calls themselves.
[[nodiscard]] VELDAN_PLATFORM_API const FileCalls& SystemFileCalls();

/// The table in use.
[[nodiscard]] VELDAN_PLATFORM_API const FileCalls& CurrentFileCalls();

/// Puts another table to use, which stays with the caller; null puts the system's back. For tests, while no other
/// thread works on files.
VELDAN_PLATFORM_API void ReplaceFileCalls(const FileCalls* pCalls);

}  // namespace veldan
