#include "menu/DlgCustomMenu.h"
#include "platform/core/File.h"
#include "platform/core/FolderSnapshot.h"
#include "platform/core/Path.h"
#include "platform/core/ReadAhead.h"
#include "profile/ProfileText.h"
#include "resources/Dialogs.h"
#include "storage/IniDocument.h"
#include "storage/Log.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace veldan {
namespace {

constexpr const char* kLogSource = "DlgCustomMenu";
constexpr std::string_view kSection = "Order";

/// One byte more than an icon may have tells that a file is none.
constexpr std::int64_t kMostIconFileBytes = Image::kLargestFile + 1;

/// A menu's icons take a few megabytes. What goes far beyond is no icon.
constexpr std::size_t kMostIconBytes = std::size_t{96} * 1024 * 1024;

/// No file has a longer name, and all rows of an index may share one that is megabytes long.
constexpr std::size_t kLongestName = 4096;

CString KeyOf(int id) {
    return std::to_string(id);
}

MenuItem* Find(const MenuItemMap& items, int id) {
    const auto found = items.find(KeyOf(id));
    return found == items.end() ? nullptr : found->second.get();
}

int CountIn(const CIniDocument& index, int most) {
    return std::clamp(Atoi(index.Get(kSection, "Num", "")), 0, std::max(most, 0));
}

/// A name that leads out of its folder reads as one of a missing file. The empty one is the folder itself.
bool StaysInFolder(const CString& strName) {
    return strName.empty() || IsPlainFileName(strName);
}

/// Empty, which is the path of no file, for a name that can't be one in the folder.
CString PathIn(const CString& strFolder, const CString& strName) {
    return IsPlainFileName(strName) ? strFolder + "/" + strName : CString();
}

/// Texts that have no icon file get a picture all the same. What has no texts stays blank.
void ShowNeutralIcon(CGPMenuButton& button) {
    if (!button.HasImage() && (!button.GetCaption().empty() || !button.GetDescription().empty())) {
        button.LoadImageResource(button.GetKind() == 1 ? kNeutralRowIconId : kNeutralGroupIconId, "PNG");
    }
}

}  // namespace

BOOL CDlgCustomMenu::ReloadCatalogue() {
    m_iNextLevel2ID = kFirstItemID;
    FreeAllItems();
    LoadLevel1();
    return TRUE;
}

void CDlgCustomMenu::FreeAllItems() {
    // The maps are empty before the first button goes: its window's last messages may ask for entries.
    std::exchange(m_mapLevel2Items, {}).clear();
    std::exchange(m_mapLevel1Items, {}).clear();
    m_nIconBytes = 0;
}

MenuItem* CDlgCustomMenu::FindLevel1Item(int id) const {
    return Find(m_mapLevel1Items, id);
}

MenuItem* CDlgCustomMenu::FindLevel2Item(int id) const {
    return Find(m_mapLevel2Items, id);
}

MenuItem* CDlgCustomMenu::FindParentItem(int id) const {
    const MenuItem* pItem = FindLevel2Item(id);
    return pItem ? pItem->m_pParent : nullptr;
}

int CDlgCustomMenu::GetUserDefineGroupID() const {
    static int cachedID = -1;
    if (cachedID == -1) {
        cachedID = LowestGroupID(kUserDefineFolder);
    }
    return cachedID;
}

int CDlgCustomMenu::GetRecentGroupID() const {
    static int cachedID = -1;
    if (cachedID == -1) {
        cachedID = LowestGroupID(kRecentFolder);
    }
    return cachedID;
}

int CDlgCustomMenu::LowestGroupID(std::string_view folder) const {
    int lowest = -1;
    for (const auto& [strKey, pGroup] : m_mapLevel1Items) {
        if (pGroup->m_strFolder == folder && (lowest == -1 || pGroup->m_iID < lowest)) {
            lowest = pGroup->m_iID;
        }
    }
    return lowest;
}

void CDlgCustomMenu::LoadLevel1() {
    const FolderSnapshot snapshot;
    const CString strProfiles = ProfilesFolder();
    CIniDocument index;
    index.Load(strProfiles + "order.ini");
    const int count = CountIn(index, kMostGroups);
    m_budget = LoadBudget();
    for (int i = 0; i < count; ++i) {
        LoadGroup(index, strProfiles, i);
    }
    m_budget.reset();
    m_layout = MenuLayout(count);
    const CSize size = m_layout.Size();
    // The last step, since hiding a menu that was shown runs code of the host.
    SetWindowPos(&wndBottom, 50, 50, size.cx, size.cy, SWP_HIDEWINDOW);
}

