#pragma once

#include "platform/core/Export.h"
#include "platform/core/Types.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace veldan {

/// A block of data that is part of a library.
struct Resource {
    UINT id = 0;
    const char* type = "";  ///< For example "PNG".
    std::span<const std::byte> data;
};

/// Registers the resources of a library while the object exists: one object per library, at namespace scope or made
/// when the library starts. The resources must outlive it.
class VELDAN_PLATFORM_API ResourceTable {
public:
    explicit ResourceTable(std::span<const Resource> resources);
    ~ResourceTable();
    ResourceTable(const ResourceTable&) = delete;
    ResourceTable& operator=(const ResourceTable&) = delete;

private:
    friend VELDAN_PLATFORM_API std::span<const std::byte> FindResource(UINT id, std::string_view type);

    std::span<const Resource> m_resources;
    ResourceTable* m_next;
};

/// The data of a resource; empty if no table contains it. If several do, the one registered last is used.
[[nodiscard]] VELDAN_PLATFORM_API std::span<const std::byte> FindResource(UINT id, std::string_view type);

}  // namespace veldan
