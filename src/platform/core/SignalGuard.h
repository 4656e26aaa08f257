#pragma once

#include "platform/core/Export.h"

#include <csignal>

namespace veldan {

/// Keeps this thread, for the length of a scope, from being hit by a signal that the kernel sends to whoever makes a
/// call, as SIGPIPE for a socket and SIGXFSZ for a file that grows too large: the host may have left it deadly. The
/// call then fails as any other does. A signal of that kind that was pending before stays the host's. A guard within
/// the scope of another for the same signal costs nothing.
class VELDAN_PLATFORM_API SignalGuard {
public:
    explicit SignalGuard(int signal);
    ~SignalGuard();
    SignalGuard(const SignalGuard&) = delete;
    SignalGuard& operator=(const SignalGuard&) = delete;

private:
    [[nodiscard]] bool IsPending() const;

    const int m_nSignal;
    const bool m_bOutermost;
    sigset_t m_signals{};
    sigset_t m_before{};
    bool m_bWasPending = false;
};

}  // namespace veldan
