#pragma once

#include "platform/core/File.h"

#include <cerrno>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include <dirent.h>
#include <sys/stat.h>

namespace veldan {

/// Repeats a call as long as a signal interrupts it.
template <class Call>
auto Uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// Owns an open file of the system. Reads and writes go through `FileCalls`, go on after an interruption and finish
/// what was done in part.
class FileHandle {
public:
    FileHandle() = default;
    explicit FileHandle(int file) : m_file(file) {}
    FileHandle(FileHandle&& other) noexcept : m_file(std::exchange(other.m_file, -1)) {}
    FileHandle& operator=(FileHandle&& other) noexcept {
        std::swap(m_file, other.m_file);
        return *this;
    }
    ~FileHandle() { Close(); }

    /// Opens as `open` does, closed for child processes; a handle that isn't open leaves the reason in `errno`.
    [[nodiscard]] static FileHandle Open(const char* path, int flags, mode_t mode = 0);
    /// The same for a path that starts in an open folder.
    [[nodiscard]] static FileHandle OpenIn(int folder, const char* path, int flags, mode_t mode = 0);

    [[nodiscard]] bool IsOpen() const { return m_file >= 0; }
    [[nodiscard]] int Get() const { return m_file; }
    void Close();
    /// Gives the file up to somebody else who closes it.
    int Release() { return std::exchange(m_file, -1); }

    /// Fills `bytes` from that place of the file on, less at the file's end; nothing on an error.
    [[nodiscard]] std::optional<std::size_t> ReadAt(std::int64_t offset, std::span<char> bytes) const;
    [[nodiscard]] bool Write(std::string_view bytes) const;
    [[nodiscard]] bool Sync() const;

private:
    int m_file = -1;
};

/// The names in a folder, for `readdir`.
using FolderStream = std::unique_ptr<DIR, int (*)(DIR*)>;

/// Starts to read an open folder's names; null if it may not be read. The handle stays open and unchanged.
[[nodiscard]] FolderStream ReadFolder(const FileHandle& folder);

struct OpenedFile {
    FileHandle handle;
    struct stat status = {};
};

/// Opens a regular file at a path of any spelling; the handle isn't open if that fails.
[[nodiscard]] OpenedFile OpenRegularFile(std::string_view path, FileAccess access);

/// Whether the mode allows writing to anybody. Asked of the mode itself since root may write everywhere.
[[nodiscard]] constexpr bool HasWriteBit(mode_t mode) {
    return (mode & 0222) != 0;
}

/// Whether both are of one file or one folder.
[[nodiscard]] inline bool IsSameFile(const struct stat& status, const struct stat& other) {
    return status.st_dev == other.st_dev && status.st_ino == other.st_ino;
}

}  // namespace veldan
