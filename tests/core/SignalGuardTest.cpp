#include "platform/core/File.h"
#include "platform/core/SignalGuard.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

#include <ctime>

namespace veldan {
namespace {

void WriteToNobody() {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    EXPECT_EQ(write(ends[1], "", 1), -1);
    close(ends[1]);
}

bool IsPending(int signal) {
    sigset_t pending;
    sigpending(&pending);
    return sigismember(&pending, signal) == 1;
}

TEST(SignalGuard, CallOfADeadlySignalFailsAsAnyOther) {
    std::signal(SIGPIPE, SIG_DFL);
    {
        const SignalGuard guard(SIGPIPE);
        { const SignalGuard inner(SIGPIPE); }
        const SignalGuard other(SIGXFSZ);
        WriteToNobody();
        EXPECT_TRUE(IsPending(SIGPIPE));
    }
    EXPECT_FALSE(IsPending(SIGPIPE));
    EXPECT_EXIT(WriteToNobody(), ::testing::KilledBySignal(SIGPIPE), "") << "the host's own setting is back";
}

TEST(SignalGuard, SignalThatTheHostHoldsBackIsKept) {
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    std::raise(SIGPIPE);
    {
        const SignalGuard guard(SIGPIPE);
        WriteToNobody();
    }
    EXPECT_TRUE(IsPending(SIGPIPE));
    const timespec atOnce{};
    sigtimedwait(&pipe, nullptr, &atOnce);
    pthread_sigmask(SIG_UNBLOCK, &pipe, nullptr);
}

TEST(SignalGuard, FileThatMayNotGrowSoLargeKeepsItsOldContent) {
    const testing::TempFolder folder;
    folder.Write("a.ini", "old");
    std::signal(SIGXFSZ, SIG_DFL);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const bool isWritten = WriteFileWhole(folder / "a.ini", CString(5000, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_FALSE(isWritten);
    EXPECT_EQ(folder.Read("a.ini"), "old");
    EXPECT_EQ(folder.Names(), std::set<CString>{"a.ini"});
}

}  // namespace
}  // namespace veldan
