#pragma once

#include "platform/display/x11/X11Connection.h"

#include <xcb/shm.h>

#include <span>

namespace veldan {

/// A piece of memory that the server sees too. The object gives back this side's; the server's goes with its number or,
/// later, with the last picture in it.
class X11SharedMemory {
public:
    /// What the server may do. It insists on writing for pictures of its own.
    enum class Access { Read, Write };

    /// Makes the memory and tells the server of it, without waiting. Without memory, or a server that takes it, nothing
    /// is there.
    X11SharedMemory(X11Connection& connection, std::size_t bytes, Access access);
    ~X11SharedMemory();
    X11SharedMemory(const X11SharedMemory&) = delete;
    X11SharedMemory& operator=(const X11SharedMemory&) = delete;

    [[nodiscard]] bool Exists() const { return !m_bytes.empty(); }
    /// Waits until the server has said whether it takes the memory. To be asked once, after the construction.
    [[nodiscard]] bool IsAccepted();
    /// Gives back the server's number, without asking whether it took the memory. Pictures in it stay.
    void Detach();
    /// The server's number for it, until then or until the connection ends.
    [[nodiscard]] xcb_shm_seg_t Id() const { return m_id; }
    /// Zeros at first; only what is touched takes memory.
    [[nodiscard]] std::span<std::uint8_t> Bytes() const { return m_bytes; }

private:
    X11Connection& m_connection;
    xcb_shm_seg_t m_id = 0;
    xcb_void_cookie_t m_attached{};
    std::span<std::uint8_t> m_bytes;
};

}  // namespace veldan
