#include "platform/core/FileTarget.h"

#include "platform/core/Path.h"
#include "platform/core/PathResolver.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>

namespace veldan {

namespace {

constexpr std::string_view kSeparators = "/\\";
constexpr int kFolderFlags = O_PATH | O_DIRECTORY;

/// The part of a path after its root; empty if the path isn't below the root.
std::optional<std::string_view> PartBelow(std::string_view path, std::string_view root) {
    if (!path.starts_with(root)) {
        return std::nullopt;
    }
    const std::string_view below = path.substr(root.size());
    const bool bSeparated = kSeparators.find(root.back()) != std::string_view::npos || below.empty() ||
                            kSeparators.find(below.front()) != std::string_view::npos;
    return bSeparated ? std::optional(below) : std::nullopt;
}

/// Opens a folder, following links. A path of separators only means the root folder.
FileHandle OpenTrustedFolder(std::string_view path) {
    if (path.find_first_not_of(kSeparators) == std::string_view::npos) {
        return FileHandle::Open("/", kFolderFlags);
    }
    const std::optional<ResolvedPath> resolved = ResolvePath(path);
    return resolved ? FileHandle::Open(resolved->strPath.c_str(), kFolderFlags) : FileHandle();
}

/// Opens a folder by its name in another, unless it is a link.
FileHandle OpenFolderIn(const FileHandle& parent, const CString& name) {
    const auto open = [&](const CString& spelling) {
        return FileHandle::OpenIn(parent.Get(), spelling.c_str(), kFolderFlags | O_NOFOLLOW);
    };
    FileHandle folder = open(name);
    if (!folder.IsOpen() && errno == ENOENT) {
        const CString spelling = FindNameIn(parent, name);
        folder = spelling.empty() ? FileHandle() : open(spelling);
    }
    return folder;
}

std::optional<struct stat> StatusIn(const FileHandle& folder, const CString& name) {
    struct stat status = {};
    const bool bFound = fstatat(folder.Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    return bFound ? std::optional(status) : std::nullopt;
}

}  // namespace

bool FileTarget::IsChangeableFile(const WriteRules& rules) const {
    return status && S_ISREG(status->st_mode) && (rules.bReadOnlyToo || HasWriteBit(status->st_mode));
}

FileHandle OpenTargetFolder(std::string_view path, const WriteRules& rules) {
    if (path.empty() || path.find('\0') != std::string_view::npos) {
        return {};
    }
    if (rules.strRoot.empty()) {
        return OpenTrustedFolder(path);
    }
    const std::optional<std::string_view> below = PartBelow(path, rules.strRoot);
    FileHandle folder = below ? OpenTrustedFolder(rules.strRoot) : FileHandle();
    std::string_view left = below.value_or("");
    while (folder.IsOpen() && !left.empty()) {
        const std::size_t end = std::min(left.find_first_of(kSeparators), left.size());
        const CString name(left.substr(0, end));
        left.remove_prefix(std::min(end + 1, left.size()));
        if (!name.empty()) {
            folder = IsPlainFileName(name) ? OpenFolderIn(folder, name) : FileHandle();
        }
    }
    return folder;
}

std::optional<FileTarget> FindTarget(std::string_view path, const WriteRules& rules) {
    if (!IsUsablePath(path)) {
        return std::nullopt;
    }
    const std::size_t start = path.find_last_of(kSeparators) + 1;
    FileTarget target;
    target.folder = OpenTargetFolder(start == 0 ? "." : path.substr(0, start), rules);
    target.strName = path.substr(start);
    if (!target.folder.IsOpen() || target.strName.empty()) {
        return std::nullopt;
    }
    target.status = StatusIn(target.folder, target.strName);
    if (!target.status && errno != ENOENT) {
        return std::nullopt;
    }
    if (!target.status) {
        if (CString spelling = FindNameIn(target.folder, target.strName); !spelling.empty()) {
            target.strName = std::move(spelling);
            target.status = StatusIn(target.folder, target.strName);
        }
    }
    return target;
}

}  // namespace veldan
