#include "platform/core/FileReplacement.h"

#include "platform/core/File.h"
#include "platform/core/FileCalls.h"
#include "platform/core/PathResolver.h"
#include "platform/core/Random.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace veldan {

namespace {

constexpr std::string_view kTemporaryTag = ".veldan-tmp-";
constexpr std::size_t kRandomDigits = 16;

/// Short whatever the target is called, since a target's name may have all the bytes that a name can have. Nobody gives
/// a file of their own such a name by accident: the tag, the number of the process, and 64 random bits.
CString NextTemporaryName() {
    return Format("%s%d-%016llx", kTemporaryTag.data(), static_cast<int>(getpid()),
                  static_cast<unsigned long long>(RandomBits()));
}

bool IsTemporaryName(std::string_view name) {
    if (!name.starts_with(kTemporaryTag)) {
        return false;
    }
    name.remove_prefix(kTemporaryTag.size());
    const std::size_t dash = name.find('-');
    if (dash == 0 || dash == std::string_view::npos || name.size() != dash + 1 + kRandomDigits) {
        return false;
    }
    return name.substr(0, dash).find_first_not_of("0123456789") == std::string_view::npos &&
           name.substr(dash + 1).find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

bool IsLinked(int file) {
    struct stat status = {};
    return fstat(file, &status) == 0 && status.st_nlink > 0;
}

/// Whoever writes a temporary file holds its lock, which goes with the process, so a lock that can be had shows that
/// the file was left behind. The number of the process couldn't show it: it may have come to another one since.
void RemoveIfAbandoned(const FileHandle& folder, const char* name) {
    struct stat status = {};
    if (fstatat(folder.Get(), name, &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(status.st_mode)) {
        return;
    }
    const FileHandle handle = FileHandle::OpenIn(folder.Get(), name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    if (handle.IsOpen() && flock(handle.Get(), LOCK_EX | LOCK_NB) == 0) {
        CurrentFileCalls().unlinkat(folder.Get(), name, 0);
    }
}

CopyResult CopyBytes(const FileHandle& from, FileReplacement& to, std::int64_t limit) {
    std::array<char, 65536> buffer;
    std::int64_t done = 0;
    while (const std::optional<std::size_t> count = from.ReadAt(done, buffer)) {
        if (*count == 0) {
            return to.Commit() ? CopyResult::Copied : CopyResult::Failed;
        }
        done += static_cast<std::int64_t>(*count);
        if (done > limit) {
            return CopyResult::NoSource;
        }
        if (!to.Write({buffer.data(), *count})) {
            return CopyResult::Failed;
        }
    }
    return CopyResult::Failed;
}

}  // namespace

bool FileReplacement::Begin(std::string_view path, const WriteRules& rules) {
    return Begin(FindTarget(path, rules), rules);
}

bool FileReplacement::Begin(std::optional<FileTarget> target, const WriteRules& rules) {
    if (!target || !IsCreatableName(target->strName)) {
        return false;
    }
    if (target->status) {
        if (!target->IsChangeableFile(rules)) {
            return false;
        }
        SetMode(target->status->st_mode);
    }
    m_target = std::move(*target);
    m_bFailed = !CreateTemporary();
    return !m_bFailed;
}

bool FileReplacement::CreateTemporary() {
    // A name can be taken, or a sweep can catch the file in the moment before it is locked; neither goes on for long.
    constexpr int kTries = 100;
    for (int i = 0; i < kTries; ++i) {
        m_strTemporary = NextTemporaryName();
        m_handle = FileHandle::OpenIn(m_target.folder.Get(), m_strTemporary.c_str(), O_WRONLY | O_CREAT | O_EXCL,
                                      m_mode ? 0600 : 0666);
        if (!m_handle.IsOpen() && errno == EEXIST) {
            continue;
        }
        if (!m_handle.IsOpen()) {
            break;
        }
        const bool bTaken = flock(m_handle.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
        if (!bTaken && IsLinked(m_handle.Get())) {
            return true;
        }
        m_handle.Close();
    }
    m_strTemporary.clear();
    return false;
}

bool FileReplacement::Write(std::string_view bytes) {
    m_bFailed = m_bFailed || !m_handle.IsOpen() || !m_handle.Write(bytes);
    return !m_bFailed;
}

bool FileReplacement::Commit() {
    const bool bReplaced = !m_bFailed && m_handle.IsOpen() && ReplaceTarget();
    if (bReplaced) {
        m_strTemporary.clear();
    }
    Discard();
    return bReplaced;
}

bool FileReplacement::ReplaceTarget() const {
    const FileCalls& calls = CurrentFileCalls();
    if (m_mode && Uninterrupted([&] { return calls.fchmod(m_handle.Get(), *m_mode); }) != 0) {
        return false;
    }
    const int folder = m_target.folder.Get();
    if (!m_handle.Sync() || Uninterrupted([&] {
                                return calls.renameat(folder, m_strTemporary.c_str(), folder, m_target.strName.c_str());
                            }) != 0) {
        return false;
    }
    ForgetListings();
    // The new content stands there from here on. If its name can't be synced, a crash of the machine may bring back the
    // old content, whole as well.
    const FileHandle synced = FileHandle::OpenIn(folder, ".", O_RDONLY | O_DIRECTORY);
    if (synced.IsOpen()) {
        static_cast<void>(synced.Sync());
    }
    return true;
}

void FileReplacement::Discard() {
    if (!m_strTemporary.empty()) {
        CurrentFileCalls().unlinkat(m_target.folder.Get(), m_strTemporary.c_str(), 0);
        m_strTemporary.clear();
    }
    m_handle.Close();
}

bool WriteFileWhole(std::string_view path, std::string_view bytes, const WriteRules& rules) {
    FileReplacement replacement;
    return replacement.Begin(path, rules) && replacement.Write(bytes) && replacement.Commit();
}

CopyResult CopyFile(std::string_view source, std::string_view target, std::int64_t limit, const WriteRules& rules) {
    const OpenedFile from = OpenRegularFile(source, FileAccess::Read);
    if (!from.handle.IsOpen()) {
        return PathExists(source, false) ? CopyResult::Failed : CopyResult::NoSource;
    }
    if (from.status.st_size > limit) {
        return CopyResult::NoSource;
    }
    std::optional<FileTarget> to = FindTarget(target, rules);
    if (to && to->status && IsSameFile(*to->status, from.status)) {
        return CopyResult::Copied;
    }
    FileReplacement replacement;
    if (!replacement.Begin(std::move(to), rules)) {
        return CopyResult::Failed;
    }
    replacement.SetMode(from.status.st_mode | S_IWUSR);
    return CopyBytes(from.handle, replacement, limit);
}

void SweepTemporaries(std::string_view folder, const WriteRules& rules,
                      const std::function<bool(std::string_view name)>& isKept) {
    const FileHandle opened = OpenTargetFolder(folder, rules);
    if (!opened.IsOpen()) {
        return;
    }
    const FolderStream pNames = ReadFolder(opened);
    while (const dirent* pEntry = pNames ? readdir(pNames.get()) : nullptr) {
        if (IsTemporaryName(pEntry->d_name) && !(isKept && isKept(pEntry->d_name))) {
            RemoveIfAbandoned(opened, pEntry->d_name);
        }
    }
}

}  // namespace veldan