void CDlgCustomMenu::LoadGroup(const CIniDocument& index, const CString& strProfiles, int number) {
    CString strName = index.Get(kSection, std::to_string(number), "");
    const bool isMarked = strName.ends_with('*');
    strName.erase(strName.find_last_not_of('*') + 1);

    auto pItem = std::make_unique<MenuItem>();
    pItem->m_iID = kFirstGroupID + number;
    pItem->m_strFolder = strName;
    pItem->m_pButton = CreateMenuButton(pItem->m_iID, strName, MenuLayout::Group(number));
    if (StaysInFolder(strName)) {
        const CString strIcon = strProfiles + "Picture/" + ReplaceAll(strName, ".xml", ".png") + ".png";
        const bool isWanted = m_nIconBytes < kMostIconBytes;
        FinishIcon(*pItem->m_pButton, strIcon, pItem->m_pButton->LoadImageFile(isWanted ? strIcon : CString(), "PNG"));
    }
    pItem->m_pButton->SetCaption(isMarked ? strName + "*" : strName);
    pItem->m_pButton->SetKind(0);
    ShowNeutralIcon(*pItem->m_pButton);
    MenuItem* pGroup = pItem.get();
    m_mapLevel1Items[KeyOf(pGroup->m_iID)] = std::move(pItem);
    LoadLevel2(pGroup, strProfiles + "/" + strName);
}

void CDlgCustomMenu::LoadLevel2(MenuItem* pItem, const CString& strPath) {
    CIniDocument index;
    if (StaysInFolder(pItem->m_strFolder) && (!m_budget || m_budget->nIndexBytes > 0)) {
        index.Load(strPath + "/Order.ini");
    }
    pItem->m_iMenuNum = CountIn(index, MostRowsOf(pItem->m_strFolder));
    if (m_budget) {
        m_budget->nIndexBytes -= std::min(m_budget->nIndexBytes, index.Size());
        m_budget->nRows -= pItem->m_iMenuNum;
    }
    const int nextID = m_iNextLevel2ID;
    const bool isRecent = pItem->m_strFolder == kRecentFolder;
    const bool isUserDefine = pItem->m_strFolder == kUserDefineFolder;
    if (isRecent) {
        m_iNextLevel2ID = kFirstRecentID;
    } else if (isUserDefine) {
        m_iNextLevel2ID = kFirstUserDefineID;
    }
    LogMessage({kLogSource, __LINE__}, "----------------------parentid=%d iNum=%d strPath=%s", pItem->m_iID,
               pItem->m_iMenuNum, strPath.c_str());
    LoadRows(index, pItem, strPath);
    if (isRecent || isUserDefine) {
        m_iNextLevel2ID = nextID;
    }
}

/// Rows are made as far as their ids keep apart from those of other buttons.
int CDlgCustomMenu::MostRowsOf(const CString& strFolder) const {
    int most = strFolder == kUserDefineFolder ? kMostUserDefineRows : kFirstItemID + kMostItems - m_iNextLevel2ID;
    if (strFolder == kRecentFolder) {
        most = kMostRecentRows;
    }
    return m_budget ? std::min(most, m_budget->nRows) : most;
}

/// The files of all rows are read beside the making of the rows. Of a row's two, the icon comes first.
void CDlgCustomMenu::LoadRows(const CIniDocument& index, MenuItem* pGroup, const CString& strPath) {
    std::vector<RowFiles> rows;
    std::vector<ReadAhead::Request> requests;
    for (int k = 0; k < pGroup->m_iMenuNum; ++k) {
        RowFiles& row = rows.emplace_back();
        row.strXml = index.Get(kSection, std::to_string(k), "");
        if (const std::optional<std::string_view> png = index.Find(kSection, row.strXml);
            png && png->size() <= kLongestName) {
            row.strPng = *png;
        }
        row.strIconPath = PathIn(strPath, row.strPng);
        const bool isShort = row.strIconPath.size() <= Image::kLongestPath;
        requests.push_back({isShort ? row.strIconPath : CString(), FileAccess::Read, kMostIconFileBytes});
        requests.push_back({PathIn(strPath, row.strXml), FileAccess::ReadIfWritable, kMostScannedBytes});
    }
    ReadAhead files(std::move(requests));
    for (std::size_t k = 0; k < rows.size(); ++k) {
        // Beyond the limit the icons are left to lie, which also keeps the others from being read ahead.
        rows[k].icon = m_nIconBytes < kMostIconBytes ? files.Take(2 * k) : std::nullopt;
        rows[k].profile = files.Take(2 * k + 1);
        LoadRow(pGroup, std::move(rows[k]), static_cast<int>(k));
    }
}

