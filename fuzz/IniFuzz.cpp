#include "platform/core/File.h"
#include "storage/IniDocument.h"

#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

/// Setting a value in a document of any bytes doesn't lose another value.
extern "C" int LLVMFuzzerTestOneInput(const char* bytes, std::size_t count) {
    static const int s_file = memfd_create("index", 0);
    if (ftruncate(s_file, 0) != 0 || pwrite(s_file, bytes, count, 0) != static_cast<ssize_t>(count)) {
        return 0;
    }
    veldan::CIniDocument document;
    document.Load(veldan::Format("/proc/self/fd/%d", s_file));
    const veldan::CString key = document.Get("Order", "0", "none");
    static_cast<void>(document.Get("Order", key, ""));
    document.SetInLines("Order", "Num", "1");
    if (document.Get("Order", "Num", "") != "1" || document.Get("Order", "0", "none") != key) {
        std::abort();
    }
    return 0;
}
