#pragma once

#include "platform/core/Export.h"
#include "platform/core/FileHandle.h"

namespace veldan {

/// An advisory lock on a folder, held by the object, that excludes other processes which use the same lock. In the same
/// thread, an inner lock of the same folder shares the outer one. Objects must be destroyed in reverse order.
class VELDAN_PLATFORM_API FolderLock {
public:
    /// Waits for the lock for at most a second and then goes on without it. Only the root of the rules is used.
    explicit FolderLock(std::string_view folder, const WriteRules& rules = {});
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    /// Whether the folder is locked by this object or an outer one.
    [[nodiscard]] bool IsHeld() const { return m_bHeld; }

private:
    [[nodiscard]] bool IsHeldOutside() const;

    FileHandle m_handle;
    struct stat m_status = {};
    FolderLock* m_pOuter = nullptr;
    bool m_bHeld = false;
};

}  // namespace veldan