void CDlgCustomMenu::LoadRow(MenuItem* pGroup, RowFiles row, int number) {
    auto pItem = std::make_unique<MenuItem>();
    pItem->m_iID = m_iNextLevel2ID++;
    pItem->m_iLevel = 2;
    pItem->m_iIndex = number;
    pItem->m_iParentID = pGroup->m_iID;
    pItem->m_pParent = pGroup;
    pItem->m_strXml = std::move(row.strXml);
    pItem->m_strPng = std::move(row.strPng);

    pItem->m_pButton = CreateMenuButton(pItem->m_iID, pItem->m_strXml, MenuLayout::Row(number));
    CGPMenuButton& button = *pItem->m_pButton;
    FinishIcon(button, row.strIconPath, button.LoadImageBytes(std::move(row.icon).value_or("")));
    button.SetKind(1);
    button.ShowWindow(SW_HIDE);
    LogMessage({kLogSource, __LINE__}, "xml=%s png=%s parent=%s id=%d", pItem->m_strXml.c_str(),
               pItem->m_strPng.c_str(), "", pItem->m_iID);
    button.m_bRightClickEnabled = TRUE;
    button.m_pfnRightClick = OnItemRightClick;
    LogMessage({kLogSource, __LINE__}, "m_mapLevel2Menu add strKey=%s", KeyOf(pItem->m_iID).c_str());
    if (row.profile) {
        ProfileText text = ReadProfileText(*row.profile);
        pItem->m_strName = std::move(text.name).value_or("");
        pItem->m_strComment = std::move(text.comment).value_or("");
    }
    button.SetCaption(pItem->m_strName);
    button.SetDescription(pItem->m_strComment);
    ShowNeutralIcon(button);
    InsertItem(std::move(pItem));
}

/// A file that is there but is no picture gives an image all the same, one that draws nothing. Whether it is there is
/// asked only where it could not be read: most can.
void CDlgCustomMenu::FinishIcon(CGPMenuButton& button, const CString& path, bool isRead) {
    if (!isRead && !PathExists(path, false)) {
        button.DropImage();
    }
    m_nIconBytes += button.GetImageBytes();
}

/// Two groups of one name give the same ids; the later entry then takes the place of the earlier one.
void CDlgCustomMenu::InsertItem(std::unique_ptr<MenuItem> pItem) {
    const CString strKey = KeyOf(pItem->m_iID);
    RemoveItem(strKey);
    pItem->m_pParent->m_mapLevel2Menu[strKey] = pItem.get();
    m_mapLevel2Items[strKey] = std::move(pItem);
}

/// The entry is in neither map any more when its button goes.
void CDlgCustomMenu::RemoveItem(const CString& strKey) {
    const auto found = m_mapLevel2Items.find(strKey);
    if (found != m_mapLevel2Items.end()) {
        const std::unique_ptr<MenuItem> pItem = std::move(found->second);
        m_mapLevel2Items.erase(found);
        pItem->m_pParent->m_mapLevel2Menu.erase(strKey);
        m_nIconBytes -= pItem->m_pButton->GetImageBytes();
    }
}

void CDlgCustomMenu::ClearGroupItems(int groupID) {
    CStringArray keys;
    for (const auto& [strKey, pItem] : m_mapLevel2Items) {
        if (pItem->m_iParentID == groupID) {
            keys.push_back(strKey);
        }
    }
    for (const CString& strKey : keys) {
        RemoveItem(strKey);
    }
}

std::unique_ptr<CGPMenuButton> CDlgCustomMenu::CreateMenuButton(int id, const CString& text, const CRect& rect) {
    auto pButton = std::make_unique<CGPMenuButton>();
    pButton->Create(text, WS_CHILD | WS_VISIBLE, rect, this, static_cast<UINT>(id));
    return pButton;
}

CString CDlgCustomMenu::ProfilesFolder() {
    CString strBase;
    GetBasePath(strBase);
    return strBase + "/Profiles/";
}

}  // namespace veldan
