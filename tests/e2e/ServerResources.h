#pragma once

#include <xcb/xcb.h>

#include <map>
#include <string>

namespace veldan {

/// How many resources of each kind all clients of a server have.
[[nodiscard]] std::map<std::string, unsigned> CountResources(xcb_connection_t* connection);

}  // namespace veldan
