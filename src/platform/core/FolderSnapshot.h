#pragma once

#include "platform/core/Export.h"

#include <memory>

namespace veldan {

class FolderListings;

/// While one stands, this thread lists each folder at most once to find names whose case differs. Meant for the length
/// of one load: files that others add meanwhile may stay unseen, whereas own writes are seen at once. A snapshot inside
/// another shares the outer one.
class VELDAN_PLATFORM_API FolderSnapshot {
public:
    FolderSnapshot();
    ~FolderSnapshot();
    FolderSnapshot(const FolderSnapshot&) = delete;
    FolderSnapshot& operator=(const FolderSnapshot&) = delete;

private:
    /// Null where an outer snapshot serves.
    std::unique_ptr<FolderListings> m_pListings;
};

}  // namespace veldan
