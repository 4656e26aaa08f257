#include "platform/core/PathResolver.h"

#include "platform/core/FolderSnapshot.h"
#include "platform/core/Path.h"
#include "platform/core/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <memory>
#include <utility>

#include <dirent.h>

namespace veldan {

/// The names in the folders that were listed so far.
class FolderListings {
public:
    /// The spelling of `name` in a folder; null where no name matches.
    [[nodiscard]] const CString* FindName(const CString& folder, std::string_view name);

    /// The spelling of a folder's path; nothing where there is no such folder.
    [[nodiscard]] std::optional<CString> FindFolder(const CString& path);

    void Clear() {
        m_mapNames.clear();
        m_mapFolders.clear();
    }

private:
    /// Names by the hash of their case-less keys, which is enough to have few to compare.
    using Names = std::unordered_multimap<std::size_t, CString>;

    [[nodiscard]] const Names& NamesOf(const CString& folder);

    std::unordered_map<CString, Names> m_mapNames;
    std::unordered_map<CString, std::optional<CString>> m_mapFolders;
};

namespace {

thread_local FolderListings* t_pSnapshot = nullptr;

struct PathParts {
    std::string_view folder;
    std::string_view name;
};

std::string_view WithoutClosingSlashes(std::string_view path) {
    while (path.size() > 1 && path.back() == '/') {
        path.remove_suffix(1);
    }
    return path;
}

/// Parts a path that has slashes only. The folder is `.` or `/` where no other stands before the name.
PathParts Split(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) {
        return {".", path};
    }
    return {WithoutClosingSlashes(path.substr(0, slash + 1)), path.substr(slash + 1)};
}

CString Join(const CString& folder, std::string_view name) {
    CString path = folder;
    if (path.back() != '/') {
        path += '/';
    }
    return path.append(name);
}

std::size_t HashOf(const CString& key) {
    return std::hash<CString>()(key);
}

bool IsFolder(const CString& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

const FolderListings::Names& FolderListings::NamesOf(const CString& folder) {
    const auto [entry, bNew] = m_mapNames.try_emplace(folder);
    if (!bNew) {
        return entry->second;
    }
    const std::unique_ptr<DIR, int (*)(DIR*)> pFolder(opendir(folder.c_str()), closedir);
    while (const dirent* pEntry = pFolder ? readdir(pFolder.get()) : nullptr) {
        const std::string_view name = pEntry->d_name;
        entry->second.emplace(HashOf(FoldCase(name)), name);
    }
    return entry->second;
}

const CString* FolderListings::FindName(const CString& folder, std::string_view name) {
    const CString* pBest = nullptr;
    const CString key = FoldCase(name);
    const auto [begin, end] = NamesOf(folder).equal_range(HashOf(key));
    for (auto it = begin; it != end; ++it) {
        const CString& candidate = it->second;
        if (candidate == name) {
            return &candidate;
        }
        if (FoldCase(candidate) == key && (!pBest || candidate < *pBest)) {
            pBest = &candidate;
        }
    }
    return pBest;
}

std::optional<CString> FolderListings::FindFolder(const CString& path) {
    if (const auto known = m_mapFolders.find(path); known != m_mapFolders.end()) {
        return known->second;
    }
    std::optional<CString> found;
    if (IsFolder(path)) {
        found = path;
    } else if (path != "/" && path != ".") {
        const PathParts parts = Split(path);
        const std::optional<CString> parent = FindFolder(CString(parts.folder));
        const CString* pName = parent ? FindName(*parent, parts.name) : nullptr;
        if (pName && IsFolder(Join(*parent, *pName))) {
            found = Join(*parent, *pName);
        }
    }
    m_mapFolders.emplace(path, found);
    return found;
}

std::optional<ResolvedPath> ResolvePath(std::string_view path) {
    if (!IsUsablePath(path)) {
        return std::nullopt;
    }
    const CString given = ToSystemPath(path);
    ResolvedPath resolved;
    resolved.bExists = stat(given.c_str(), &resolved.status) == 0;
    if (resolved.bExists) {
        const PathParts parts = Split(given);
        resolved = {given, CString(parts.folder), CString(parts.name), true, resolved.status};
        return resolved;
    }
    if (errno != ENOENT) {
        return std::nullopt;
    }

    FolderListings once;
    FolderListings& listings = t_pSnapshot ? *t_pSnapshot : once;
    const std::string_view bare = WithoutClosingSlashes(given);
    const PathParts parts = Split(bare);
    std::optional<CString> folder = listings.FindFolder(CString(parts.folder));
    if (!folder) {
        return std::nullopt;
    }
    const CString* pName = listings.FindName(*folder, parts.name);
    resolved.strPath = Join(*folder, pName ? *pName : parts.name);
    resolved.strFolder = std::move(*folder);
    if (bare.size() == given.size()) {
        resolved.strName = pName ? *pName : parts.name;
    } else {
        resolved.strPath += '/';
    }
    resolved.bExists = pName && stat(resolved.strPath.c_str(), &resolved.status) == 0;
    return resolved;
}

bool IsUsablePath(std::string_view path) {
    return path.find_first_not_of("/\\") != std::string_view::npos && path.find('\0') == std::string_view::npos;
}

bool IsCreatableName(std::string_view name) {
    return IsPlainFileName(name) && std::none_of(name.begin(), name.end(), [](char c) {
               const auto byte = static_cast<unsigned char>(c);
               return byte < 0x20 || byte == 0x7f || std::string_view("<>:\"|?*").find(c) != std::string_view::npos;
           });
}

void ForgetListings() {
    if (t_pSnapshot) {
        t_pSnapshot->Clear();
    }
}

FolderSnapshot::FolderSnapshot() {
    if (!t_pSnapshot) {
        m_pListings = std::make_unique<FolderListings>();
        t_pSnapshot = m_pListings.get();
    }
}

FolderSnapshot::~FolderSnapshot() {
    if (m_pListings) {
        t_pSnapshot = nullptr;
    }
}

}  // namespace veldan
