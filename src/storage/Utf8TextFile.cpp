#include "storage/Utf8TextFile.h"

#include <array>
#include <utility>

namespace veldan {

namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";

}  // namespace

BOOL CUtf8TextFile::ReadString(CString& line) {
    CString bytes;
    if (!SkipMark() || !CStdioFile::ReadString(bytes)) {
        return FALSE;
    }
    line = Utf8ToAnsi(std::move(bytes));
    return TRUE;
}

BOOL CUtf8TextFile::ReadRest(CString& text) {
    CString bytes;
    if (!SkipMark() || !ReadBytes(bytes)) {
        return FALSE;
    }
    text = Utf8ToAnsi(std::move(bytes));
    return TRUE;
}

void CUtf8TextFile::WriteString(std::string_view text) {
    if (GetPosition() == 0 && m_bHasBom) {
        Write(kMark);
    }
    CStdioFile::WriteString(AnsiToUtf8(CString(text)));
}

/// A mark that can't be read is no missing one: taken for text, it would hide the first header of the file.
bool CUtf8TextFile::SkipMark() {
    if (GetPosition() != 0 || !m_bHasBom) {
        return true;
    }
    std::array<char, kMark.size()> start = {};
    const std::optional<std::size_t> count = ReadHandle(0, start);
    if (!count) {
        return false;
    }
    m_bHasBom = std::string_view(start.data(), *count) == kMark;
    if (m_bHasBom) {
        Seek(kMark.size());
    }
    return true;
}

}  // namespace veldan
