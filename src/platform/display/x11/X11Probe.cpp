#include "platform/display/x11/X11Probe.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <csignal>

namespace veldan {

namespace {

/// Gives the calling thread descriptors of its own, none of which leads anywhere.
bool LeaveDescriptors() {
    if (close_range(0, ~0U, CLOSE_RANGE_UNSHARE) != 0) return false;
    for (int number = 0; number <= STDERR_FILENO; ++number) {
        if (open("/dev/null", O_RDWR) != number) return false;
    }
    return true;
}

}  // namespace

X11Probe::X11Probe(const char* displayName) : m_displayName(displayName) {
    // The host's handlers don't run on a thread that the host doesn't know.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    m_isRunning = pthread_create(&m_thread, nullptr, &Run, this) == 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    if (m_isRunning) m_answered.acquire();
}

X11Probe::~X11Probe() {
    if (!m_isRunning) return;
    m_finished.release();
    pthread_join(m_thread, nullptr);
}

void* X11Probe::Run(void* probe) {
    static_cast<X11Probe*>(probe)->Attempt();
    return nullptr;
}

void X11Probe::Attempt() {
    if (!LeaveDescriptors()) {
        m_answered.release();
        return;
    }
    xcb_connection_t* connection = xcb_connect(m_displayName, nullptr);
    m_isWilling = xcb_connection_has_error(connection) == 0;
    m_answered.release();
    m_finished.acquire();
    xcb_disconnect(connection);
}

}  // namespace veldan
