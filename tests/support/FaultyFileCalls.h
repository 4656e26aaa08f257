#pragma once

#include "platform/core/FileCalls.h"
#include "platform/core/Text.h"

#include <functional>
#include <set>
#include <utility>

namespace veldan::testing {

/// Puts itself in the way of every file call while it stands. It counts the calls, can make one of them fail, and knows
/// whether what is renamed had been synced. Nothing is really synced, which only a loss of power would miss.
class FaultyFileCalls {
public:
    enum class Fault {
        None,
        NoSpace,
        InputOutput,
        NoPermission,
        /// Half of what is to be read or written is; other calls are done whole.
        Short,
        /// The call is interrupted before it did anything.
        Interrupted,
        /// The process ends instead of the call, as by `kill -9`.
        Killed,
    };

    /// Makes the call number `failingCall`, counted from 1, fail.
    explicit FaultyFileCalls(Fault fault = Fault::None, int failingCall = 0);
    ~FaultyFileCalls();
    FaultyFileCalls(const FaultyFileCalls&) = delete;
    FaultyFileCalls& operator=(const FaultyFileCalls&) = delete;

    /// Does something just before the call number `call`.
    void ActAt(int call, std::function<void()> action) {
        m_iActingCall = call;
        m_action = std::move(action);
    }

    [[nodiscard]] int Calls() const { return m_iCalls; }
    /// How many files were opened for more than reading.
    [[nodiscard]] int OpensForWriting() const { return m_iOpensForWriting; }
    [[nodiscard]] int Renames() const { return m_iRenames; }
    /// Whether some file was renamed with content that had not been synced.
    [[nodiscard]] bool WasUnsyncedRename() const { return m_bUnsyncedRename; }

private:
    struct Table;

    /// Counts a call and tells whether it fails; may make it handle fewer bytes instead.
    [[nodiscard]] bool FailsNow(std::size_t* count = nullptr);

    Fault m_fault;
    int m_iFailingCall;
    int m_iActingCall = 0;
    std::function<void()> m_action;
    int m_iCalls = 0;
    int m_iOpensForWriting = 0;
    int m_iRenames = 0;
    bool m_bUnsyncedRename = false;
    /// Numbers of the files on the disk that hold something written and not yet synced.
    std::set<unsigned long> m_unsynced;
};

}  // namespace veldan::testing
