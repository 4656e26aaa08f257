#include "platform/core/FileHandle.h"

#include "platform/core/FileCalls.h"
#include "platform/core/Path.h"
#include "platform/core/PathResolver.h"

#include <cerrno>

#include <fcntl.h>

namespace veldan {

namespace {

int FlagsOf(FileAccess access) {
    // A pipe or a device in a file's place must neither stop the caller nor become its terminal.
    constexpr int kCommon = O_NONBLOCK | O_NOCTTY;
    switch (access) {
        case FileAccess::Read:
            return kCommon | O_RDONLY;
        case FileAccess::ReadWrite:
            return kCommon | O_RDWR;
        case FileAccess::Append:
            return kCommon | O_RDWR | O_APPEND;
    }
    return kCommon | O_RDONLY;
}

/// The second try, for a path that doesn't stand on the disk in its given spelling.
FileHandle OpenResolved(std::string_view path, FileAccess access) {
    const std::optional<ResolvedPath> resolved = ResolvePath(path);
    if (!resolved) {
        return {};
    }
    if (resolved->bExists) {
        return FileHandle::Open(resolved->strPath.c_str(), FlagsOf(access));
    }
    if (access != FileAccess::Append) {
        return {};
    }
    ForgetListings();
    // A link that leads nowhere isn't followed, or the file would come into being somewhere else.
    return FileHandle::Open(resolved->strPath.c_str(), FlagsOf(access) | O_CREAT | O_NOFOLLOW, 0666);
}

std::string_view LastComponent(std::string_view path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

}  // namespace

FileHandle FileHandle::Open(const char* path, int flags, mode_t mode) {
    return OpenIn(AT_FDCWD, path, flags, mode);
}

FileHandle FileHandle::OpenIn(int folder, const char* path, int flags, mode_t mode) {
    return FileHandle(Uninterrupted([&] { return CurrentFileCalls().openat(folder, path, flags | O_CLOEXEC, mode); }));
}

void FileHandle::Close() {
    if (m_file >= 0) {
        // Not repeated when interrupted: the descriptor is gone by then and may belong to somebody else.
        CurrentFileCalls().close(std::exchange(m_file, -1));
    }
}

std::optional<std::size_t> FileHandle::ReadAt(std::int64_t offset, std::span<char> bytes) const {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = Uninterrupted([&] {
            return CurrentFileCalls().pread(m_file, bytes.data() + done, bytes.size() - done,
                                            offset + static_cast<std::int64_t>(done));
        });
        if (count < 0) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    return done;
}

bool FileHandle::Write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count =
            Uninterrupted([&] { return CurrentFileCalls().write(m_file, bytes.data(), bytes.size()); });
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool FileHandle::Sync() const {
    return Uninterrupted([&] { return CurrentFileCalls().fsync(m_file); }) == 0;
}

OpenedFile OpenRegularFile(std::string_view path, FileAccess access) {
    if (!IsUsablePath(path) || (access == FileAccess::Append && !IsCreatableName(LastComponent(path)))) {
        return {};
    }
    OpenedFile file;
    file.handle = OpenAsSpelled(ToSystemPath(path), FlagsOf(access));
    if (!file.handle.IsOpen() && errno == ENOENT) {
        file.handle = OpenResolved(path, access);
    }
    if (!file.handle.IsOpen()) {
        return {};
    }
    const bool bGood = fstat(file.handle.Get(), &file.status) == 0 && S_ISREG(file.status.st_mode) &&
                       (access == FileAccess::Read || HasWriteBit(file.status.st_mode));
    return bGood ? std::move(file) : OpenedFile{};
}

}  // namespace veldan
