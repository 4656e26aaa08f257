#include "storage/LineList.h"

#include <algorithm>
#include <utility>

namespace veldan {

void LineList::Clear() {
    m_before.clear();
    m_after.clear();
    m_texts.clear();
    m_nBytes = 0;
}

void LineList::Assign(CString text) {
    Clear();
    std::string_view rest = m_texts.emplace_back(std::move(text));
    m_before.reserve(static_cast<std::size_t>(std::ranges::count(rest, '\n')) + 1);
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        std::string_view line = rest.substr(0, end);
        if (end != std::string_view::npos && line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        m_before.push_back(line);
        m_nBytes += line.size();
        rest.remove_prefix(std::min(end, rest.size() - 1) + 1);
    }
}

std::string_view LineList::operator[](std::size_t line) const {
    ++m_nSteps;
    return line < m_before.size() ? m_before[line] : m_after[Size() - 1 - line];
}

void LineList::Insert(std::size_t line, std::string_view text) {
    for (; m_before.size() > line; m_before.pop_back(), ++m_nSteps) {
        m_after.push_back(m_before.back());
    }
    for (; m_before.size() < line; m_after.pop_back(), ++m_nSteps) {
        m_before.push_back(m_after.back());
    }
    m_before.push_back(Keep(text));
    m_nBytes += text.size();
}

void LineList::Replace(std::size_t line, std::string_view text) {
    std::string_view& place = line < m_before.size() ? m_before[line] : m_after[Size() - 1 - line];
    ++m_nSteps;
    m_nBytes += text.size() - place.size();
    place = Keep(text);
}

CString LineList::Text() const {
    CString text;
    text.reserve(m_nBytes + Size());
    for (std::size_t i = 0; i < Size(); ++i) {
        text.append((*this)[i]).push_back('\n');
    }
    return text;
}

}  // namespace veldan
