#pragma once

#include "controls/GPScrollImageButton.h"
#include "menu/MenuIds.h"
#include "menu/MenuItem.h"
#include "menu/MenuLayout.h"
#include "menu/ProfileLists.h"
#include "platform/core/File.h"
#include "platform/dialog/Dialog.h"

#include <memory>
#include <optional>
#include <string_view>

namespace veldan {

class CIniDocument;

/// The menu: one popup with a column of groups and, beside it, the profiles of the group that the pointer rested on. A
/// click on a profile tells the host and closes the menu.
///
/// The object owns all entries with their buttons. Hiding the menu and telling the host of a pick run code of the host,
/// which may destroy the menu; nothing here touches the object after such a call without asking for it again.
///
/// The functions stand in files of their own by concern: the catalogue that is read, the navigation in it, and the two
/// groups that the menu rewrites.
class CDlgCustomMenu : public CDialog {
public:
    CDlgCustomMenu();
    ~CDlgCustomMenu() override;

    // The host.

    /// Who hears of a pick, and by which message.
    void SetHost(HWND hHostWnd, UINT uMsg);
    void SetBasePath(const char* pszPath);
    /// The folder that holds `Profiles`. Without one of its own the menu takes the folder of the program, for good.
    void GetBasePath(CString& strPath);

    // The catalogue.

    /// Rebuilds everything from the files; the menu is hidden then, with all rows scrolled back. Always TRUE.
    BOOL ReloadCatalogue();
    void FreeAllItems();
    [[nodiscard]] MenuItem* FindLevel1Item(int id) const;
    [[nodiscard]] MenuItem* FindLevel2Item(int id) const;
    [[nodiscard]] MenuItem* FindParentItem(int id) const;
    /// The lowest id of a group of that name, or -1. Once found it is kept for the life of the process.
    [[nodiscard]] int GetUserDefineGroupID() const;
    [[nodiscard]] int GetRecentGroupID() const;
    /// File, icon and group of a profile; the texts stay as they are where there is none.
    void Z_RecentGetXmlPng(CString& strXml, CString& strPng, CString& strParent, int id) const;

    // The group of recent profiles and that of the user's own. Each of these reads the group's index, rewrites it, and
    // makes the group's rows anew, hidden until the group is opened.

    /// Enters a profile that was picked, with copies of its files, unless one of its name is there. The oldest goes.
    void AddRecent(int id);
    void DeleteRecent(int id);
    /// Enters a profile whose file stands in the group's folder, unless one of its name is there.
    void AddUserDefine(const CString& strXml);
    /// Takes a profile out, with its files and with the entries of its name among the recent ones.
    void DeleteUserDefine(int id);
    /// Takes all entries with this path's file name out of both groups. Always 1.
    int RemoveProfileByFile(const CString& path);
    bool LoadRecentList(const CString& path);
    bool SaveRecentList(const CString& path);
    bool LoadUserDefineList(const CString& path);
    bool SaveUserDefineList(const CString& path);
    void ClearGroupItems(int groupID);

    // Navigation. The handlers are called directly, too.

    /// Opens a group: shows the rows of it that fit.
    LRESULT OnSmallMenuButtonItemChange(WPARAM id, LPARAM lParam);
    LRESULT OnItemHover(WPARAM id, LPARAM lParam);
    LRESULT OnItemClick(WPARAM id, LPARAM lParam);
    void OnScrollUp();
    void OnScrollDown();

    // What is shown.

    [[nodiscard]] const MenuItemMap& Groups() const { return m_mapLevel1Items; }
    [[nodiscard]] const MenuItemMap& Items() const { return m_mapLevel2Items; }
    [[nodiscard]] const RecentList& Recent() const { return m_recent; }
    [[nodiscard]] const UserDefineList& UserDefine() const { return m_userDefine; }
    [[nodiscard]] int OpenGroupID() const { return m_iSelectedLevel1ID; }
    [[nodiscard]] int HoveredItemID() const { return m_iSelectedLevel2ID; }
    [[nodiscard]] int VisibleRows() const { return m_iVisibleRows; }

protected:
    [[nodiscard]] const MessageMap& GetMessageMap() const override;
    BOOL OnInitDialog() override;
    CWnd* GetFirstFocus() override;

private:
    /// What a profile's row stands for, as the indexes spell it.
    struct RowName {
        CString strGroup;
        CString strXml;

        bool operator==(const RowName&) const = default;
    };

    /// What an index says of a row, and what its files hold, as far as they could be read.
    struct RowFiles {
        CString strXml;
        CString strPng;
        CString strIconPath;
        std::optional<CString> icon;
        std::optional<CString> profile;
    };

