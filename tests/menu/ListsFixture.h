#pragma once

#include "menu/MenuFixture.h"

#include <gmock/gmock.h>

namespace veldan {

/// "A" has twelve profiles with the ids 1000 to 1011, "B" two with the same file names as its first, and the two groups
/// that the menu rewrites are empty.
class ListsTest : public MenuTest {
protected:
    ListsTest() {
        m_tree.Groups({"A", "Recent", "UserDefine", "B", "C", "D"});
        m_tree.Fill("A", 12);
        m_tree.Fill("B", 2);
        m_tree.Fill("Recent", 0);
        m_tree.Write("UserDefine/large_Default.png", ProfileTree::Icon(RGB(1, 1, 1)));
        Init();
    }
    [[nodiscard]] static std::vector<CString> RecentRows() { return RowsFrom(kFirstRecentID); }
    [[nodiscard]] static std::vector<CString> OwnRows() { return RowsFrom(kFirstUserDefineID); }
    [[nodiscard]] CString RecentIndex() const { return m_tree.Read("Recent/order.ini"); }
    [[nodiscard]] CString OwnIndex() const { return m_tree.Read("UserDefine/order.ini"); }
    [[nodiscard]] CString PathOf(const CString& strName) const { return m_tree.Folder() / ("Profiles/" + strName); }
    static void Pick(int first, int count = 1) {
        for (int id = first; id < first + count; ++id) {
            Menu().AddRecent(id);
        }
    }
    /// What the editor does.
    void Add(const CString& strName) const {
        m_tree.Write("UserDefine/" + strName, ProfileTree::Profile(strName, "mine"));
        Menu().AddUserDefine(strName);
    }
};

}  // namespace veldan
