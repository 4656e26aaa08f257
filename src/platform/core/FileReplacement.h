#pragma once

#include "platform/core/FileHandle.h"
#include "platform/core/FileTarget.h"
#include "platform/core/Text.h"

namespace veldan {

/// A file's new content in the making. It is written beside the file, and `Commit` puts it in the file's place, whole
/// or not at all. Without a commit the file stays as it was and nothing of the new content stays.
class FileReplacement {
public:
    FileReplacement() = default;
    ~FileReplacement() { Discard(); }
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    /// Starts a new content for a path of any spelling; see `WriteFileWhole` for what makes it fail.
    [[nodiscard]] bool Begin(std::string_view path, const WriteRules& rules = {});
    /// The same for a path that was looked for already.
    [[nodiscard]] bool Begin(std::optional<FileTarget> target, const WriteRules& rules);

    /// The permission bits for the file, instead of those it had or, for a new file, the process's usual ones.
    void SetMode(mode_t mode) { m_mode = mode & 0777; }

    /// False once anything failed; `Commit` then fails too.
    bool Write(std::string_view bytes);

    /// Syncs the content and gives it the file's name. False if what stood there before still stands there.
    [[nodiscard]] bool Commit();
    void Discard();

private:
    [[nodiscard]] bool CreateTemporary();
    [[nodiscard]] bool ReplaceTarget() const;

    FileTarget m_target;
    CString m_strTemporary;
    FileHandle m_handle;
    std::optional<mode_t> m_mode;
    bool m_bFailed = false;
};

}  // namespace veldan
