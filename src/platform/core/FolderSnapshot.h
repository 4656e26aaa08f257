#pragma once

#include "platform/core/Export.h"

#include <memory>

namespace veldan {

class FolderListings;

/// While a snapshot exists, this thread lists each folder at most once to find names whose case differs. Use it for the
/// duration of one load: files that others add in the meantime may be missed, but changes by this library are seen at
/// once. A snapshot inside another one shares its listings.
class VELDAN_PLATFORM_API FolderSnapshot {
public:
    FolderSnapshot();
    ~FolderSnapshot();
    FolderSnapshot(const FolderSnapshot&) = delete;
    FolderSnapshot& operator=(const FolderSnapshot&) = delete;

private:
    /// Null if an outer snapshot is in use.
    std::unique_ptr<FolderListings> m_pListings;
};

}  // namespace veldan
