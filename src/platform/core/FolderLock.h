#pragma once

#include "platform/core/Export.h"
#include "platform/core/FileHandle.h"

namespace veldan {

/// An advisory lock on a folder, against other processes that take the same one, for as long as the object stands.
/// Within a thread an inner lock of the same folder shares the outer one. Objects go in the reverse order of their
/// coming.
class VELDAN_PLATFORM_API FolderLock {
public:
    /// Waits at most a second for the lock, then goes on without it. Of the rules only the root counts.
    explicit FolderLock(std::string_view folder, const WriteRules& rules = {});
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    /// Whether the folder is locked, by this object or by an outer one.
    [[nodiscard]] bool IsHeld() const { return m_bHeld; }

private:
    [[nodiscard]] bool IsHeldOutside() const;

    FileHandle m_handle;
    struct stat m_status = {};
    FolderLock* m_pOuter = nullptr;
    bool m_bHeld = false;
};

}  // namespace veldan
