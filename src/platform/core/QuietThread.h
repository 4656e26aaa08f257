#pragma once

#include <cstddef>
#include <functional>
#include <thread>

namespace veldan {

/// Starts a thread for work of the library's own. All signals are blocked on it: a handler of the host's must not run
/// on a thread that the host knows nothing of. Not joinable where the system has no thread to spare; `work` doesn't
/// throw.
[[nodiscard]] std::thread StartQuietThread(std::function<void()> work);

/// Whether the system has room for so many more threads at this moment, at most 8. Tries it: they are started, all
/// alive at once, and are gone without a trace at the return. Asked before code that ends the process where it gets
/// none.
[[nodiscard]] bool CanStartThreads(std::size_t count);

/// Has the calling thread leave a processor to others, if there is another one. Two threads that start at once may
/// otherwise share one for longer than their work takes.
void LeaveProcessor(int processor);

}  // namespace veldan
