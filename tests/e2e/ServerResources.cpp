#include "e2e/ServerResources.h"

#include <xcb/res.h>

#include <cstdlib>
#include <memory>
#include <type_traits>

namespace veldan {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

template <class Reply>
std::unique_ptr<Reply, Free> Own(Reply* reply) {
    return std::unique_ptr<Reply, Free>(reply);
}

}  // namespace

ServerResources::ServerResources(const std::string& display) : m_connection(xcb_connect(display.c_str(), nullptr)) {}

ServerResources::~ServerResources() {
    xcb_disconnect(m_connection);
}

std::map<std::string, unsigned> ServerResources::Count() const {
    std::map<std::string, unsigned> counts;
    const auto clients = Own(xcb_res_query_clients_reply(m_connection, xcb_res_query_clients(m_connection), nullptr));
    if (!clients) {
        return counts;
    }
    for (auto client = xcb_res_query_clients_clients_iterator(clients.get()); client.rem > 0;
         xcb_res_client_next(&client)) {
        const auto asked = xcb_res_query_client_resources(m_connection, client.data->resource_base);
        const auto kinds = Own(xcb_res_query_client_resources_reply(m_connection, asked, nullptr));
        if (!kinds) {
            continue;
        }
        for (auto kind = xcb_res_query_client_resources_types_iterator(kinds.get()); kind.rem > 0;
             xcb_res_type_next(&kind)) {
            counts[NameOf(kind.data->resource_type)] += kind.data->count;
        }
    }
    return counts;
}

std::string ServerResources::NameOf(xcb_atom_t kind) const {
    const auto name = Own(xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, kind), nullptr));
    if (!name) {
        return {};
    }
    return {xcb_get_atom_name_name(name.get()), static_cast<std::size_t>(xcb_get_atom_name_name_length(name.get()))};
}

}  // namespace veldan
