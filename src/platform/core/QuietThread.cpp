#include "platform/core/QuietThread.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <exception>
#include <utility>

#include <sched.h>
#include <unistd.h>

namespace veldan {
namespace {

constexpr int kMostTurns = 1000;

}  // namespace

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

bool CanStartThreads(std::size_t count) {
    struct Trial {
        std::thread thread;
        std::atomic<pid_t> id = 0;
    };
    std::array<Trial, 8> trials;
    std::atomic<bool> mayEnd = false;
    std::size_t started = 0;
    for (; started < std::min(count, trials.size()); ++started) {
        Trial& trial = trials[started];
        trial.thread = StartQuietThread([&trial, &mayEnd] {
            trial.id = gettid();
            mayEnd.wait(false);
        });
        if (!trial.thread.joinable()) {
            break;
        }
    }
    mayEnd = true;
    mayEnd.notify_all();
    for (std::size_t i = 0; i < started; ++i) {
        trials[i].thread.join();
        // A thread counts until the system has cleaned it up, shortly after it was joined.
        for (int turn = 0; turn < kMostTurns && tgkill(getpid(), trials[i].id, 0) == 0; ++turn) {
            sched_yield();
        }
    }
    return started == count;
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
