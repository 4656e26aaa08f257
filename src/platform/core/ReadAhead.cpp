#include "platform/core/ReadAhead.h"

#include "platform/core/FolderSnapshot.h"
#include "platform/core/QuietThread.h"

#include <sched.h>

#include <new>
#include <utility>

namespace veldan {

namespace {

/// Starting a thread takes about as long as reading this number of files.
constexpr std::size_t kWorthAThread = 24;

/// The thread reads no further ahead than this.
constexpr std::int64_t kMostHeldBytes = std::int64_t{4} * 1024 * 1024;

}  // namespace

ReadAhead::ReadAhead(std::vector<Request> requests) : m_requests(std::move(requests)), m_entries(m_requests.size()) {
    if (m_requests.size() >= kWorthAThread) {
        m_thread = StartQuietThread([this, processor = sched_getcpu()] { Run(processor); });
    }
}

ReadAhead::~ReadAhead() {
    m_isEnding = true;
    m_heldBytes = 0;
    m_heldBytes.notify_one();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void ReadAhead::Run(int askersProcessor) {
    LeaveProcessor(askersProcessor);
    const FolderSnapshot snapshot;
    for (std::size_t i = 0; i < m_requests.size() && !m_isEnding; ++i) {
        for (std::int64_t held = m_heldBytes; held > kMostHeldBytes && !m_isEnding; held = m_heldBytes) {
            m_heldBytes.wait(held);
        }
        ReadIfFree(i);
    }
}

/// False if the other thread has read the file or is reading it.
bool ReadAhead::ReadIfFree(std::size_t request) {
    Entry& entry = m_entries[request];
    State state = State::Free;
    if (!entry.state.compare_exchange_strong(state, State::Reading)) {
        return false;
    }
    const Request& wanted = m_requests[request];
    try {
        if (CString bytes; ReadFileStart(wanted.path, wanted.access, bytes, wanted.mostBytes)) {
            entry.bytes = std::move(bytes);
        }
    } catch (const std::bad_alloc&) {
        // A file for which there isn't enough memory can't be read.
    }
    ChangeHeld(entry, 1);
    entry.state = State::Read;
    entry.state.notify_one();
    return true;
}

void ReadAhead::ChangeHeld(const Entry& entry, int sign) {
    if (entry.bytes) {
        m_heldBytes += sign * static_cast<std::int64_t>(entry.bytes->size());
    }
}

/// Uses the time until the other thread has read its file.
void ReadAhead::ReadNextAfter(std::size_t request) {
    for (std::size_t i = request + 1; i < m_requests.size() && m_heldBytes <= kMostHeldBytes; ++i) {
        if (ReadIfFree(i)) {
            return;
        }
    }
    m_entries[request].state.wait(State::Reading);
}

std::optional<CString> ReadAhead::Take(std::size_t request) {
    Entry& entry = m_entries[request];
    while (!ReadIfFree(request) && entry.state == State::Reading) {
        ReadNextAfter(request);
    }
    ChangeHeld(entry, -1);
    m_heldBytes.notify_one();
    return std::exchange(entry.bytes, std::nullopt);
}

}  // namespace veldan
