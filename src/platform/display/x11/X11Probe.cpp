#include "platform/display/x11/X11Probe.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <pthread.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <csignal>

namespace veldan {

namespace {

struct Probe {
    const char* displayName = nullptr;
    bool isWilling = true;
};

/// Gives the calling thread descriptors of its own, none of which leads anywhere.
bool LeaveDescriptors() {
    if (close_range(0, ~0U, CLOSE_RANGE_UNSHARE) != 0) return false;
    for (int number = 0; number <= STDERR_FILENO; ++number) {
        if (open("/dev/null", O_RDWR) != number) return false;
    }
    return true;
}

void* Attempt(void* argument) {
    Probe& probe = *static_cast<Probe*>(argument);
    if (!LeaveDescriptors()) return nullptr;
    xcb_connection_t* connection = xcb_connect(probe.displayName, nullptr);
    probe.isWilling = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return nullptr;
}

}  // namespace

bool IsServerWilling(const char* displayName) {
    Probe probe{displayName};
    // The host's handlers don't run on a thread that the host doesn't know.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    pthread_t thread{};
    if (pthread_create(&thread, nullptr, &Attempt, &probe) == 0) {
        pthread_join(thread, nullptr);
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return probe.isWilling;
}

}  // namespace veldan
