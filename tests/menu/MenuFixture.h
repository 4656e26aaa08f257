#pragma once

#include "menu/DlgCustomMenu.h"
#include "support/DesktopFixture.h"
#include "veldan/veldan.h"

#include "menu/HostWnd.h"
#include "menu/ProfileTree.h"

#include <algorithm>
#include <map>
#include <ranges>

namespace veldan {

/// The file names of a group's rows in the order of their ids, which have no gaps.
[[nodiscard]] inline std::vector<CString> RowsFrom(int firstID) {
    std::vector<CString> names;
    for (int id = firstID; const MenuItem* pItem = g_pMenuDialog->FindLevel2Item(id); ++id) {
        names.push_back(pItem->m_strXml);
    }
    return names;
}

/// A host's window on the right, with room for the menu beside it.
class MenuTest : public DesktopTest {
protected:
    static constexpr CPoint kMenuAt = {100, 100};

    MenuTest() {
        m_host.CreateEx(0, CWnd::kPlainClass, "host", WS_VISIBLE, {700, 50, 1300, 850}, {}, 0);
        Person().Settle();
    }
    ~MenuTest() override { VELDAN_ReleaseProfileMenus(); }

    void Init() { VELDAN_InitProfileMenus(&m_host, m_tree.Base().c_str()); }
    void Show() {
        VELDAN_ShowProfileMenus(&m_host, kMenuAt.x, kMenuAt.y, kPickMessage);
        Person().Settle();
    }
    void InitAndShow() {
        Init();
        Show();
    }

    [[nodiscard]] static CDlgCustomMenu& Menu() { return *g_pMenuDialog; }
    [[nodiscard]] static CPoint GroupPoint(int group) { return kMenuAt + CPoint{100, 17 + 30 * group}; }
    [[nodiscard]] static CPoint RowPoint(int row) { return kMenuAt + CPoint{400, 42 + 50 * row}; }
    [[nodiscard]] static CPoint Outside() { return kMenuAt + CPoint{-50, -50}; }

    /// Rests on a group, which opens it.
    void Open(int group) { Person().Rest(GroupPoint(group)); }

    /// File names of the rows that are shown, from top to bottom.
    [[nodiscard]] static std::vector<CString> ShownRows() {
        std::map<int, CString> shown;
        for (const auto& [strKey, pItem] : Menu().Items()) {
            if ((pItem->m_pButton->GetStyle() & WS_VISIBLE) != 0) {
                shown[pItem->m_pButton->GetWindowRect().top] = pItem->m_strXml;
            }
        }
        std::vector<CString> names;
        std::ranges::copy(std::views::values(shown), std::back_inserter(names));
        return names;
    }

    [[nodiscard]] static CGPScrollImageButton& Strip(int id) {
        return dynamic_cast<CGPScrollImageButton&>(*Menu().GetDlgItem(static_cast<UINT>(id)));
    }
    /// The looks of both strips: 'u' and 'd' for those that look normal, '-' for one that looks disabled.
    [[nodiscard]] static CString StripLooks() {
        return CString(Strip(kScrollUpID).m_bDisabledLook ? "-" : "u") +
               (Strip(kScrollDownID).m_bDisabledLook ? "-" : "d");
    }

    ProfileTree m_tree;
    HostWnd m_host;
};

}  // namespace veldan
