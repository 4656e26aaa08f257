#include "storage/IniDocument.h"

#include "platform/core/File.h"

#include <utility>

namespace veldan {

namespace {

/// Far more than the longest list takes, and little enough for any content to fit into memory line by line.
constexpr std::size_t kMaxFileSize = std::size_t{4} * 1024 * 1024;

bool IsHeader(std::string_view line) {
    return TrimLeft(line).starts_with('[');
}

/// A line that can hold a key: not blank, no comment and no header.
bool IsKeyLine(std::string_view line) {
    const std::string_view text = TrimLeft(line);
    return !text.empty() && text.front() != ';' && text.front() != '[';
}

std::string_view SectionOf(std::string_view header) {
    const std::string_view name = header.substr(header.find('[') + 1);
    const std::size_t end = name.find(']');
    return end == std::string_view::npos ? std::string_view() : Trim(name.substr(0, end));
}

std::string_view KeyOf(std::string_view line) {
    const std::size_t end = line.find('=');
    return end == std::string_view::npos ? std::string_view() : Trim(line.substr(0, end));
}

std::string_view ValueOf(std::string_view line) {
    const std::size_t end = line.find('=');
    return end == std::string_view::npos ? std::string_view() : Trim(line.substr(end + 1));
}

CString KeyLine(std::string_view key, std::string_view value) {
    return CString(key).append("=").append(value);
}

}  // namespace

void CIniDocument::Load(const CString& path) {
    m_strFile = path;
    ReadLines();
}

BOOL CIniDocument::ReadLines() {
    m_bOpened = m_file.Open(m_strFile, CStdioFile::modeRead);
    m_bUnreadable = !m_bOpened && PathExists(m_strFile, false);
    if (!m_bOpened) {
        return FALSE;
    }
    CString text;
    m_bUnreadable = std::cmp_greater(m_file.GetLength(), kMaxFileSize) || !m_file.ReadRest(text);
    m_bUnreadable = !m_file.Close() || m_bUnreadable;
    m_bOpened = !m_bUnreadable;
    if (m_bOpened) {
        m_lines.Assign(std::move(text));
        m_index.reset();
    }
    return m_bOpened;
}

CString CIniDocument::Get(std::string_view section, std::string_view key, std::string_view defaultValue) const {
    return CString(Find(section, key).value_or(defaultValue));
}

std::optional<std::string_view> CIniDocument::Find(std::string_view section, std::string_view key) const {
    const KeyTable::Entry* pLine = m_bOpened ? FindKey(IndexOf(section), key) : nullptr;
    return pLine ? std::optional(pLine->value) : std::nullopt;
}

void CIniDocument::Set(std::string_view section, std::string_view key, std::string_view value) {
    ReadLines();
    if (m_bUnreadable) {
        return;
    }
    SetInLines(section, key, value);
    Save();
}

void CIniDocument::SetInLines(std::string_view section, std::string_view key, std::string_view value) {
    if (m_lines.BytesOnDisk() > kMaxFileSize) {
        return;
    }
    IniSectionIndex& index = IndexOf(section);
    const CString line = KeyLine(key, value);
    if (KeyTable::Entry* pLine = FindKey(index, key)) {
        m_lines.Replace(pLine->nLine, line);
        pLine->value = ValueOf(m_lines[pLine->nLine]);
    } else if (index.nEnd) {
        m_lines.Insert(*index.nEnd, line);
        // A key that reads as a header ends the section right before it.
        if (!IsHeader(line)) {
            TakeLineIn(index);
        }
    } else {
        m_lines.Append(CString("[").append(section).append("]"));
        m_lines.Append(line);
        m_index.reset();
    }
}

BOOL CIniDocument::Save() {
    m_bOpened =
        m_lines.BytesOnDisk() <= kMaxFileSize && m_file.Open(m_strFile, CStdioFile::modeCreate | CStdioFile::modeWrite);
    if (!m_bOpened) {
        return FALSE;
    }
    if (m_lines.Size() > 0) {
        m_file.WriteString(m_lines.Text());
    }
    m_bOpened = m_file.Close();
    return m_bOpened;
}

IniSectionIndex& CIniDocument::IndexOf(std::string_view section) const {
    if (!m_index || m_index->strName != section) {
        m_index.emplace();
        m_index->strName = section;
        m_index->nEnd = FindSection(section);
        m_index->bWhole = !m_index->nEnd;
    }
    return *m_index;
}

/// The first line after the header.
std::optional<std::size_t> CIniDocument::FindSection(std::string_view section) const {
    for (std::size_t i = 0; i < m_lines.Size(); ++i) {
        if (const std::string_view line = m_lines[i]; IsHeader(line) && SectionOf(line) == section) {
            return i + 1;
        }
    }
    return std::nullopt;
}

/// Reads on in the section no further than it takes, since the first lines of a long one may be all that is wanted.
KeyTable::Entry* CIniDocument::FindKey(IniSectionIndex& index, std::string_view key) const {
    if (KeyTable::Entry* pKnown = index.firstLines.Find(key)) {
        return pKnown;
    }
    while (!index.bWhole) {
        if (index.nEnd == m_lines.Size() || IsHeader(m_lines[*index.nEnd])) {
            index.bWhole = true;
        } else if (KeyTable::Entry* pLine = TakeLineIn(index); pLine && pLine->key == key) {
            return pLine;
        }
    }
    return nullptr;
}

/// Null where the line has no key; otherwise the first line of its key.
KeyTable::Entry* CIniDocument::TakeLineIn(IniSectionIndex& index) const {
    const std::size_t number = (*index.nEnd)++;
    const std::string_view line = m_lines[number];
    return IsKeyLine(line) ? index.firstLines.Add({KeyOf(line), ValueOf(line), number}) : nullptr;
}

}  // namespace veldan