    /// What is left of what one load of the whole catalogue takes in. Groups beyond it come out empty: a top index may
    /// name one group hundreds of times, with an index that takes long to read or thousands of rows.
    struct LoadBudget {
        std::size_t nIndexBytes = std::size_t{16} * 1024 * 1024;
        /// All that can have an id of their own, and some that take the place of an earlier one.
        int nRows = kMostItems + kMostUserDefineRows + 10 * kMostRecentRows;
    };

    BOOL OnEraseBkgnd(CDC* pDC);
    BOOL OnMouseWheel(UINT flags, short zDelta, CPoint point);
    void OnOutsidePress();

    void LoadLevel1();
    void LoadGroup(const CIniDocument& index, const CString& strProfiles, int number);
    void LoadLevel2(MenuItem* pItem, const CString& strPath);
    void LoadRows(const CIniDocument& index, MenuItem* pGroup, const CString& strPath);
    void LoadRow(MenuItem* pGroup, RowFiles row, int number);
    void FinishIcon(CGPMenuButton& button, const CString& path, bool isRead);
    void InsertItem(std::unique_ptr<MenuItem> pItem);
    void RemoveItem(const CString& strKey);
    [[nodiscard]] int MostRowsOf(const CString& strFolder) const;
    [[nodiscard]] int LowestGroupID(std::string_view folder) const;
    std::unique_ptr<CGPMenuButton> CreateMenuButton(int id, const CString& text, const CRect& rect);

    std::unique_ptr<CGPScrollImageButton> CreateScrollButton(int id, const CString& text, const CRect& rect);
    void CreateScrollButtons();
    void CreateAddButton();
    void SelectGroupButton(int id, BOOL selected);
    void SelectItemButton(int id, BOOL selected);
    void HideAllRows();
    void ShowRowsOf(int id);
    void UpdateScrollButtons(int id);
    void SetStripLooks(BOOL upDisabled, BOOL downDisabled);
    void ScrollOpenGroup(int step);
    void PlaceRows(const MenuItem& group);
    [[nodiscard]] int VisibleRowsOf(int groupID) const;
    void SlideWindow(int zDelta);

    [[nodiscard]] std::optional<RowName> FindRow(int itemID) const;
    [[nodiscard]] CString HostPathOf(const RowName& row);
    [[nodiscard]] CString ProfilesFolder();
    [[nodiscard]] WriteRules GroupRules();
    [[nodiscard]] WriteRules CopyRules();
    void SweepGroups();
    void RebuildGroup(int groupID, std::string_view folder);
    [[nodiscard]] bool IsInRecent(const CString& strParent, const CString& strXml);
    void EnterRecent(const CString& strParent, const CString& strXml, CString strPng);
    [[nodiscard]] bool CopyIntoRecent(const CString& strParent, const CString& strName, std::int64_t limit);
    void DeleteUnnamed(const ProfileList& list, std::string_view folder, const CString& strName,
                       const WriteRules& rules);

    HWND m_hHostWnd;
    UINT m_uHostMsg = 6666;
    int m_iSelectedLevel1ID = 0;
    int m_iSelectedLevel2ID = 0;
    MenuItemMap m_mapLevel1Items;
    MenuItemMap m_mapLevel2Items;
    RecentList m_recent;
    UserDefineList m_userDefine;
    std::unique_ptr<CGPScrollImageButton> m_pScrollUp;
    std::unique_ptr<CGPScrollImageButton> m_pScrollDown;
    std::unique_ptr<CGPMenuButton> m_pAddButton;
    int m_iNextLevel2ID = kFirstItemID;
    int m_iVisibleRows = 11;
    MenuLayout m_layout;  // of the groups that were loaded last
    CString m_strPath;
    std::optional<LoadBudget> m_budget;  // while the whole catalogue is loaded
    std::size_t m_nIconBytes = 0;        // of all entries' icons, as they are kept
};

/// The menu of the exported calls; null between Release and Init.
extern CDlgCustomMenu* g_pMenuDialog;

/// The latest menu made, for callbacks that are given none.
extern CDlgCustomMenu* g_pCurrentMenu;

/// The profile row that was right-clicked last.
extern int g_iRightClickID;

/// Set while the menu handles a turn of the wheel.
extern bool g_bInWheel;

/// The folder of the running program, with backslashes and without one at its end.
[[nodiscard]] CString GetExeFolder();

/// What stands behind the last separator of either kind. A path whose only separator is its first character comes back
/// whole.
[[nodiscard]] CString FileNameOfPath(const CString& path);

/// Called by a profile row that was right-clicked.
void OnItemRightClick(const MenuButtonClickInfo* pInfo);

}  // namespace veldan
