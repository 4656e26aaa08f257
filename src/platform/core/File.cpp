#include "platform/core/File.h"

#include "platform/core/FileCalls.h"
#include "platform/core/FileHandle.h"
#include "platform/core/FileTarget.h"
#include "platform/core/PathResolver.h"

#include <algorithm>
#include <utility>

namespace veldan {

namespace {

/// Reads the first bytes into a string, whose memory is reused. On failure the string is empty.
bool ReadStart(const OpenedFile& file, CString& bytes, std::int64_t most) {
    bytes.resize(static_cast<std::size_t>(std::min<std::int64_t>(file.status.st_size, most)));
    const std::optional<std::size_t> count = file.handle.ReadAt(0, bytes);
    bytes.resize(count.value_or(0));
    return count.has_value();
}

}  // namespace

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

bool IsSameFile(std::string_view path, std::string_view other) {
    const std::optional<ResolvedPath> first = ResolvePath(path);
    const std::optional<ResolvedPath> second = ResolvePath(other);
    return first && first->bExists && second && second->bExists && IsSameFile(first->status, second->status);
}

CString FileSpelling(std::string_view path) {
    std::optional<ResolvedPath> resolved = ResolvePath(path);
    const bool bFile = resolved && resolved->bExists && S_ISREG(resolved->status.st_mode);
    return bFile ? std::move(resolved->strPath) : CString();
}

bool FileExists(std::string_view path) {
    return OpenRegularFile(path, FileAccess::Read).handle.IsOpen();
}

bool ReadWholeFile(std::string_view path, CString& bytes, std::int64_t limit) {
    const OpenedFile file = OpenRegularFile(path, FileAccess::Read);
    CString content;
    if (!file.handle.IsOpen() || file.status.st_size > limit || !ReadStart(file, content, limit)) {
        return false;
    }
    bytes = std::move(content);
    return true;
}

bool ReadFileStart(std::string_view path, FileAccess access, CString& bytes, std::int64_t most) {
    const OpenedFile file = OpenRegularFile(path, access);
    return file.handle.IsOpen() && ReadStart(file, bytes, most);
}

bool DeleteFile(std::string_view path, const WriteRules& rules) {
    const std::optional<FileTarget> target = FindTarget(path, rules);
    if (!target || !target->IsChangeableFile(rules)) {
        return false;
    }
    ForgetListings();
    return Uninterrupted(
               [&] { return CurrentFileCalls().unlinkat(target->folder.Get(), target->strName.c_str(), 0); }) == 0;
}

}  // namespace veldan
