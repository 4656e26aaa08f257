#pragma once

#include "platform/core/FileCalls.h"
#include "platform/core/Text.h"

#include <functional>
#include <set>
#include <utility>

namespace veldan::testing {

/// Replaces the file calls while the object exists. It counts the calls, can make one of them fail, and knows whether
/// renamed files had been synced. It doesn't really sync anything, which would matter only at a loss of power.
class FaultyFileCalls {
public:
    enum class Fault {
        None,
        NoSpace,
        InputOutput,
        NoPermission,
        /// A read or write handles only half of its bytes; other calls are carried out normally.
        Short,
        /// The call is interrupted before it does anything.
        Interrupted,
        /// The process ends instead of making the call, as by `kill -9`.
        Killed,
    };

    /// Makes the call number `failingCall`, counted from 1, fail.
    explicit FaultyFileCalls(Fault fault = Fault::None, int failingCall = 0);
    ~FaultyFileCalls();
    FaultyFileCalls(const FaultyFileCalls&) = delete;
    FaultyFileCalls& operator=(const FaultyFileCalls&) = delete;

    /// Runs an action just before the call number `call`.
    void ActAt(int call, std::function<void()> action) {
        m_iActingCall = call;
        m_action = std::move(action);
    }

    [[nodiscard]] int Calls() const { return m_iCalls; }
    /// How many files were opened for writing.
    [[nodiscard]] int OpensForWriting() const { return m_iOpensForWriting; }
    [[nodiscard]] int Renames() const { return m_iRenames; }
    /// Whether a file was renamed while its content was not synced.
    [[nodiscard]] bool WasUnsyncedRename() const { return m_bUnsyncedRename; }

private:
    struct Table;

    /// Counts a call and returns whether it fails; may reduce the number of bytes that it handles instead.
    [[nodiscard]] bool FailsNow(std::size_t* count = nullptr);

    Fault m_fault;
    int m_iFailingCall;
    int m_iActingCall = 0;
    std::function<void()> m_action;
    int m_iCalls = 0;
    int m_iOpensForWriting = 0;
    int m_iRenames = 0;
    bool m_bUnsyncedRename = false;
    /// Inode numbers of the files with content that was written but not synced.
    std::set<unsigned long> m_unsynced;
};

}  // namespace veldan::testing
