#include "storage/Utf8TextFile.h"

#include <array>
#include <utility>

namespace veldan {

namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";

}  // namespace

BOOL CUtf8TextFile::ReadString(CString& line) {
    if (GetPosition() == 0 && m_bHasBom) {
        // A mark that can't be read is no missing one: taken for text, it would hide the first header of the file.
        const std::optional<bool> isMarked = StartsWithMark();
        if (!isMarked) {
            return FALSE;
        }
        m_bHasBom = *isMarked;
        if (m_bHasBom) {
            Seek(kMark.size());
        }
    }
    CString bytes;
    if (!CStdioFile::ReadString(bytes)) {
        return FALSE;
    }
    line = Utf8ToAnsi(std::move(bytes));
    return TRUE;
}

void CUtf8TextFile::WriteString(std::string_view text) {
    if (GetPosition() == 0 && m_bHasBom) {
        Write(kMark);
    }
    CStdioFile::WriteString(AnsiToUtf8(CString(text)));
}

bool CUtf8TextFile::StartsWithMark() {
    std::array<char, kMark.size()> start = {};
    const std::size_t count = ReadHandle(0, start);
    return std::string_view(start.data(), count) == kMark;
}

}  // namespace veldan
