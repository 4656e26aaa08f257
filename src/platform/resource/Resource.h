#pragma once

#include "platform/core/Export.h"
#include "platform/core/Types.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace veldan {

/// A block of data that is part of a library's file.
struct Resource {
    UINT id = 0;
    const char* type = "";  ///< As "PNG".
    std::span<const std::byte> data;
};

/// Makes the resources of a library known for as long as the object lives: one per library, at namespace scope or in
/// the library's own start. The table that it names must outlive it.
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

/// The data of a resource, or nothing when no table holds it. Where several do, the latest table wins.
[[nodiscard]] VELDAN_PLATFORM_API std::span<const std::byte> FindResource(UINT id, std::string_view type);

}  // namespace veldan
