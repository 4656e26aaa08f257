#include "menu/DlgCustomMenu.h"
#include "platform/core/File.h"
#include "platform/core/FolderLock.h"
#include "platform/core/FolderSnapshot.h"
#include "platform/core/Path.h"
#include "platform/core/Utf8.h"
#include "storage/Log.h"
#include "storage/XmlEncoding.h"

#include <algorithm>

namespace veldan {
namespace {

constexpr const char* kLogSource = "DlgCustomMenu";

CString PathIn(const CString& strProfiles, std::string_view folder, std::string_view name) {
    return CString(strProfiles).append("/").append(folder).append("/").append(name);
}

/// Whether an entry's name may be copied to or deleted: a file in the group's own folder, and not its index.
bool IsEntryFile(const CString& strName) {
    return IsPlainFileName(strName) && FoldCase(strName) != FoldCase("order.ini");
}

}  // namespace

void CDlgCustomMenu::Z_RecentGetXmlPng(CString& strXml, CString& strPng, CString& strParent, int id) const {
    const MenuItem* pItem = FindLevel2Item(id);
    LogMessage({kLogSource, __LINE__}, "Z_RecentGetXmlPng strUID=%d p=%p cnt=%d", id, static_cast<const void*>(pItem),
               static_cast<int>(m_mapLevel2Items.size()));
    if (!pItem) {
        return;
    }
    strXml = pItem->m_strXml;
    strPng = pItem->m_strPng;
    if (const MenuItem* pGroup = FindLevel1Item(pItem->m_iParentID)) {
        strParent = pGroup->m_strFolder;
    }
}

/// `Profiles` itself may be reached over links, but what is written, created or deleted is below it without any: a tree
/// from elsewhere must not lead into other folders of the person's.
WriteRules CDlgCustomMenu::GroupRules() {
    return {.strRoot = ProfilesFolder()};
}

/// Copies that the index of `Recent` names go also where they are read-only.
WriteRules CDlgCustomMenu::CopyRules() {
    return {.strRoot = ProfilesFolder(), .bReadOnlyToo = true};
}

/// What an operation left that was ended halfway goes with the next one, whichever group that is about. The index of a
/// group is read only where a file of such a name lies there.
void CDlgCustomMenu::SweepGroups() {
    for (const std::string_view folder : {kUserDefineFolder, kRecentFolder}) {
        const CString strIndex = PathIn(ProfilesFolder(), folder, "order.ini");
        SweepTemporaries(PathIn(ProfilesFolder(), folder, ""), GroupRules(), [&strIndex](std::string_view name) {
            UserDefineList named;
            return !named.Load(strIndex) || named.NamesFile(name);
        });
    }
}

bool CDlgCustomMenu::LoadRecentList(const CString& path) {
    m_recent.m_iMaxCount = 10;
    const bool isKnown = m_recent.Load(path);
    m_recent.m_iCount = m_recent.Size();
    return isKnown;
}

bool CDlgCustomMenu::SaveRecentList(const CString& path) {
    return m_recent.Save(path, ProfilesFolder());
}

void CDlgCustomMenu::AddRecent(int id) {
    const CString strFolder = PathIn(ProfilesFolder(), kRecentFolder, "");
    const FolderLock lock(strFolder, GroupRules());
    SweepGroups();
    if (!FindLevel2Item(id) || !LoadRecentList(strFolder + "order.ini")) {
        return;
    }
    CString strXml;
    CString strPng;
    CString strParent;
    Z_RecentGetXmlPng(strXml, strPng, strParent, id);
    LogMessage({kLogSource, __LINE__}, "Z_RecentAdd xml=%s png=%s parent=%s id=%d", strXml.c_str(), strPng.c_str(),
               strParent.c_str(), id);
    if (m_recent.HasXml(strXml)) {
        return;
    }
    // A row of `Recent` that its index doesn't name is one that another host has taken out.
    if (!IsInRecent(strParent, strXml)) {
        EnterRecent(strParent, strXml, strPng);
    }
    RebuildGroup(GetRecentGroupID(), kRecentFolder);
}

/// Whether a profile is one of `Recent` already, by whatever spelling or link its group's folder or its file leads
/// there.
bool CDlgCustomMenu::IsInRecent(const CString& strParent, const CString& strXml) {
    const CString strFolder = PathIn(ProfilesFolder(), strParent, "");
    const CString strRecent = PathIn(ProfilesFolder(), kRecentFolder, "");
    return strParent == kRecentFolder || IsSameFile(strFolder, strRecent) ||
           (IsEntryFile(strXml) && IsSameFile(strFolder + strXml, strRecent + strXml));
}

/// Copies stand before the index names them, and files go after it stopped naming them; so whatever ends the process,
/// everything that the index names is there.
void CDlgCustomMenu::EnterRecent(const CString& strParent, const CString& strXml, CString strPng) {
    if (!CopyIntoRecent(strParent, strXml, kMostXmlBytes)) {
        return;
    }
    if (FoldCase(strPng) != FoldCase(strXml) && !CopyIntoRecent(strParent, strPng, Image::kLargestFile)) {
        strPng.clear();
    }
    LogMessage({kLogSource, __LINE__}, "AddRecent=%d", m_recent.Size() + kFirstRecentID);
    m_recent.Append(strXml, strPng);
    const bool isFull = m_recent.m_iCount >= m_recent.m_iMaxCount;
    const CString strOldXml = m_recent.m_arrXml.front();
    const CString strOldPng = m_recent.m_arrPng.front();
    if (isFull) {
        m_recent.RemoveAt(0);
    }
    m_recent.m_iCount = m_recent.Size();
    const CString strIndex = PathIn(ProfilesFolder(), kRecentFolder, "order.ini");
    if (!SaveRecentList(strIndex)) {
        // The list stands as before, and the copies go.
        if (LoadRecentList(strIndex)) {
            DeleteUnnamed(m_recent, kRecentFolder, strXml, GroupRules());
            DeleteUnnamed(m_recent, kRecentFolder, strPng, GroupRules());
        }
    } else if (isFull) {
        DeleteUnnamed(m_recent, kRecentFolder, strOldXml, CopyRules());
        DeleteUnnamed(m_recent, kRecentFolder, strOldPng, CopyRules());
    }
}

/// Whether the list may name the copy. It may too where there is nothing to copy, since an entry without its files is
/// one all the same, but not where another file would be taken for the copy.
bool CDlgCustomMenu::CopyIntoRecent(const CString& strParent, const CString& strName, std::int64_t limit) {
    if (!IsEntryFile(strName)) {
        return true;
    }
    const CString strSource = PathIn(ProfilesFolder(), strParent, strName);
    const CString strTarget = PathIn(ProfilesFolder(), kRecentFolder, strName);
    const CopyResult result =
        CopyFile(strSource, strTarget, limit, m_recent.NamesFile(strName) ? CopyRules() : GroupRules());
    if (result == CopyResult::NoSource) {
        DeleteUnnamed(m_recent, kRecentFolder, strName, GroupRules());
        return !PathExists(strTarget, false);
    }
    return result == CopyResult::Copied;
}

/// Deletes a file of a group unless an entry still names it.
void CDlgCustomMenu::DeleteUnnamed(const ProfileList& list, std::string_view folder, const CString& strName,
                                   const WriteRules& rules) {
    if (IsEntryFile(strName) && !list.NamesFile(strName)) {
        DeleteFile(PathIn(ProfilesFolder(), folder, strName), rules);
    }
}

void CDlgCustomMenu::DeleteRecent(int id) {
    const CString strFolder = PathIn(ProfilesFolder(), kRecentFolder, "");
    const FolderLock lock(strFolder, GroupRules());
    SweepGroups();
    if (!LoadRecentList(strFolder + "order.ini")) {
        return;
    }
    CString strXml;
    CString strPng;
    CString strParent;
    Z_RecentGetXmlPng(strXml, strPng, strParent, id);
    const std::optional<std::size_t> index = m_recent.IndexOfID(static_cast<UINT>(id));
    // The file may have changed since the rows were made; files go only where both tell of the same entry.
    bool isSame = false;
    if (index) {
        isSame =
            strParent == kRecentFolder && m_recent.m_arrXml[*index] == strXml && m_recent.m_arrPng[*index] == strPng;
        m_recent.RemoveAt(*index);
        m_recent.m_iCount = m_recent.Size();
        isSame = SaveRecentList(strFolder + "order.ini") && isSame;
    }
    RebuildGroup(GetRecentGroupID(), kRecentFolder);
    if (isSame) {
        DeleteUnnamed(m_recent, kRecentFolder, strXml, CopyRules());
        DeleteUnnamed(m_recent, kRecentFolder, strPng, CopyRules());
    }
    LogMessage({kLogSource, __LINE__}, "DeleteRecent=%d", id);
}

/// Makes the rows of a group that was rewritten, at the place that it is scrolled to as far as that still exists.
void CDlgCustomMenu::RebuildGroup(int groupID, std::string_view folder) {
    const FolderSnapshot snapshot;
    ClearGroupItems(groupID);
    MenuItem* pGroup = FindLevel1Item(groupID);
    if (!pGroup) {
        return;
    }
    LoadLevel2(pGroup, CString(ProfilesFolder()).append("/").append(folder));
    const int lowest = std::min(0, VisibleRowsOf(groupID) - pGroup->m_iMenuNum);
    pGroup->m_iMenuCurSelectedPos = std::clamp(pGroup->m_iMenuCurSelectedPos, lowest, 0);
    PlaceRows(*pGroup);
}

}  // namespace veldan
