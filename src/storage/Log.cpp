#include "storage/Log.h"

#include "platform/core/StdioFile.h"

#include <algorithm>
#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <iterator>
#include <limits>
#include <utility>

namespace veldan {

CString LogFolder;
CString LogFileMain;
CString LogFileApi;
std::recursive_mutex* LogMutex = nullptr;

namespace {

/// Room for a message with its closing NUL. Buffers of this size lie on the stack and aren't cleared, since most
/// records are dropped.
constexpr std::size_t kMessageSize = 65536;

/// A message in the making. What doesn't fit is cut off.
class MessageText {
public:
    explicit MessageText(char (&message)[kMessageSize]) : m_pNext(message), m_pEnd(message + kMessageSize - 1) {}

    void Add(std::string_view text) {
        m_pNext = std::copy_n(text.data(), std::min(text.size(), static_cast<std::size_t>(m_pEnd - m_pNext)), m_pNext);
    }
    void Add(int number) {
        char digits[std::numeric_limits<int>::digits10 + 2];
        Add({digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr});
    }
    void Close() { *m_pNext = '\0'; }

private:
    char* m_pNext;
    char* m_pEnd;
};

/// Texts and whole numbers are all that most records hold. False, and the message of no use, where there is more to do.
[[gnu::format(printf, 2, 0)]] bool FormatSimply(char (&message)[kMessageSize], const char* format,
                                                std::va_list arguments) {
    MessageText text(message);
    for (;;) {
        const char* const directive = strchrnul(format, '%');
        text.Add({format, directive});
        if (*directive == '\0') {
            text.Close();
            return true;
        }
        if (directive[1] == 'd') {
            text.Add(va_arg(arguments, int));
        } else if (const char* const value = directive[1] == 's' ? va_arg(arguments, const char*) : nullptr) {
            text.Add(value);
        } else {
            return false;
        }
        format = directive + 2;
    }
}

/// Opening a group of a hundred profiles writes hundreds of records, mostly for nobody, so that their time counts.
[[gnu::format(printf, 2, 0)]] void FormatMessage(char (&message)[kMessageSize], const char* format,
                                                 std::va_list arguments) {
    std::va_list again;
    va_copy(again, arguments);
    if (!FormatSimply(message, format, arguments) && std::vsnprintf(message, kMessageSize, format, again) < 0) {
        message[0] = '\0';
    }
    va_end(again);
}

CString RecordHead(const char* source, std::int32_t line) {
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    localtime_r(&now, &local);
    return Format("%04d%02d%02d %02d%02d%02d:Func=%s Line=%d ", local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                  local.tm_hour, local.tm_min, local.tm_sec, source, line);
}

void AppendRecord(const LogSite& site, std::int32_t fileSelector, const char* message) {
    CStdioFile file;
    const CString path = LogFolder + '/' + (fileSelector != 0 ? LogFileApi : LogFileMain);
    if (!file.Open(path, CStdioFile::modeCreate | CStdioFile::modeNoTruncate | CStdioFile::modeReadWrite |
                             CStdioFile::shareDenyNone)) {
        return;
    }
    CString record = RecordHead(site.source, site.line);
    const CString text = message;
    record += text;
    if (!text.ends_with('\n') && !text.ends_with('\r')) {
        record += '\n';
    }
    file.SeekToEnd();
    file.WriteString(record);
    file.Close();
}

void WriteMessage(const LogSite& site, std::int32_t fileSelector, const char* message) {
    LogLock();
    AppendRecord(site, fileSelector, message);
    LogUnlock();
}

}  // namespace

void SetLogTarget(CString folder, CString fileMain, CString fileApi, std::recursive_mutex* pMutex) {
    LogFolder = std::move(folder);
    LogFileMain = std::move(fileMain);
    LogFileApi = std::move(fileApi);
    LogMutex = pMutex;
}

void LogMessage(const LogSite& site, const char* format, ...) {
    char message[kMessageSize];
    std::va_list arguments;
    va_start(arguments, format);
    FormatMessage(message, format, arguments);
    va_end(arguments);
    WriteMessage(site, 0, message);
}

void LogApiFailure(const LogSite& site, const char* format, ...) {
    char message[kMessageSize];
    std::va_list arguments;
    va_start(arguments, format);
    FormatMessage(message, format, arguments);
    va_end(arguments);
    WriteMessage(site, 1, message);
}

void WriteLogRecord(const char* source, std::int32_t line, std::int32_t fileSelector, const char* format, ...) {
    char message[kMessageSize];
    std::va_list arguments;
    va_start(arguments, format);
    FormatMessage(message, format, arguments);
    va_end(arguments);
    WriteMessage({source, line}, fileSelector, message);
}

void LogLock() {
    if (LogMutex) {
        LogMutex->lock();
    }
}

void LogUnlock() {
    if (LogMutex) {
        LogMutex->unlock();
    }
}

}  // namespace veldan
