#pragma once

#include "platform/core/Text.h"
#include "storage/Utf8TextFile.h"

#include <optional>

namespace veldan {

/// A key-value file as the list of its text lines. Every answer is that of a scan from the top: the first section of a
/// name and, in it, the first line of a key. What isn't changed is written back as it was read.
///
/// Made for one job, on one thread: `Load` or `Begin`, then `Get`, `Set`, or `SetInLines` any number of times and
/// `Save`.
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
        m_lines.clear();
        m_index.reset();
    }

    /// The value of a key, without white space at its ends, or the default. Never touches the disk.
    [[nodiscard]] CString Get(std::string_view section, std::string_view key, std::string_view defaultValue) const;

    /// Reads the file anew, changes one value and writes the file. Nothing happens to a file that is there but can't be
    /// read, since writing it would lose what it holds.
    void Set(std::string_view section, std::string_view key, std::string_view value);

    /// Changes one value in memory only.
    void SetInLines(std::string_view section, std::string_view key, std::string_view value);

    /// Writes the lines to the file, whole or not at all. False leaves the file as it was.
    BOOL Save();

    /// Whether the latest reading found a file but couldn't take it in: no permission, an error of the disk, or a size
    /// beyond all sense. Its content is unknown then, not empty.
    [[nodiscard]] bool IsUnreadable() const { return m_bUnreadable; }

private:
    /// Where the lines of one section stand, to answer without a scan. Keys are known by their hash only: what is found
    /// under it is looked at again, so that a scan gives the answer where two keys share one.
    struct SectionIndex {
        CString strName;
        /// The line of the next header, or the number of lines.
        std::size_t nEnd = 0;
        std::unordered_map<std::size_t, std::size_t> mapFirstLines;
    };

    BOOL ReadLines();
    [[nodiscard]] SectionIndex* FindSection(std::string_view section) const;
    [[nodiscard]] SectionIndex MakeIndex(std::string_view section, std::size_t header) const;
    void TakeLineIn(SectionIndex& index) const;
    [[nodiscard]] std::optional<std::size_t> FindKey(const SectionIndex& index, std::string_view key) const;

    CString m_strFile = "ini.ini";
    CUtf8TextFile m_file;
    /// Whether the latest attempt to open the file, for reading or writing, went well. `Get` answers only then.
    BOOL m_bOpened = FALSE;
    bool m_bUnreadable = false;
    CStringArray m_lines;

    /// Of the section that was asked for last.
    mutable std::optional<SectionIndex> m_index;
};

}  // namespace veldan
