#include "menu/ProfileLists.h"

#include "menu/MenuIds.h"
#include "platform/core/Utf8.h"
#include "storage/IniDocument.h"

#include <algorithm>

namespace veldan {
namespace {

constexpr std::string_view kSection = "Order";

/// An index may claim any number of entries. So many are looked up, and so many blank ones at the end are kept.
constexpr int kMostLookups = 1'000'000;
constexpr std::size_t kMostBlankEntries = 9'999;

/// All entries of an index may share the one name of an icon, which may be megabytes long.
constexpr std::size_t kMostIconNameBytes = std::size_t{16} * 1024 * 1024;

/// Whether a name is also one of the keys that make up a list of so many entries.
bool IsListKey(std::string_view name, int count) {
    const std::string_view key = Trim(name);
    const int number = Atoi(key);
    return key == "Num" || (number >= 0 && number < count && key == std::to_string(number));
}

}  // namespace

void ProfileList::Clear() {
    m_arrIDs.clear();
    m_arrXml.clear();
    m_arrPng.clear();
}

bool ProfileList::Load(const CString& path) {
    Clear();
    CIniDocument index;
    index.Load(path);
    const int count = std::min(Atoi(index.Get(kSection, "Num", "")), kMostLookups);
    std::size_t used = 0;
    for (int i = 0; i < count; ++i) {
        CString strXml = index.Get(kSection, std::to_string(i), "");
        used = strXml.empty() ? used : m_arrXml.size() + 1;
        m_arrXml.push_back(std::move(strXml));
    }
    m_arrXml.resize(std::min(m_arrXml.size(), std::max(used, kMostBlankEntries)));
    std::size_t iconNameBytes = 0;
    for (const CString& strXml : m_arrXml) {
        const std::string_view png = index.Find(kSection, strXml).value_or("");
        iconNameBytes += png.size();
        if (iconNameBytes > kMostIconNameBytes) {
            Clear();
            return false;
        }
        m_arrIDs.push_back(m_nFirstID + static_cast<UINT>(m_arrPng.size()));
        m_arrPng.emplace_back(png);
    }
    return !index.IsUnreadable();
}

bool ProfileList::Save(const CString& path, const CString& root) const {
    CIniDocument index;
    index.Begin(path, root);
    index.SetInLines(kSection, "Num", Format("%d", Size()));
    for (std::size_t i = 0; i < m_arrXml.size(); ++i) {
        index.SetInLines(kSection, std::to_string(i), m_arrXml[i]);
        // An entry of such a name goes without its icon, or it would take another one's place or the number of all.
        if (!IsListKey(m_arrXml[i], Size())) {
            index.SetInLines(kSection, m_arrXml[i], m_arrPng[i]);
        }
    }
    return index.Save() != FALSE;
}

void ProfileList::Append(const CString& strXml, const CString& strPng) {
    m_arrIDs.push_back(m_nFirstID + static_cast<UINT>(m_arrXml.size()));
    m_arrXml.push_back(strXml);
    m_arrPng.push_back(strPng);
}

void ProfileList::RemoveAt(std::size_t index) {
    const auto offset = static_cast<std::ptrdiff_t>(index);
    m_arrXml.erase(m_arrXml.begin() + offset);
    m_arrPng.erase(m_arrPng.begin() + offset);
    // An id is the first one plus the place, so it is the last that goes.
    m_arrIDs.pop_back();
}

std::optional<std::size_t> ProfileList::IndexOfID(UINT id) const {
    const auto found = std::ranges::find(m_arrIDs, id);
    return found == m_arrIDs.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - m_arrIDs.begin()));
}

bool ProfileList::HasXml(std::string_view xml) const {
    return std::ranges::find(m_arrXml, xml) != m_arrXml.end();
}

CUIntArray ProfileList::IDsOfXml(std::string_view xml) const {
    CUIntArray ids;
    for (std::size_t i = m_arrXml.size(); i-- > 0;) {
        if (m_arrXml[i] == xml) {
            ids.push_back(m_arrIDs[i]);
        }
    }
    return ids;
}

bool ProfileList::NamesFile(std::string_view name) const {
    const CString folded = FoldCase(name);
    const auto isSame = [&](const CString& other) { return FoldCase(other) == folded; };
    return std::ranges::any_of(m_arrXml, isSame) || std::ranges::any_of(m_arrPng, isSame);
}

RecentList::RecentList() : ProfileList(kFirstRecentID) {}

UserDefineList::UserDefineList() : ProfileList(kFirstUserDefineID) {}

}  // namespace veldan
