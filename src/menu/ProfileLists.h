#pragma once

#include "platform/core/Text.h"

#include <optional>

namespace veldan {

/// Working copy of a group's index: the entries' files, with the ids that their rows have. The file is the truth; every
/// operation reads it first and writes it anew at its end.
struct ProfileList {
    explicit ProfileList(UINT firstID) : m_nFirstID(firstID) {}

    /// Replaces the entries by those of an index; none where there is no such file. False, and no entries, where there
    /// is one that can't be read or holds too much: its content must not be written over.
    bool Load(const CString& path);
    /// Replaces the index, whole or not at all. Whatever else the old file held is gone. Below the root, the start of
    /// the path, no link is followed.
    [[nodiscard]] bool Save(const CString& path, const CString& root) const;

    void Clear();
    [[nodiscard]] int Size() const { return static_cast<int>(m_arrXml.size()); }
    void Append(const CString& strXml, const CString& strPng);
    /// The ids of the entries behind it fall by one.
    void RemoveAt(std::size_t index);
    [[nodiscard]] std::optional<std::size_t> IndexOfID(UINT id) const;
    /// Whether an entry has this profile, letter by letter.
    [[nodiscard]] bool HasXml(std::string_view xml) const;
    /// The ids of all entries with this profile, the highest first.
    [[nodiscard]] CUIntArray IDsOfXml(std::string_view xml) const;
    /// Whether an entry names this file as its profile or icon. Names that differ only in case mean one file.
    [[nodiscard]] bool NamesFile(std::string_view name) const;

    CUIntArray m_arrIDs;
    CStringArray m_arrXml;
    CStringArray m_arrPng;

private:
    UINT m_nFirstID;
};

/// The last profiles picked, the oldest first.
struct RecentList : ProfileList {
    RecentList();

    int m_iCount = 0;  ///< Number of entries.
    int m_iMaxCount = 10;
};

/// The profiles that the user made.
struct UserDefineList : ProfileList {
    UserDefineList();
};

}  // namespace veldan
