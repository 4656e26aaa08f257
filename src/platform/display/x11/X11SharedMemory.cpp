#include "platform/display/x11/X11SharedMemory.h"

#include <sys/mman.h>
#include <unistd.h>

namespace veldan {

X11SharedMemory::X11SharedMemory(X11Connection& connection, std::size_t bytes, Access access)
    : m_connection(connection) {
    if (!m_connection.Features().sharedMemory) {
        return;
    }
    const int descriptor = memfd_create("veldan", MFD_CLOEXEC);
    if (descriptor < 0) {
        return;
    }
    void* memory = MAP_FAILED;
    if (ftruncate(descriptor, static_cast<off_t>(bytes)) == 0) {
        memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    }
    if (memory == MAP_FAILED) {
        close(descriptor);
        return;
    }
    m_bytes = {static_cast<std::uint8_t*>(memory), bytes};
    m_id = xcb_generate_id(m_connection.Get());
    // The protocol library closes the descriptor when it has sent it.
    const std::uint8_t isReadOnly = access == Access::Read ? 1 : 0;
    m_attached = xcb_shm_attach_fd_checked(m_connection.Get(), m_id, descriptor, isReadOnly);
}

X11SharedMemory::~X11SharedMemory() {
    if (Exists()) {
        munmap(m_bytes.data(), m_bytes.size());
    }
}

void X11SharedMemory::Detach() {
    xcb_shm_detach(m_connection.Get(), m_id);
    xcb_discard_reply(m_connection.Get(), m_attached.sequence);
}

bool X11SharedMemory::IsAccepted() {
    return Exists() && !m_connection.Check(m_attached) && m_connection.IsAlive();
}

}  // namespace veldan
