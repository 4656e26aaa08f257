#include "platform/display/x11/X11Probe.h"

#include "platform/core/QuietThread.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace veldan {

namespace {

/// Gives the calling thread descriptors of its own, none of which leads anywhere.
bool UnshareDescriptors() {
    if (close_range(0, ~0U, CLOSE_RANGE_UNSHARE) != 0) {
        return false;
    }
    for (int number = 0; number <= STDERR_FILENO; ++number) {
        if (open("/dev/null", O_RDWR) != number) {
            return false;
        }
    }
    return true;
}

}  // namespace

X11Probe::X11Probe(const char* displayName) : m_pszDisplay(displayName) {
    m_thread = StartQuietThread([this] { Connect(); });
    if (m_thread.joinable()) {
        m_answered.acquire();
    }
}

X11Probe::~X11Probe() {
    if (!m_thread.joinable()) {
        return;
    }
    m_finished.release();
    m_thread.join();
}

void X11Probe::Connect() {
    if (!UnshareDescriptors()) {
        m_answered.release();
        return;
    }
    xcb_connection_t* connection = xcb_connect(m_pszDisplay, nullptr);
    m_bCanConnect = xcb_connection_has_error(connection) == 0;
    m_answered.release();
    m_finished.acquire();
    xcb_disconnect(connection);
}

}  // namespace veldan
