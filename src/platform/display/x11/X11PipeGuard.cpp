#include "platform/display/x11/X11PipeGuard.h"

#include <cerrno>
#include <ctime>

namespace veldan {

namespace {

thread_local int t_guards = 0;

sigset_t PipeSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    return signals;
}

bool IsPending() {
    sigset_t pending;
    return sigpending(&pending) == 0 && sigismember(&pending, SIGPIPE) == 1;
}

}  // namespace

X11PipeGuard::X11PipeGuard() : m_bOutermost(t_guards++ == 0) {
    if (!m_bOutermost) {
        return;
    }
    const sigset_t signals = PipeSignal();
    pthread_sigmask(SIG_BLOCK, &signals, &m_before);
    m_bWasPending = sigismember(&m_before, SIGPIPE) == 1 && IsPending();
}

X11PipeGuard::~X11PipeGuard() {
    --t_guards;
    if (!m_bOutermost) {
        return;
    }
    if (!m_bWasPending && IsPending()) {
        const sigset_t signals = PipeSignal();
        const timespec atOnce{};
        while (sigtimedwait(&signals, nullptr, &atOnce) < 0 && errno == EINTR) {
        }
    }
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

}  // namespace veldan
