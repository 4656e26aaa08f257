#pragma once

#include "platform/core/Export.h"
#include "platform/core/File.h"

#include <atomic>
#include <cstdint>
#include <optional>
#include <thread>
#include <vector>

namespace veldan {

/// Reads files before they are asked for, on a thread of its own, so that reading many files and making something of
/// them go on at the same time. The files are asked for on one thread, each at most once and in order. Without a thread
/// to spare, and for a few files, each is read when it is asked for. The destructor waits until the thread has ended.
class VELDAN_PLATFORM_API ReadAhead {
public:
    struct Request {
        CString path;  ///< Of any spelling; an empty one reads as a missing file.
        FileAccess access = FileAccess::Read;
        std::int64_t mostBytes = 0;  ///< Of a longer file only the start is read.
    };

    explicit ReadAhead(std::vector<Request> requests);
    ~ReadAhead();
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    /// What the file of a request holds; nothing where it is no regular file or can't be opened or read.
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
    std::atomic<std::int64_t> m_heldBytes = 0;  // read, but not yet taken
    std::atomic<bool> m_isEnding = false;
    std::thread m_thread;
};

}  // namespace veldan
