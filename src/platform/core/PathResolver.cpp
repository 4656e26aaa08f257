#include "platform/core/PathResolver.h"

#include "platform/core/FolderSnapshot.h"
#include "platform/core/Path.h"
#include "platform/core/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <memory>
#include <utility>

#include <fcntl.h>

namespace veldan {

/// The names in one folder. Usually only one name is looked up in a listing, so the first lookups just scan it; only
/// further ones build an index.
class FolderNames {
public:
    explicit FolderNames(const CString& folder) : FolderNames(FolderStream(opendir(folder.c_str()), closedir)) {}
    explicit FolderNames(const FolderStream& pFolder);
    FolderNames(const FolderNames&) = delete;
    FolderNames& operator=(const FolderNames&) = delete;

    /// The spelling of `name`; empty if no name matches.
    [[nodiscard]] std::string_view Find(std::string_view name);

private:
    static constexpr int kWalks = 2;

    template <class See>
    void ForEach(See see) const;
    void SortByKey();

    CString m_strNames;  // each followed by a NUL
    int m_nLookups = 0;
    /// By the hash of their case-folded keys; the few names with the same hash are compared.
    std::unordered_multimap<std::size_t, std::string_view> m_mapByKey;
};

/// The names in the folders that were listed so far.
class FolderListings {
public:
    /// The spelling of `name` in a folder; empty if no name matches.
    [[nodiscard]] std::string_view FindName(const CString& folder, std::string_view name) {
        return m_mapNames.try_emplace(folder, folder).first->second.Find(name);
    }

    /// An open folder in which files can be opened; not open if there is none of this spelling. Valid until the next
    /// call.
    [[nodiscard]] const FileHandle& Open(std::string_view folder);

    /// The spelling of a folder's path; empty if there is no such folder.
    [[nodiscard]] std::optional<CString> FindFolder(const CString& path);

    void Clear() {
        m_mapNames.clear();
        m_mapFolders.clear();
        m_strOpenFolder.clear();
        m_openFolder.Close();
    }

private:
    std::unordered_map<CString, FolderNames> m_mapNames;
    std::unordered_map<CString, std::optional<CString>> m_mapFolders;
    CString m_strOpenFolder;
    FileHandle m_openFolder;
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

/// Splits a path that contains slashes only. The folder is `.` or `/` if the path doesn't name another one.
PathParts Split(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) {
        return {".", path};
    }
    return {WithoutClosingSlashes(path.substr(0, slash + 1)), path.substr(slash + 1)};
}

CString Join(const CString& folder, std::string_view name) {
    if (folder == ".") {
        return CString(name);
    }
    CString path = folder;
    if (path.back() != '/') {
        path += '/';
    }
    return path.append(name);
}

std::size_t HashOf(const CString& key) {
    return std::hash<CString>()(key);
}

char FoldAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether a name has this case-folded key. Most names differ in an ASCII letter, so their own key isn't needed.
bool IsSameFolded(std::string_view name, std::string_view key) {
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    const auto [inName, inKey] = std::ranges::mismatch(name, key, {}, FoldAscii, FoldAscii);
    if ((inName == name.end() || isAscii(*inName)) && (inKey == key.end() || isAscii(*inKey))) {
        return inName == name.end() && inKey == key.end();
    }
    return FoldCase(name) == key;
}

bool IsFolder(const CString& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

FolderNames::FolderNames(const FolderStream& pFolder) {
    while (const dirent* pEntry = pFolder ? readdir(pFolder.get()) : nullptr) {
        m_strNames.append(pEntry->d_name).push_back('\0');
    }
}

template <class See>
void FolderNames::ForEach(See see) const {
    for (std::size_t start = 0; start < m_strNames.size();) {
        const std::string_view name = m_strNames.c_str() + start;
        see(name);
        start += name.size() + 1;
    }
}

void FolderNames::SortByKey() {
    ForEach([this](std::string_view name) { m_mapByKey.emplace(HashOf(FoldCase(name)), name); });
}

std::string_view FolderNames::Find(std::string_view name) {
    const CString key = FoldCase(name);
    std::string_view best;
    const auto look = [&](std::string_view candidate) {
        // The exact spelling is preferred, then the smallest name.
        if (best != name && IsSameFolded(candidate, key) && (candidate == name || best.empty() || candidate < best)) {
            best = candidate;
        }
    };
    if (++m_nLookups <= kWalks) {
        ForEach(look);
        return best;
    }
    if (m_mapByKey.empty()) {
        SortByKey();
    }
    const auto [begin, end] = m_mapByKey.equal_range(HashOf(key));
    std::for_each(begin, end, [&](const auto& entry) { look(entry.second); });
    return best;
}

const FileHandle& FolderListings::Open(std::string_view folder) {
    if (m_strOpenFolder != folder) {
        m_strOpenFolder = folder;
        m_openFolder = FileHandle(Uninterrupted([&] { return open(m_strOpenFolder.c_str(), O_PATH | O_CLOEXEC); }));
    }
    return m_openFolder;
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
        const std::string_view name = parent ? FindName(*parent, parts.name) : std::string_view();
        if (!name.empty() && IsFolder(Join(*parent, name))) {
            found = Join(*parent, name);
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
    const std::string_view found = listings.FindName(*folder, parts.name);
    const std::string_view name = found.empty() ? parts.name : found;
    resolved.strPath = Join(*folder, name);
    resolved.strFolder = std::move(*folder);
    if (bare.size() == given.size()) {
        resolved.strName = name;
    } else {
        resolved.strPath += '/';
    }
    resolved.bExists = !found.empty() && stat(resolved.strPath.c_str(), &resolved.status) == 0;
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

CString FindNameIn(const FileHandle& folder, std::string_view name) {
    return CString(FolderNames(ReadFolder(folder)).Find(name));
}

SystemPath StartOf(const CString& path) {
    const PathParts parts = Split(path);
    // The name is at the end of the path, so it is terminated like the path.
    if (t_pSnapshot && !parts.name.empty()) {
        if (const FileHandle& folder = t_pSnapshot->Open(parts.folder); folder.IsOpen()) {
            return {folder.Get(), parts.name.data()};
        }
    }
    return {AT_FDCWD, path.c_str()};
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
