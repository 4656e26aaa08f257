#pragma once

#include "platform/core/Export.h"
#include "platform/core/File.h"

#include <atomic>
#include <cstdint>
#include <optional>
#include <thread>
#include <vector>

namespace veldan {

/// Reads files on a thread of its own before they are taken, so that many files are read and processed at the same
/// time. The files are taken on one thread, each at most once and in order. If no thread can be started, or for a few
/// files only, each is read when it is taken. The destructor waits until the thread has ended.
class VELDAN_PLATFORM_API ReadAhead {
public:
    struct Request {
        CString path;  ///< Of any spelling; an empty one counts as missing.
        FileAccess access = FileAccess::Read;
        std::int64_t mostBytes = 0;  ///< Only the start of a longer file is read.
    };

    explicit ReadAhead(std::vector<Request> requests);
    ~ReadAhead();
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    /// The content of a requested file; empty if it isn't a regular file or can't be opened or read.
    [[nodiscard]] std::optional<CString> Take(std::size_t request);

private:
    enum class State { Free, Reading, Read };

    struct Entry {
        std::atomic<State> state = State::Free;
        std::optional<CString> bytes;
    };

    void Run(int askersProcessor);
    bool ReadIfFree(std::size_t request);
    void ReadNextAfter(std::size_t request);
    void ChangeHeld(const Entry& entry, int sign);

    const std::vector<Request> m_requests;
    std::vector<Entry> m_entries;
    std::atomic<std::int64_t> m_heldBytes = 0;  // read but not taken yet
    std::atomic<bool> m_isEnding = false;
    std::thread m_thread;
};

}  // namespace veldan
