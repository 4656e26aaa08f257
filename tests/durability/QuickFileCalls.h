#pragma once

#include "platform/core/FileCalls.h"

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace veldan {

/// While it stands, file calls leave out the syncing, which only a loss of power would miss. It can end the process, as
/// by `kill -9`, when it is about to change the disk for the n-th time.
class QuickFileCalls {
public:
    explicit QuickFileCalls(int fatalChange = 0) {
        s_iLeft = fatalChange;
        ReplaceFileCalls(&kCalls);
    }
    ~QuickFileCalls() { ReplaceFileCalls(nullptr); }
    QuickFileCalls(const QuickFileCalls&) = delete;
    QuickFileCalls& operator=(const QuickFileCalls&) = delete;

private:
    static void BeforeChange() {
        if (s_iLeft > 0 && --s_iLeft == 0) {
            kill(getpid(), SIGKILL);
        }
    }
    static int Open(const char* path, int flags, mode_t mode) {
        if ((flags & O_CREAT) != 0) {
            BeforeChange();
        }
        return SystemFileCalls().open(path, flags, mode);
    }
    static ssize_t Pread(int file, void* bytes, size_t count, off_t offset) {
        return SystemFileCalls().pread(file, bytes, count, offset);
    }
    static ssize_t Write(int file, const void* bytes, size_t count) {
        BeforeChange();
        return SystemFileCalls().write(file, bytes, count);
    }
    static int Fsync(int /*file*/) {
        BeforeChange();
        return 0;
    }
    static int Fchmod(int file, mode_t mode) {
        BeforeChange();
        return SystemFileCalls().fchmod(file, mode);
    }
    static int Rename(const char* from, const char* to) {
        BeforeChange();
        return SystemFileCalls().rename(from, to);
    }
    static int Unlink(const char* path) {
        BeforeChange();
        return SystemFileCalls().unlink(path);
    }
    static int Close(int file) { return SystemFileCalls().close(file); }

    static constexpr FileCalls kCalls = {Open, Pread, Write, Fsync, Fchmod, Rename, Unlink, Close};
    static inline int s_iLeft = 0;
};

}  // namespace veldan
