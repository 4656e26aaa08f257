#include "platform/core/FileCalls.h"

#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldan {

namespace {

// `openat` takes a variable number of arguments, so its address alone doesn't fit the table.
int OpenAt(int folder, const char* path, int flags, mode_t mode) {
    return ::openat(folder, path, flags, mode);
}

constexpr FileCalls kSystemCalls = {OpenAt, ::pread, ::write, ::fsync, ::fchmod, ::renameat, ::unlinkat, ::close};

const FileCalls* g_pCalls = &kSystemCalls;

}  // namespace

const FileCalls& SystemFileCalls() {
    return kSystemCalls;
}

const FileCalls& CurrentFileCalls() {
    return *g_pCalls;
}

void ReplaceFileCalls(const FileCalls* pCalls) {
    g_pCalls = pCalls ? pCalls : &kSystemCalls;
}

}  // namespace veldan
