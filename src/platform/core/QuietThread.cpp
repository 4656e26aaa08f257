#include "platform/core/QuietThread.h"

#include <csignal>
#include <exception>
#include <utility>

#include <sched.h>

namespace veldan {

std::thread StartQuietThread(std::function<void()> work) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread thread;
    try {
        thread = std::thread(std::move(work));
    } catch (const std::exception&) {
        // The caller does the work itself.
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}

void LeaveProcessor(int processor) {
    cpu_set_t allowed;
    if (processor < 0 || processor >= CPU_SETSIZE || sched_getaffinity(0, sizeof allowed, &allowed) != 0) {
        return;
    }
    CPU_CLR(static_cast<std::size_t>(processor), &allowed);
    if (CPU_COUNT(&allowed) > 0) {
        sched_setaffinity(0, sizeof allowed, &allowed);
    }
}

}  // namespace veldan
