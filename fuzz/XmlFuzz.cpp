#include "storage/XmlDocument.h"

#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

/// Any bytes give either a document that can be edited or an empty one with a reason.
extern "C" int LLVMFuzzerTestOneInput(const char* bytes, std::size_t count) {
    static const int s_file = memfd_create("profile", 0);
    if (ftruncate(s_file, 0) != 0 || pwrite(s_file, bytes, count, 0) != static_cast<ssize_t>(count)) {
        return 0;
    }
    veldan::XmlDocument document;
    const bool isGood = document.Load(veldan::Format("/proc/self/fd/%d", s_file));
    const veldan::XmlNode root = document.GetRootElement();
    if (isGood == root.IsEmpty() || isGood != document.GetFault().strWhat.empty()) {
        std::abort();
    }
    const veldan::XmlNode name = root.GetChild("ProfileName", true);
    const bool isSet = name.SetAttribute("value", "a\r\n<\"", "", "") && !root.AppendText("\r\n    ")->IsEmpty();
    if (isSet != isGood || name.GetAttribute("value", "") != (isGood ? "a\r\n<\"" : "")) {
        std::abort();
    }
    return 0;
}
