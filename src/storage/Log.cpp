#include "storage/Log.h"

#include "platform/core/StdioFile.h"

#include <cstdarg>
#include <cstdio>
#include <ctime>
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

[[gnu::format(printf, 2, 0)]] void FormatMessage(char (&message)[kMessageSize], const char* format,
                                                 std::va_list arguments) {
    if (std::vsnprintf(message, kMessageSize, format, arguments) < 0) {
        message[0] = '\0';
    }
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
