#pragma once

#include "platform/core/StdioFile.h"

namespace veldan {

/// The process's code page is UTF-8, so text and file have the same bytes, also those that aren't valid.
[[nodiscard]] inline CString AnsiToUtf8(CString bytes) {
    return bytes;
}
[[nodiscard]] inline CString Utf8ToAnsi(CString bytes) {
    return bytes;
}

/// A text file that is UTF-8 on the disk, with the byte-order mark EF BB BF at its start unless a reading found none.
/// The object remembers that over any number of openings, so it serves one file only.
class CUtf8TextFile : public CStdioFile {
public:
    [[nodiscard]] BOOL ReadString(CString& line) override;
    void WriteString(std::string_view text) override;

    /// All that is left to read, with the line ends that it has. False if reading failed.
    [[nodiscard]] BOOL ReadRest(CString& text);

private:
    [[nodiscard]] bool SkipMark();

    /// Whether the file has the mark, or is to get it with the first text. Nothing sets it again once it is cleared.
    BOOL m_bHasBom = TRUE;
};

}  // namespace veldan
