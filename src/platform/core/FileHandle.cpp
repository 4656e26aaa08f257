#include "platform/core/FileHandle.h"

#include "platform/core/FileCalls.h"
#include "platform/core/FileTarget.h"
#include "platform/core/Path.h"
#include "platform/core/PathResolver.h"
#include "platform/core/SignalGuard.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace veldan {

namespace {

/// A pipe or a device that takes a file's place after the look at it must neither stop the caller nor become its
/// terminal.
constexpr int kWithCaution = O_NONBLOCK | O_NOCTTY;

/// Asks for the process's effective rights, without opening the file.
bool IsWritable(const SystemPath& path) {
    if (faccessat(path.folder, path.path, W_OK, AT_EACCESS) == 0) {
        return true;
    }
    // Some containers refuse the newer system call that is behind this, with an error that the file itself may cause.
    const bool bSameRights = getuid() == geteuid() && getgid() == getegid();
    return errno == EPERM && bSameRights && faccessat(path.folder, path.path, W_OK, 0) == 0;
}

/// Opens a file for reading, as the path is spelled; nothing where nothing stands there. Opening a device can set it
/// going, so what isn't a regular file isn't opened at all.
std::optional<OpenedFile> OpenSpelled(const SystemPath& path, FileAccess access) {
    struct stat seen = {};
    if (fstatat(path.folder, path.path, &seen, 0) != 0) {
        return errno == ENOENT ? std::nullopt : std::optional<OpenedFile>(std::in_place);
    }
    OpenedFile file;
    const bool bWanted = access == FileAccess::Read || (HasWriteBit(seen.st_mode) && IsWritable(path));
    if (S_ISREG(seen.st_mode) && bWanted) {
        file.handle = FileHandle::OpenIn(path.folder, path.path, O_RDONLY | kWithCaution);
    }
    // Something else may stand there by now.
    if (file.handle.IsOpen() && (fstat(file.handle.Get(), &file.status) != 0 || !S_ISREG(file.status.st_mode))) {
        file.handle.Close();
    }
    return file;
}

/// Unlike for reading, a link isn't followed.
OpenedFile OpenForAppending(std::string_view path) {
    const std::optional<FileTarget> target = FindTarget(path, {});
    if (!target || !IsCreatableName(target->strName) || (target->status && !target->IsChangeableFile({}))) {
        return {};
    }
    if (!target->status) {
        ForgetListings();
    }
    OpenedFile file;
    file.handle = FileHandle::OpenIn(target->folder.Get(), target->strName.c_str(),
                                     O_RDWR | O_APPEND | O_CREAT | O_NOFOLLOW | kWithCaution, 0666);
    if (file.handle.IsOpen() && (fstat(file.handle.Get(), &file.status) != 0 || !S_ISREG(file.status.st_mode))) {
        file.handle.Close();
    }
    return file;
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
    const SignalGuard guard(SIGXFSZ);
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

FolderStream ReadFolder(const FileHandle& folder) {
    FileHandle names = FileHandle::OpenIn(folder.Get(), ".", O_RDONLY | O_DIRECTORY);
    DIR* pStream = names.IsOpen() ? fdopendir(names.Get()) : nullptr;
    if (pStream) {
        names.Release();
    }
    return {pStream, closedir};
}

OpenedFile OpenRegularFile(std::string_view path, FileAccess access) {
    if (!IsUsablePath(path)) {
        return {};
    }
    if (access == FileAccess::Append) {
        return OpenForAppending(path);
    }
    const CString spelled = ToSystemPath(path);
    std::optional<OpenedFile> file = OpenSpelled(StartOf(spelled), access);
    if (!file) {
        const std::optional<ResolvedPath> resolved = ResolvePath(path);
        file = resolved ? OpenSpelled({AT_FDCWD, resolved->strPath.c_str()}, access) : std::nullopt;
    }
    return std::move(file).value_or(OpenedFile{});
}

}  // namespace veldan
