#pragma once

#include "platform/core/Text.h"

#include <cstdint>
#include <mutex>

namespace veldan {

/// A place in the code that writes trace records.
struct LogSite {
    /// Name of the source file, without its extension.
    const char* source;
    std::int32_t line;
};

/// Where records go: a folder and the file names for ordinary records and for failed calls of the platform. While they
/// are empty every record is formatted, tried and dropped.
extern CString LogFolder;
extern CString LogFileMain;
extern CString LogFileApi;

/// Held while a record is written, if there is one.
extern std::recursive_mutex* LogMutex;

/// Gives the log a place on the disk, or takes it away by empty names. The mutex stays with the caller and may be null.
void SetLogTarget(CString folder, CString fileMain, CString fileApi, std::recursive_mutex* pMutex);

/// Writes an ordinary record, in the manner of `printf`. A record that can't be written is dropped; texts are cut at
/// 65,535 bytes.
[[gnu::format(printf, 2, 3)]] void LogMessage(const LogSite& site, const char* format, ...);

/// The same into the file for failed calls of the platform.
[[gnu::format(printf, 2, 3)]] void LogApiFailure(const LogSite& site, const char* format, ...);

/// Appends one line, made of date, time, place and message, to the file that `fileSelector` tells: 0 for the main one.
[[gnu::format(printf, 4, 5)]] void WriteLogRecord(const char* source, std::int32_t line, std::int32_t fileSelector,
                                                  const char* format, ...);

/// Take and give back the mutex; without one they do nothing.
void LogLock();
void LogUnlock();

}  // namespace veldan
