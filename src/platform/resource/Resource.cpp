#include "platform/resource/Resource.h"

namespace veldan {
namespace {

// The tables form a linked list through their own fields, so that libraries can be loaded and unloaded in any order
// without allocating or freeing memory in static objects.
ResourceTable* g_pFirstTable = nullptr;

}  // namespace

ResourceTable::ResourceTable(std::span<const Resource> resources) : m_resources(resources), m_next(g_pFirstTable) {
    g_pFirstTable = this;
}

ResourceTable::~ResourceTable() {
    ResourceTable** link = &g_pFirstTable;
    while (*link != this) {
        link = &(*link)->m_next;
    }
    *link = m_next;
}

std::span<const std::byte> FindResource(UINT id, std::string_view type) {
    for (const ResourceTable* table = g_pFirstTable; table; table = table->m_next) {
        for (const Resource& resource : table->m_resources) {
            if (resource.id == id && resource.type == type) {
                return resource.data;
            }
        }
    }
    return {};
}

}  // namespace veldan
