#include "support/FaultyFileCalls.h"

#include <algorithm>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldan::testing {

namespace {

// The calls are plain functions, so they find the current object here.
FaultyFileCalls* g_pFaulty = nullptr;

unsigned long NumberOf(int file, const char* path = "") {
    struct stat status = {};
    return fstatat(file, path, &status, AT_EMPTY_PATH) == 0 ? status.st_ino : 0;
}

}  // namespace

struct FaultyFileCalls::Table {
    static int OpenAt(int folder, const char* path, int flags, mode_t mode) {
        g_pFaulty->m_iOpensForWriting += (flags & O_ACCMODE) != O_RDONLY ? 1 : 0;
        return g_pFaulty->FailsNow() ? -1 : SystemFileCalls().openat(folder, path, flags, mode);
    }

    static ssize_t Pread(int file, void* bytes, size_t count, off_t offset) {
        return g_pFaulty->FailsNow(&count) ? -1 : SystemFileCalls().pread(file, bytes, count, offset);
    }

    static ssize_t Write(int file, const void* bytes, size_t count) {
        if (g_pFaulty->FailsNow(&count)) {
            return -1;
        }
        g_pFaulty->m_unsynced.insert(NumberOf(file));
        return SystemFileCalls().write(file, bytes, count);
    }

    static int Fsync(int file) {
        if (g_pFaulty->FailsNow()) {
            return -1;
        }
        g_pFaulty->m_unsynced.erase(NumberOf(file));
        return 0;
    }

    static int Fchmod(int file, mode_t mode) {
        return g_pFaulty->FailsNow() ? -1 : SystemFileCalls().fchmod(file, mode);
    }

    static int RenameAt(int fromFolder, const char* from, int toFolder, const char* to) {
        if (g_pFaulty->FailsNow()) {
            return -1;
        }
        ++g_pFaulty->m_iRenames;
        g_pFaulty->m_bUnsyncedRename |= g_pFaulty->m_unsynced.contains(NumberOf(fromFolder, from));
        return SystemFileCalls().renameat(fromFolder, from, toFolder, to);
    }

    static int UnlinkAt(int folder, const char* path, int flags) {
        return g_pFaulty->FailsNow() ? -1 : SystemFileCalls().unlinkat(folder, path, flags);
    }

    static int Close(int file) {
        // A close that fails has closed the file all the same.
        const bool bFails = g_pFaulty->FailsNow();
        const int reason = errno;
        const int result = SystemFileCalls().close(file);
        errno = reason;
        return bFails ? -1 : result;
    }

    static constexpr FileCalls kCalls = {OpenAt, Pread, Write, Fsync, Fchmod, RenameAt, UnlinkAt, Close};
};

FaultyFileCalls::FaultyFileCalls(Fault fault, int failingCall) : m_fault(fault), m_iFailingCall(failingCall) {
    g_pFaulty = this;
    ReplaceFileCalls(&Table::kCalls);
}

FaultyFileCalls::~FaultyFileCalls() {
    ReplaceFileCalls(nullptr);
    g_pFaulty = nullptr;
}

bool FaultyFileCalls::FailsNow(std::size_t* count) {
    if (++m_iCalls == m_iActingCall) {
        m_action();
    }
    if (m_iCalls != m_iFailingCall || m_fault == Fault::None) {
        return false;
    }
    if (m_fault == Fault::Short) {
        if (count) {
            *count = std::max<std::size_t>(*count / 2, 1);
        }
        return false;
    }
    if (m_fault == Fault::Killed) {
        kill(getpid(), SIGKILL);
    }
    errno = m_fault == Fault::NoSpace        ? ENOSPC
            : m_fault == Fault::InputOutput  ? EIO
            : m_fault == Fault::NoPermission ? EACCES
                                             : EINTR;
    return true;
}

}  // namespace veldan::testing
