#pragma once

#include "platform/core/Text.h"

#include <deque>

namespace veldan {

/// The lines of a text, without their ends. A line can be inserted anywhere, which costs next to nothing where the one
/// before was inserted. What a line was stays in memory as long as the list, so that texts that it gave out stay good.
class LineList {
public:
    LineList() = default;
    LineList(const LineList&) = delete;
    LineList& operator=(const LineList&) = delete;

    void Clear();

    /// Takes the place of all lines. They end in LF or CR LF; the last one may go without.
    void Assign(CString text);

    [[nodiscard]] std::size_t Size() const { return m_before.size() + m_after.size(); }
    [[nodiscard]] std::string_view operator[](std::size_t line) const;

    void Insert(std::size_t line, std::string_view text);
    void Append(std::string_view text) { Insert(Size(), text); }
    void Replace(std::size_t line, std::string_view text);

    /// All lines, each followed by a line feed.
    [[nodiscard]] CString Text() const;

    /// How many bytes the lines have, with two for the end of each.
    [[nodiscard]] std::size_t BytesOnDisk() const { return m_nBytes + 2 * Size(); }

    /// How many lines were handed out or moved so far.
    [[nodiscard]] std::size_t Steps() const { return m_nSteps; }

private:
    [[nodiscard]] std::string_view Keep(std::string_view text) { return m_texts.emplace_back(text); }

    std::deque<CString> m_texts;
    /// The lines up to the place of the last insertion, and those after it, the last one first.
    std::vector<std::string_view> m_before;
    std::vector<std::string_view> m_after;
    std::size_t m_nBytes = 0;
    mutable std::size_t m_nSteps = 0;
};

}  // namespace veldan
