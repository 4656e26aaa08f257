#include "menu/DlgCustomMenu.h"
#include "platform/core/File.h"
#include "platform/core/FolderLock.h"
#include "storage/Log.h"

namespace veldan {
namespace {

constexpr const char* kLogSource = "DlgCustomMenu";
constexpr const char* kStockIcon = "large_Default.png";
constexpr const char* kSharedIcon = "large_DefaultN.png";

CString IndexOf(const CString& strFolder) {
    return strFolder + "order.ini";
}

}  // namespace

bool CDlgCustomMenu::LoadUserDefineList(const CString& path) {
    return m_userDefine.Load(path);
}

bool CDlgCustomMenu::SaveUserDefineList(const CString& path) {
    return m_userDefine.Save(path, ProfilesFolder());
}

void CDlgCustomMenu::AddUserDefine(const CString& strXml) {
    const CString strFolder = ProfilesFolder().append(kUserDefineFolder).append("/");
    const FolderLock lock(strFolder, GroupRules());
    SweepGroups();
    const bool isKnown = LoadUserDefineList(IndexOf(strFolder));
    CopyFile(strFolder + kStockIcon, strFolder + kSharedIcon, Image::kLargestFile, GroupRules());
    if (!isKnown || m_userDefine.HasXml(strXml)) {
        return;
    }
    LogMessage({kLogSource, __LINE__}, "AddUserDefine=%d", m_userDefine.Size() + kFirstUserDefineID);
    m_userDefine.Append(strXml, kSharedIcon);
    SaveUserDefineList(IndexOf(strFolder));
    RebuildGroup(GetUserDefineGroupID(), kUserDefineFolder);
}

void CDlgCustomMenu::DeleteUserDefine(int id) {
    const CString strFolder = ProfilesFolder().append(kUserDefineFolder).append("/");
    const CString strRecent = ProfilesFolder().append(kRecentFolder).append("/");
    const FolderLock lock(strFolder, GroupRules());
    const FolderLock recentLock(strRecent, GroupRules());
    SweepGroups();
    if (!LoadUserDefineList(IndexOf(strFolder))) {
        return;
    }
    CString strXml;
    CString strPng;
    CString strParent;
    Z_RecentGetXmlPng(strXml, strPng, strParent, id);
    const std::optional<std::size_t> index = m_userDefine.IndexOfID(static_cast<UINT>(id));
    if (!index) {
        return;
    }
    // The file may have changed since the rows were made; files go only where both tell of the same entry.
    const CString strEntry = m_userDefine.m_arrXml[*index];
    const bool isSame = strParent == kUserDefineFolder && strEntry == strXml && m_userDefine.m_arrPng[*index] == strPng;
    m_userDefine.RemoveAt(*index);
    if (!SaveUserDefineList(IndexOf(strFolder))) {
        // The entry stands as before, on the disk and in memory.
        LoadUserDefineList(IndexOf(strFolder));
        return;
    }
    LoadRecentList(IndexOf(strRecent));
    for (const UINT recentID : m_recent.IDsOfXml(strEntry)) {
        DeleteRecent(static_cast<int>(recentID));
    }
    RebuildGroup(GetUserDefineGroupID(), kUserDefineFolder);
    if (isSame) {
        DeleteUnnamed(m_userDefine, kUserDefineFolder, strXml, GroupRules());
        if (strPng != kStockIcon) {
            DeleteUnnamed(m_userDefine, kUserDefineFolder, strPng, GroupRules());
        }
    }
}

/// Ids are taken from the highest down, since those behind an entry that goes fall by one.
int CDlgCustomMenu::RemoveProfileByFile(const CString& path) {
    const CString strName = FileNameOfPath(path);
    const CString strFolder = ProfilesFolder().append(kUserDefineFolder).append("/");
    const CString strRecent = ProfilesFolder().append(kRecentFolder).append("/");
    const FolderLock lock(strFolder, GroupRules());
    const FolderLock recentLock(strRecent, GroupRules());
    SweepGroups();
    LoadUserDefineList(IndexOf(strFolder));
    for (const UINT id : m_userDefine.IDsOfXml(strName)) {
        DeleteUserDefine(static_cast<int>(id));
    }
    LoadRecentList(IndexOf(strRecent));
    for (const UINT id : m_recent.IDsOfXml(strName)) {
        DeleteRecent(static_cast<int>(id));
    }
    return 1;
}

}  // namespace veldan
