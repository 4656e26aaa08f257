#pragma once

#include <csignal>

namespace veldan {

/// Keeps this thread, for the length of a scope, from being hit by SIGPIPE when the server has gone: the protocol
/// library writes to its socket without asking the kernel to hold the signal back, and the host may leave it deadly.
/// A guard within the scope of another costs nothing.
class X11PipeGuard {
public:
    X11PipeGuard();
    ~X11PipeGuard();
    X11PipeGuard(const X11PipeGuard&) = delete;
    X11PipeGuard& operator=(const X11PipeGuard&) = delete;

private:
    const bool m_bOutermost;
    sigset_t m_before{};
    bool m_bWasPending = false;  // such a signal is the host's own and stays pending
};

}  // namespace veldan
