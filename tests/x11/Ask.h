#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <type_traits>

namespace veldan {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

/// The answer to a request, null where it was refused.
template <auto Reply, class Cookie>
auto Ask(xcb_connection_t* connection, Cookie cookie) {
    auto* reply = Reply(connection, cookie, nullptr);
    return std::unique_ptr<std::remove_pointer_t<decltype(reply)>, Free>(reply);
}

}  // namespace veldan
