#include "platform/core/StdioFile.h"
#include "platform/debug/Debug.h"

#include <cstdlib>
#include <memory>

namespace veldan {

CString DescribeMessage(const MSG& message, bool sent) {
    const std::string_view name = NameOfMessage(message.message);
    const CString number = Format("0x%04x", message.message);
    return Format("%lld %s %s %u.%u 0x%llx 0x%llx", static_cast<long long>(message.time), sent ? "sent" : "queued",
                  name.empty() ? number.c_str() : CString(name).c_str(), message.hwnd.slot, message.hwnd.generation,
                  static_cast<unsigned long long>(message.wParam), static_cast<unsigned long long>(message.lParam));
}

void StartMessageSpy(Desktop& desktop) {
    static bool started = false;
    const char* path = secure_getenv("VELDAN_SPY");
    if (started || path == nullptr || *path == '\0') {
        return;
    }
    started = true;
    desktop.SetObserver([file = CString(path)](const MSG& message, bool sent) {
        CStdioFile stream;
        if (stream.Open(file, CStdioFile::modeCreate | CStdioFile::modeNoTruncate | CStdioFile::modeReadWrite)) {
            stream.WriteString(DescribeMessage(message, sent) + '\n');
            stream.Close();
        }
    });
}

}  // namespace veldan
