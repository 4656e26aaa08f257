#include "e2e/ServerResources.h"

#include "x11/Ask.h"

#include <xcb/res.h>

namespace veldan {

namespace {

std::string NameOf(xcb_connection_t* connection, xcb_atom_t kind) {
    const auto name = Ask<&xcb_get_atom_name_reply>(connection, xcb_get_atom_name(connection, kind));
    return name ? std::string(xcb_get_atom_name_name(name.get()),
                              static_cast<std::size_t>(xcb_get_atom_name_name_length(name.get())))
                : std::string();
}

}  // namespace

std::map<std::string, unsigned> CountResources(xcb_connection_t* connection) {
    std::map<std::string, unsigned> counts;
    const auto clients = Ask<&xcb_res_query_clients_reply>(connection, xcb_res_query_clients(connection));
    if (!clients) {
        return counts;
    }
    for (auto client = xcb_res_query_clients_clients_iterator(clients.get()); client.rem > 0;
         xcb_res_client_next(&client)) {
        const auto kinds = Ask<&xcb_res_query_client_resources_reply>(
            connection, xcb_res_query_client_resources(connection, client.data->resource_base));
        if (!kinds) {
            continue;
        }
        for (auto kind = xcb_res_query_client_resources_types_iterator(kinds.get()); kind.rem > 0;
             xcb_res_type_next(&kind)) {
            counts[NameOf(connection, kind.data->resource_type)] += kind.data->count;
        }
    }
    return counts;
}

}  // namespace veldan
