#include "menu/DlgCustomMenu.h"
#include "platform/window/Desktop.h"
#include "resources/Dialogs.h"
#include "storage/Log.h"

#include <algorithm>
#include <vector>

namespace veldan {

bool g_bInWheel = false;

namespace {

constexpr const char* kLogSource = "DlgCustomMenu";

/// Whether a button of the menu is neither a group nor a strip.
bool IsRowID(int id) {
    const bool isGroup = id >= kFirstGroupID && id < kFirstGroupID + kMostGroups;
    return !isGroup && id != kScrollUpID && id != kScrollDownID;
}

/// Marks that the wheel is being handled, on every way out.
class WheelGuard {
public:
    WheelGuard() { g_bInWheel = true; }
    ~WheelGuard() { g_bInWheel = false; }
    WheelGuard(const WheelGuard&) = delete;
    WheelGuard& operator=(const WheelGuard&) = delete;
};

void ShowAll(const std::vector<HWND>& windows, ShowCommand command) {
    for (const HWND window : windows) {
        Desktop::Get().ShowWindow(window, command);
    }
}

}  // namespace

void CDlgCustomMenu::CreateScrollButtons() {
    constexpr int kStateCount = 4;
    const CString strPictures = ProfilesFolder() + "Picture/";

    m_pScrollUp = CreateScrollButton(kScrollUpID, "", m_layout.ScrollUp());
    m_pScrollUp->LoadImageFile(strPictures + "sub_scroll_up.png", "PNG", FALSE, kStateCount, TRUE);
    m_pScrollUp->SetTooltipText("Scroll up", TRUE);
    m_pScrollUp->BuildStateBitmaps();

    m_pScrollDown = CreateScrollButton(kScrollDownID, "", m_layout.ScrollDown());
    m_pScrollDown->LoadImageFile(strPictures + "sub_scroll_down.png", "PNG", FALSE, kStateCount, TRUE);
    m_pScrollDown->SetTooltipText("Scroll down", TRUE);
    m_pScrollDown->BuildStateBitmaps();

    m_pScrollUp->ShowWindow(SW_SHOW);
    m_pScrollDown->ShowWindow(SW_SHOW);
}

/// Rows go below their siblings when they are made, so a strip that is on top once stays above them.
std::unique_ptr<CGPScrollImageButton> CDlgCustomMenu::CreateScrollButton(int id, const CString& text,
                                                                         const CRect& rect) {
    auto pButton = std::make_unique<CGPScrollImageButton>();
    pButton->Create(text, WS_CHILD | WS_VISIBLE, rect, this, static_cast<UINT>(id));
    pButton->SetWindowPos(&wndTop, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    return pButton;
}

void CDlgCustomMenu::CreateAddButton() {
    m_pAddButton = CreateMenuButton(kAddButtonID, "Add to user define", m_layout.AddButton());
    m_pAddButton->LoadImageResource(kAddIconId, "PNG");
    m_pAddButton->SetKind(1);
    m_pAddButton->ShowWindow(SW_HIDE);
    m_pAddButton->SetCaption("Add user define");
    m_pAddButton->SetDescription("Add user define video or audio");
}

void CDlgCustomMenu::SelectGroupButton(int id, BOOL selected) {
    if (const MenuItem* pItem = FindLevel1Item(id)) {
        pItem->m_pButton->SetSelected(selected);
        pItem->m_pButton->Invalidate();
    }
}

void CDlgCustomMenu::SelectItemButton(int id, BOOL selected) {
    if (const MenuItem* pItem = FindLevel2Item(id)) {
        pItem->m_pButton->SetSelected(selected);
        pItem->m_pButton->Invalidate();
    }
}

int CDlgCustomMenu::VisibleRowsOf(int groupID) const {
    return m_layout.VisibleRows(groupID == GetUserDefineGroupID());
}

LRESULT CDlgCustomMenu::OnSmallMenuButtonItemChange(WPARAM id, LPARAM /*lParam*/) {
    const int groupID = static_cast<int>(id);
    SelectGroupButton(m_iSelectedLevel1ID, FALSE);
    SelectGroupButton(groupID, TRUE);
    m_iSelectedLevel1ID = groupID;
    m_iVisibleRows = VisibleRowsOf(groupID);
    LogMessage({kLogSource, __LINE__}, "OnSmallMenuButtonItemChange m_iSelectedLevel1ID=%d", m_iSelectedLevel1ID);
    const HWND self = GetSafeHwnd();
    HideAllRows();
    if (FromHandle(self) == this) {
        ShowRowsOf(groupID);
        UpdateScrollButtons(m_iSelectedLevel1ID);
    }
    return 0;
}

/// Hides the button of every profile and the add button. Only those that are shown have anything to do, and they are
/// found among the window's shown children: hidden profiles, of which there may be thousands, cost nothing. Hiding a
/// row that has the focus may close the menu, and whoever gets the focus may do anything; so the rows are collected
/// first and hidden by their handles.
void CDlgCustomMenu::HideAllRows() {
    std::vector<HWND> shown = Desktop::Get().VisibleChildrenOf(GetSafeHwnd());
    std::erase_if(shown, [](HWND window) { return !IsRowID(static_cast<int>(Desktop::Get().Find(window)->id)); });
    ShowAll(shown, SW_HIDE);
}

void CDlgCustomMenu::ShowRowsOf(int id) {
    LogMessage({kLogSource, __LINE__}, "OnSmallMenuButtonItemChange strUID=%s", Format("%d", id).c_str());
    const MenuItem* pGroup = FindLevel1Item(id);
    if (!pGroup) {
        return;
    }
    LogMessage({kLogSource, __LINE__}, "m_mapLevel2Menu strUID=%s cnt=%d", Format("%d", id).c_str(),
               static_cast<int>(pGroup->m_mapLevel2Menu.size()));
    const int limit = MenuLayout::RowsBottom(m_iVisibleRows);
    std::vector<HWND> fitting;
    for (const auto& [strKey, pItem] : pGroup->m_mapLevel2Menu) {
        LogMessage({kLogSource, __LINE__}, "m_mapLevel2Menu strKey=%s", strKey.c_str());
        // That is where PlaceRows put the row; asking thousands of windows for it would take its time.
        const CRect place = MenuLayout::Row(pItem->m_iIndex + pGroup->m_iMenuCurSelectedPos);
        LogMessage({kLogSource, __LINE__}, "pItem->m_mapLevel2Menu rc.bottom - rcO.top=%d", place.bottom);
        LogMessage({kLogSource, __LINE__}, "pItem->m_mapLevel2Menu limit=%d", limit);
        if (place.bottom <= limit && place.top >= MenuLayout::RowsTop()) {
            fitting.push_back(pItem->m_pButton->GetSafeHwnd());
        }
    }
    ShowAll(fitting, SW_SHOW);
}

void CDlgCustomMenu::UpdateScrollButtons(int id) {
    const MenuItem* pItem = FindLevel1Item(id);
    if (!pItem || !m_pScrollUp || !m_pScrollDown) {
        return;
    }
    const int num = pItem->m_iMenuNum;
    const int pos = pItem->m_iMenuCurSelectedPos;
    LogMessage({kLogSource, __LINE__}, "pItem->m_iMenuCurSelectedPos %d pItem->m_iMenuNum=%d", pos, num);
    if (num + pos == m_iVisibleRows) {
        SetStripLooks(FALSE, TRUE);
        LogMessage({kLogSource, __LINE__}, "Down true up false");
    } else {
        SetStripLooks(pos == 0, FALSE);
        LogMessage({kLogSource, __LINE__}, "Down false up true");
    }
    if (num <= m_iVisibleRows) {
        SetStripLooks(TRUE, TRUE);
        LogMessage({kLogSource, __LINE__}, "all false");
    }
}

void CDlgCustomMenu::SetStripLooks(BOOL upDisabled, BOOL downDisabled) {
    m_pScrollUp->m_bDisabledLook = upDisabled;
    m_pScrollUp->Invalidate();
    m_pScrollDown->m_bDisabledLook = downDisabled;
    m_pScrollDown->Invalidate();
}

LRESULT CDlgCustomMenu::OnItemHover(WPARAM id, LPARAM /*lParam*/) {
    const int itemID = static_cast<int>(id);
    SelectItemButton(m_iSelectedLevel2ID, FALSE);
    SelectItemButton(itemID, TRUE);
    m_iSelectedLevel2ID = itemID;
    return 0;
}

void CDlgCustomMenu::OnScrollUp() {
    const MenuItem* pGroup = FindLevel1Item(m_iSelectedLevel1ID);
    if (!pGroup || pGroup->m_iMenuCurSelectedPos < 0) {
        ScrollOpenGroup(1);
    }
}

void CDlgCustomMenu::OnScrollDown() {
    const MenuItem* pGroup = FindLevel1Item(m_iSelectedLevel1ID);
    if (!pGroup || pGroup->m_iMenuNum + pGroup->m_iMenuCurSelectedPos > m_iVisibleRows) {
        ScrollOpenGroup(-1);
    }
}

void CDlgCustomMenu::ScrollOpenGroup(int step) {
    if (MenuItem* pGroup = FindLevel1Item(m_iSelectedLevel1ID)) {
        pGroup->m_iMenuCurSelectedPos += step;
        PlaceRows(*pGroup);
    }
    OnSmallMenuButtonItemChange(static_cast<WPARAM>(m_iSelectedLevel1ID), 0);
}

void CDlgCustomMenu::PlaceRows(const MenuItem& group) {
    for (const auto& [strKey, pItem] : group.m_mapLevel2Menu) {
        const CRect rect = MenuLayout::Row(pItem->m_iIndex + group.m_iMenuCurSelectedPos);
        pItem->m_pButton->SetWindowPos(nullptr, rect.left, rect.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }
}

BOOL CDlgCustomMenu::OnMouseWheel(UINT /*flags*/, short zDelta, CPoint point) {
    if (g_bInWheel) {
        return 0;
    }
    const WheelGuard guard;
    const HWND self = GetSafeHwnd();
    if (MenuLayout::IsOverGroups(ScreenToClient(point))) {
        SlideWindow(zDelta);
    } else if (zDelta < 0) {
        if (m_pScrollDown && m_pScrollDown->IsWindowEnabled()) {
            OnScrollDown();
        }
    } else if (m_pScrollUp && m_pScrollUp->IsWindowEnabled()) {
        OnScrollUp();
    }
    return FromHandle(self) == this ? static_cast<BOOL>(Default()) : 0;
}

void CDlgCustomMenu::SlideWindow(int zDelta) {
    const CRect screen = Desktop::Get().GetDisplay().ScreenRect();
    const int half = screen.Height() / 2;
    const CWnd* pOwner = GetParent();
    const CRect limits = pOwner ? pOwner->GetWindowRect() : CRect{0, half, 0, half};
    const CRect rect = GetWindowRect();
    if (const int step = MenuLayout::SlideOf(rect, limits, screen, zDelta); step != 0) {
        MoveWindow(rect.Offset({0, step}));
    }
}

}  // namespace veldan
