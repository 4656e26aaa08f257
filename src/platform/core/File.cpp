#include "platform/core/File.h"

#include "platform/core/FileCalls.h"
#include "platform/core/FileHandle.h"
#include "platform/core/PathResolver.h"

#include <utility>

namespace veldan {

PathKind QueryPath(std::string_view path) {
    const std::optional<ResolvedPath> resolved = ResolvePath(path);
    if (!resolved || !resolved->bExists) {
        return PathKind::None;
    }
    if (S_ISDIR(resolved->status.st_mode)) {
        return PathKind::Folder;
    }
    return S_ISREG(resolved->status.st_mode) ? PathKind::File : PathKind::None;
}

bool PathExists(std::string_view path, bool wantFolder) {
    return QueryPath(path) == (wantFolder ? PathKind::Folder : PathKind::File);
}

bool FileExists(std::string_view path) {
    return OpenRegularFile(path, FileAccess::Read).handle.IsOpen();
}

bool ReadWholeFile(std::string_view path, CString& bytes, std::int64_t limit) {
    const OpenedFile file = OpenRegularFile(path, FileAccess::Read);
    if (!file.handle.IsOpen() || file.status.st_size > limit) {
        return false;
    }
    CString content(static_cast<std::size_t>(file.status.st_size), '\0');
    const std::optional<std::size_t> count = file.handle.ReadAt(0, content);
    if (!count) {
        return false;
    }
    content.resize(*count);
    bytes = std::move(content);
    return true;
}

bool DeleteFile(std::string_view path) {
    const std::optional<ResolvedPath> resolved = ResolvePath(path);
    if (!resolved || !resolved->bExists || !S_ISREG(resolved->status.st_mode) ||
        !HasWriteBit(resolved->status.st_mode)) {
        return false;
    }
    ForgetListings();
    return Uninterrupted([&] { return CurrentFileCalls().unlink(resolved->strPath.c_str()); }) == 0;
}

}  // namespace veldan
