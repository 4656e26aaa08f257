#pragma once

#include "platform/core/SignalGuard.h"

namespace veldan {

/// Holds SIGPIPE back while the protocol library writes: it doesn't ask the kernel to do so, and the server may be
/// gone.
class X11PipeGuard : public SignalGuard {
public:
    X11PipeGuard() : SignalGuard(SIGPIPE) {}
};

}  // namespace veldan
