#pragma once

#include "platform/core/Text.h"

#include <cstdint>
#include <functional>

namespace veldan {

// Every path here may hold slashes and backslashes, doubled ones too. Each component is matched without regard to case:
// by its exact spelling, else by the byte-smallest name that differs only in case, also where a file is created, copied
// or deleted. An empty path or one of separators only names nothing. A call that fails changes nothing on the disk.

enum class PathKind {
    None,
    File,
    Folder,
};

/// What stands at a path, behind links. What is neither a regular file nor a folder counts as none.
[[nodiscard]] VELDAN_PLATFORM_API PathKind QueryPath(std::string_view path);

/// Whether something stands at a path and its being a folder agrees with `wantFolder`.
[[nodiscard]] VELDAN_PLATFORM_API bool PathExists(std::string_view path, bool wantFolder);

/// Whether both paths lead to one file or one folder, by whatever spellings and links.
[[nodiscard]] VELDAN_PLATFORM_API bool IsSameFile(std::string_view path, std::string_view other);

/// The path of a regular file as it is spelled on the disk, in the system's form; empty if none stands there.
[[nodiscard]] VELDAN_PLATFORM_API CString FileSpelling(std::string_view path);

/// Whether a regular file stands there that can be opened for reading.
[[nodiscard]] VELDAN_PLATFORM_API bool FileExists(std::string_view path);

/// Reads a regular file whole. False if that fails or the file is larger than `limit` bytes; `bytes` is then unchanged.
[[nodiscard]] VELDAN_PLATFORM_API bool ReadWholeFile(std::string_view path, CString& bytes, std::int64_t limit);

/// What a file is opened for.
enum class FileAccess {
    Read,
    /// Only for reading, but fails on a file that the process may not write or that has no write bit.
    ReadIfWritable,
    /// Also for writing, at the file's end; creates the file if it is missing. Fails on a link.
    Append,
};

/// Reads the first bytes of a regular file that can be opened for `access`, all of them where there are no more than
/// `most`. False if that fails. The memory of `bytes` serves again, and it holds nothing of use after a failure.
[[nodiscard]] VELDAN_PLATFORM_API bool ReadFileStart(std::string_view path, FileAccess access, CString& bytes,
                                                     std::int64_t most);

/// What a call that writes, creates or deletes keeps to.
struct WriteRules {
    /// The start of the path in which links are followed. No component of the rest may be a link, the last one
    /// included, nor one that becomes a link while the call is at work. Where it is empty, that goes for the last
    /// component alone.
    CString strRoot = {};
    /// Whether a file without any write bit may be replaced or deleted too.
    bool bReadOnlyToo = false;
};

/// Replaces or creates a file, whole or not at all: whatever ends the process, the old content or the new one stands
/// there, never a part. A replaced file keeps its mode. False for a file without any write bit, a missing folder, a
/// target that is no regular file, such as a link, and a name that holds any of `< > : " | ? *` or a control character.
VELDAN_PLATFORM_API bool WriteFileWhole(std::string_view path, std::string_view bytes, const WriteRules& rules = {});

/// How a copy came out.
enum class CopyResult {
    Copied,
    /// There is nothing to copy: no regular file stands at the source, or it is larger than the limit.
    NoSource,
    Failed,
};

/// Copies a regular file of at most `limit` bytes over the target, whole or not at all, under the same conditions as
/// `WriteFileWhole`. The bytes are counted as they are read, since a file may hold more than its size tells. The copy
/// has the source's mode, and its owner may write it in any case. A file copied onto itself stays as it is and counts
/// as copied.
VELDAN_PLATFORM_API CopyResult CopyFile(std::string_view source, std::string_view target, std::int64_t limit,
                                        const WriteRules& rules = {});

/// Deletes a regular file. False if there is none, if a link stands there, or if the file has no write bit.
VELDAN_PLATFORM_API bool DeleteFile(std::string_view path, const WriteRules& rules = {});

/// Removes the temporary files that processes of this library left behind in a folder when they were ended in the
/// middle of a write; those still being written stay, and those that `isKept` says yes to, which is asked for each
/// file of such a name.
VELDAN_PLATFORM_API void SweepTemporaries(std::string_view folder, const WriteRules& rules = {},
                                          const std::function<bool(std::string_view name)>& isKept = {});

}  // namespace veldan
