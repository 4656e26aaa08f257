#pragma once

#include "platform/core/Text.h"
#include "storage/KeyTable.h"
#include "storage/LineList.h"
#include "storage/Utf8TextFile.h"

#include <optional>

namespace veldan {

/// What a document has seen so far of the section that it was last asked about.
struct IniSectionIndex {
    CString strName;
    /// The first line that wasn't looked at; nothing where there is no such section.
    std::optional<std::size_t> nEnd;
    /// Whether the section ends there.
    bool bWhole = false;
    KeyTable firstLines;
};

/// A key-value file as the list of its text lines. Every answer is that of a scan from the top: the first section of a
/// name and, in it, the first line of a key. What isn't changed is written back as it was read.
///
/// Made for one job, on one thread: `Load` or `Begin`, then `Get`, `Set`, or `SetInLines` any number of times and
/// `Save`. Whatever the file holds, each line is looked at a few times in all of that, as long as it is about one
/// section.
class CIniDocument {
public:
    CIniDocument() = default;
    virtual ~CIniDocument() = default;
    CIniDocument(const CIniDocument&) = delete;
    CIniDocument& operator=(const CIniDocument&) = delete;

    /// Names the file and reads it. A missing or unreadable file makes every `Get` answer its default.
    void Load(const CString& path);

    /// Names the file without reading it: the document starts empty, and `Save` replaces whatever stands there. Below
    /// the root, the start of the path, no link is followed.
    void Begin(const CString& path, const CString& root = {}) {
        m_strFile = path;
        m_file.SetRoot(root);
        m_lines.Clear();
        m_index.reset();
    }

    /// The value of a key, without white space at its ends, or the default. Never touches the disk.
    [[nodiscard]] CString Get(std::string_view section, std::string_view key, std::string_view defaultValue) const;

    /// The same without a copy: the text is good until the next change, and there is none where the default is meant.
    [[nodiscard]] std::optional<std::string_view> Find(std::string_view section, std::string_view key) const;

    /// Reads the file anew, changes one value and writes the file. Nothing happens to a file that is there but can't be
    /// read, since writing it would lose what it holds.
    void Set(std::string_view section, std::string_view key, std::string_view value);

    /// Changes one value in memory only.
    void SetInLines(std::string_view section, std::string_view key, std::string_view value);

    /// Writes the lines to the file, whole or not at all. False leaves the file as it was; that comes about as well
    /// where the file would be too large to be read again.
    BOOL Save();

    /// Whether the latest reading found a file but couldn't take it in: no permission, an error of the disk, or a size
    /// beyond all sense. Its content is unknown then, not empty.
    [[nodiscard]] bool IsUnreadable() const { return m_bUnreadable; }

    /// How many bytes the lines take, as they would be written.
    [[nodiscard]] std::size_t Size() const { return m_lines.BytesOnDisk(); }

    /// How many lines and keys were looked at or moved, to see in tests how the work grows.
    [[nodiscard]] std::size_t Steps() const { return m_lines.Steps() + (m_index ? m_index->firstLines.Steps() : 0); }

private:
    BOOL ReadLines();
    [[nodiscard]] IniSectionIndex& IndexOf(std::string_view section) const;
    [[nodiscard]] std::optional<std::size_t> FindSection(std::string_view section) const;
    [[nodiscard]] KeyTable::Entry* FindKey(IniSectionIndex& index, std::string_view key) const;
    KeyTable::Entry* TakeLineIn(IniSectionIndex& index) const;

    CString m_strFile = "ini.ini";
    CUtf8TextFile m_file;
    /// Whether the latest attempt to open the file, for reading or writing, went well. `Get` answers only then.
    BOOL m_bOpened = FALSE;
    bool m_bUnreadable = false;
    LineList m_lines;

    mutable std::optional<IniSectionIndex> m_index;
};

}  // namespace veldan
