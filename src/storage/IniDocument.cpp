#include "storage/IniDocument.h"

#include "platform/core/File.h"

#include <functional>
#include <utility>

namespace veldan {

namespace {

/// Far more than the longest list takes, and little enough for any content to fit into memory line by line.
constexpr std::int64_t kMaxFileSize = 4LL * 1024 * 1024;

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

std::size_t HashOf(std::string_view key) {
    return std::hash<std::string_view>()(key);
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
    CStringArray lines;
    m_bUnreadable = m_file.GetLength() > kMaxFileSize;
    for (CString line; !m_bUnreadable && m_file.ReadString(line);) {
        lines.push_back(std::move(line));
    }
    m_bUnreadable = !m_file.Close() || m_bUnreadable;
    m_bOpened = !m_bUnreadable;
    if (m_bOpened) {
        m_lines = std::move(lines);
        m_index.reset();
    }
    return m_bOpened;
}

CString CIniDocument::Get(std::string_view section, std::string_view key, std::string_view defaultValue) const {
    const SectionIndex* pIndex = m_bOpened ? FindSection(section) : nullptr;
    const std::optional<std::size_t> line = pIndex ? FindKey(*pIndex, key) : std::nullopt;
    return CString(line ? ValueOf(m_lines[*line]) : defaultValue);
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
    SectionIndex* pIndex = FindSection(section);
    if (!pIndex) {
        m_lines.push_back(CString("[").append(section).append("]"));
        m_lines.push_back(KeyLine(key, value));
        return;
    }
    if (const std::optional<std::size_t> line = FindKey(*pIndex, key)) {
        m_lines[*line] = KeyLine(key, value);
        return;
    }
    const auto end = m_lines.begin() + static_cast<std::ptrdiff_t>(pIndex->nEnd);
    if (IsHeader(*m_lines.insert(end, KeyLine(key, value)))) {
        // The key itself reads as a header and cuts the section short.
        m_index.reset();
    } else {
        TakeLineIn(*pIndex);
    }
}

BOOL CIniDocument::Save() {
    m_bOpened = m_file.Open(m_strFile, CStdioFile::modeCreate | CStdioFile::modeWrite);
    if (!m_bOpened) {
        return FALSE;
    }
    for (const CString& line : m_lines) {
        m_file.WriteString(line);
        m_file.WriteString("\n");
    }
    m_bOpened = m_file.Close();
    return m_bOpened;
}

CIniDocument::SectionIndex* CIniDocument::FindSection(std::string_view section) const {
    if (m_index && m_index->strName == section) {
        return &*m_index;
    }
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        if (IsHeader(m_lines[i]) && SectionOf(m_lines[i]) == section) {
            return &m_index.emplace(MakeIndex(section, i));
        }
    }
    return nullptr;
}

CIniDocument::SectionIndex CIniDocument::MakeIndex(std::string_view section, std::size_t header) const {
    SectionIndex index = {CString(section), header + 1, {}};
    while (index.nEnd < m_lines.size() && !IsHeader(m_lines[index.nEnd])) {
        TakeLineIn(index);
    }
    return index;
}

void CIniDocument::TakeLineIn(SectionIndex& index) const {
    const CString& line = m_lines[index.nEnd];
    if (IsKeyLine(line)) {
        index.mapFirstLines.try_emplace(HashOf(KeyOf(line)), index.nEnd);
    }
    ++index.nEnd;
}

std::optional<std::size_t> CIniDocument::FindKey(const SectionIndex& index, std::string_view key) const {
    const auto first = index.mapFirstLines.find(HashOf(key));
    if (first == index.mapFirstLines.end()) {
        return std::nullopt;
    }
    // Normally the first line tried is the one.
    for (std::size_t i = first->second; i < index.nEnd; ++i) {
        if (IsKeyLine(m_lines[i]) && KeyOf(m_lines[i]) == key) {
            return i;
        }
    }
    return std::nullopt;
}

}  // namespace veldan
