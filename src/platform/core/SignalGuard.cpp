#include "platform/core/SignalGuard.h"

#include <cerrno>
#include <ctime>

namespace veldan {

namespace {

thread_local int t_guards[NSIG] = {};

}  // namespace

SignalGuard::SignalGuard(int signal) : m_nSignal(signal), m_bOutermost(t_guards[signal]++ == 0) {
    if (!m_bOutermost) {
        return;
    }
    sigemptyset(&m_signals);
    sigaddset(&m_signals, m_nSignal);
    pthread_sigmask(SIG_BLOCK, &m_signals, &m_before);
    m_bWasPending = sigismember(&m_before, m_nSignal) == 1 && IsPending();
}

SignalGuard::~SignalGuard() {
    --t_guards[m_nSignal];
    if (!m_bOutermost) {
        return;
    }
    if (!m_bWasPending && IsPending()) {
        const timespec atOnce{};
        while (sigtimedwait(&m_signals, nullptr, &atOnce) < 0 && errno == EINTR) {
        }
    }
    // Guards for two signals may end in any order, so only this one's own signal is let through again.
    if (sigismember(&m_before, m_nSignal) == 0) {
        pthread_sigmask(SIG_UNBLOCK, &m_signals, nullptr);
    }
}

bool SignalGuard::IsPending() const {
    sigset_t pending;
    return sigpending(&pending) == 0 && sigismember(&pending, m_nSignal) == 1;
}

}  // namespace veldan
