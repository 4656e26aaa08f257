#pragma once

#include <xcb/xcb.h>

#include <map>
#include <string>

namespace veldan {

/// Counts what the clients of an X server keep there, on a connection of its own.
class ServerResources {
public:
    explicit ServerResources(const std::string& display);
    ~ServerResources();
    ServerResources(const ServerResources&) = delete;
    ServerResources& operator=(const ServerResources&) = delete;

    /// How many of each kind all clients have, by the kind's name; empty where the server doesn't tell.
    [[nodiscard]] std::map<std::string, unsigned> Count() const;

private:
    [[nodiscard]] std::string NameOf(xcb_atom_t kind) const;

    xcb_connection_t* m_connection;
};

}  // namespace veldan
