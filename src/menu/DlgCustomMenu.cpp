#include "menu/DlgCustomMenu.h"

#include "platform/core/Path.h"
#include "platform/window/Desktop.h"
#include "resources/Dialogs.h"

#include <utility>

namespace veldan {

CDlgCustomMenu* g_pMenuDialog = nullptr;
CDlgCustomMenu* g_pCurrentMenu = nullptr;
int g_iRightClickID = 0;

namespace {

constexpr COLORREF kBackground = 0x17326f;
constexpr COLORREF kFrame = 0;

}  // namespace

CDlgCustomMenu::CDlgCustomMenu() {
    g_pCurrentMenu = this;
}

CDlgCustomMenu::~CDlgCustomMenu() {
    FreeAllItems();
    m_pScrollUp.reset();
    m_pScrollDown.reset();
    m_pAddButton.reset();
    if (g_pCurrentMenu == this) {
        g_pCurrentMenu = nullptr;
    }
}

const MessageMap& CDlgCustomMenu::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        On<WM_ERASEBKGND, &CDlgCustomMenu::OnEraseBkgnd>(),
        On<WM_MOUSEWHEEL, &CDlgCustomMenu::OnMouseWheel>(),
        On<WM_OUTSIDEPRESS, &CDlgCustomMenu::OnOutsidePress>(),
        OnMessage<kMsgGroupHover, &CDlgCustomMenu::OnSmallMenuButtonItemChange>(),
        OnMessage<kMsgItemHover, &CDlgCustomMenu::OnItemHover>(),
        OnMessage<kMsgItemClick, &CDlgCustomMenu::OnItemClick>(),
        OnCommand<kScrollUpID, &CDlgCustomMenu::OnScrollUp>(),
        OnCommand<kScrollDownID, &CDlgCustomMenu::OnScrollDown>(),
    };
    static const MessageMap kMap{&CDialog::ClassMessageMap(), kEntries};
    return kMap;
}

void CDlgCustomMenu::SetHost(HWND hHostWnd, UINT uMsg) {
    m_hHostWnd = hHostWnd;
    m_uHostMsg = uMsg;
}

void CDlgCustomMenu::SetBasePath(const char* pszPath) {
    m_strPath = TextOrEmpty(pszPath);
}

void CDlgCustomMenu::GetBasePath(CString& strPath) {
    if (m_strPath.empty()) {
        m_strPath = GetExeFolder();
    }
    strPath = m_strPath;
}

BOOL CDlgCustomMenu::OnInitDialog() {
    CDialog::OnInitDialog();
    m_iNextLevel2ID = kFirstItemID;
    LoadLevel1();
    CreateScrollButtons();
    CreateAddButton();
    return TRUE;
}

CWnd* CDlgCustomMenu::GetFirstFocus() {
    // Groups are numbered without gaps.
    const MenuItem* pGroup = FindLevel1Item(kFirstGroupID);
    return pGroup ? static_cast<CWnd*>(pGroup->m_pButton.get()) : m_pScrollUp.get();
}

BOOL CDlgCustomMenu::OnEraseBkgnd(CDC* pDC) {
    const CRect client = GetClientRect();
    pDC->FrameRect(client, CBrush(kFrame));
    pDC->FillSolidRect(client.Inflate(-1, -1), kBackground);
    const CRect separator = m_layout.Separator();
    pDC->MoveTo(separator.left, separator.top);
    pDC->LineTo(separator.left, separator.bottom);
    return TRUE;
}

/// Mostly the button with the focus has hidden the menu already. It has none where another program's window became
/// active with the pointer inside of the menu.
void CDlgCustomMenu::OnOutsidePress() {
    ShowWindow(SW_HIDE);
}

/// The host hears of the pick while the menu is still shown and the recent profiles are as they were.
LRESULT CDlgCustomMenu::OnItemClick(WPARAM id, LPARAM /*lParam*/) {
    const int itemID = static_cast<int>(id);
    const std::optional<RowName> row = FindRow(itemID);
    if (!row) {
        return 1;
    }
    const CString strPath = HostPathOf(*row);
    const HWND self = GetSafeHwnd();
    if (m_hHostWnd) {
        Desktop::Get().ReleaseGrab();
        Desktop::Get().SendMessage(m_hHostWnd, m_uHostMsg, 0, reinterpret_cast<LPARAM>(strPath.c_str()));
        // The host may have destroyed the menu, or made another one in its place.
        if (FromHandle(self) != this) {
            return 1;
        }
    }
    // Nor need the row be the one that was clicked, if the host had entries taken out of the lists.
    if (FindRow(itemID) == row) {
        AddRecent(itemID);
    }
    ShowWindow(SW_HIDE);
    return 1;
}

std::optional<CDlgCustomMenu::RowName> CDlgCustomMenu::FindRow(int itemID) const {
    const MenuItem* pItem = FindLevel2Item(itemID);
    const MenuItem* pGroup = FindParentItem(itemID);
    return pItem && pGroup ? std::optional(RowName{pGroup->m_strFolder, pItem->m_strXml}) : std::nullopt;
}

/// The path of a row's profile as the host is told it. Hosts open it by its exact spelling, so it has the disk's; where
/// there is no such file it has that of the indexes.
CString CDlgCustomMenu::HostPathOf(const RowName& row) {
    CString strBase;
    GetBasePath(strBase);
    const CString strPath = Format(R"(%s\Profiles\%s\%s)", strBase.c_str(), row.strGroup.c_str(), row.strXml.c_str());
    const CString strOnDisk = IsPlainFileName(row.strXml) ? FileSpelling(strPath) : CString();
    return ToHostPath(strOnDisk.empty() ? strPath : strOnDisk);
}

CString GetExeFolder() {
    Desktop& desktop = Desktop::Get();
    desktop.SetCursor(CursorShape::Wait);
    const CString strPath = ExecutablePath();
    desktop.SetCursor(CursorShape::Arrow);
    return strPath.substr(0, strPath.rfind('\\'));
}

CString FileNameOfPath(const CString& path) {
    const std::size_t separator = path.find_last_of("\\/");
    return separator == CString::npos || separator == 0 ? path : path.substr(separator + 1);
}

void OnItemRightClick(const MenuButtonClickInfo* pInfo) {
    g_iRightClickID = pInfo->nId;
}

}  // namespace veldan
