#pragma once

#include "platform/core/Export.h"

#include <sys/types.h>

namespace veldan {

/// The system calls that read and change files, in one table, so that a test can count them and make any of them fail.
/// They behave like the functions of the same name.
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

/// The table of the real system calls.
[[nodiscard]] VELDAN_PLATFORM_API const FileCalls& SystemFileCalls();

/// The table in use.
[[nodiscard]] VELDAN_PLATFORM_API const FileCalls& CurrentFileCalls();

/// Uses another table, which the caller keeps alive; null restores the system's. For tests, while no other thread works
/// with files.
VELDAN_PLATFORM_API void ReplaceFileCalls(const FileCalls* pCalls);

}  // namespace veldan
