#pragma once

#include <cstddef>
#include <functional>
#include <thread>

namespace veldan {

/// Starts a thread for the library's own work. All signals are blocked on it, because the host's signal handlers must
/// not run on a thread that the host doesn't know. The result is not joinable if the system can't start a thread.
/// `work` doesn't throw.
[[nodiscard]] std::thread StartQuietThread(std::function<void()> work);

/// Whether the system can start this many more threads now, at most 8. Tries it: the threads are started, exist at the
/// same time and have ended when the call returns. To be asked before using code that ends the process if it can't
/// start its threads.
[[nodiscard]] bool CanStartThreads(std::size_t count);

/// Moves the calling thread to another processor, if there is one. Otherwise two threads that start at the same time
/// may share a processor for longer than their work takes.
void LeaveProcessor(int processor);

}  // namespace veldan
