#include "menu/MenuFixture.h"
#include "platform/core/Path.h"
#include "support/Probe.h"

#include <gmock/gmock.h>

namespace veldan {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PickTest : public MenuTest {
protected:
    PickTest() {
        m_tree.Groups({"Movies*", "Recent", "C", "D", "E", "F"});
        m_tree.Fill("Movies", 4);
        m_tree.Fill("Recent", 0);
    }
    void PickRow(int row) {
        Open(0);
        Person().Click(RowPoint(row));
    }
    [[nodiscard]] CString HostPath(const CString& strFile) const {
        return ToHostPath(m_tree.Base() + "/Profiles/" + strFile);
    }
};

TEST_F(PickTest, AHostThatIsGoneHearsNothingAndNoneSeesNoMenu) {
    Init();
    VELDAN_ShowProfileMenus(nullptr, kMenuAt.x, kMenuAt.y, kPickMessage);
    EXPECT_FALSE(Menu().IsWindowVisible());
    auto pOther = std::make_unique<HostWnd>();
    pOther->CreateEx(0, CWnd::kPlainClass, "other", WS_VISIBLE, {1500, 0, 1600, 100}, {}, 0);
    Person().Settle();
    VELDAN_ShowProfileMenus(pOther.get(), kMenuAt.x, kMenuAt.y, kPickMessage);
    Person().Settle();
    Open(0);
    pOther.reset();
    Person().Click(RowPoint(0));
    EXPECT_THAT(m_tree.Names("Recent"), ElementsAre("order.ini", "p0.png", "p0.xml"));
    EXPECT_FALSE(Menu().IsWindowVisible());
}

TEST_F(PickTest, TheHostMayReleaseTheMenuWhenItGetsTheFocusBack) {
    m_host.DestroyWindow();
    Probe<HostWnd> host;
    host.CreateEx(0, CWnd::kPlainClass, "host", WS_VISIBLE, {700, 50, 1300, 850}, {}, 0);
    Person().Settle();
    for (const bool byClick : {true, false}) {
        VELDAN_InitProfileMenus(&host, m_tree.Base().c_str());
        VELDAN_ShowProfileMenus(&host, kMenuAt.x, kMenuAt.y, kPickMessage);
        Person().Settle();
        ASSERT_TRUE(Menu().IsWindowVisible());
        host.actAt = WM_SETFOCUS;
        host.action = [](auto&) { VELDAN_ReleaseProfileMenus(); };
        if (byClick) {
            Person().Click({800, 400});
        } else {
            VELDAN_ReleaseProfileMenus();
        }
        EXPECT_FALSE(host.action) << "it got the focus";
        EXPECT_EQ(g_pMenuDialog, nullptr);
        EXPECT_EQ(g_pCurrentMenu, nullptr);
        EXPECT_EQ(TheDesktop().WindowCount(), 1U);
    }
}

TEST_F(PickTest, ABlankRowIsPickedLikeAnyOther) {
    m_tree.Write("Movies/order.ini", "[Order]\r\nNum=2\r\n");
    InitAndShow();
    PickRow(1);
    EXPECT_THAT(m_host.picks, ElementsAre(HostPath("Movies/")));
    EXPECT_THAT(m_tree.Names("Recent"), ElementsAre("order.ini"));
}

TEST_F(PickTest, TheHostGetsTheSpellingOfTheDiskWhereTheFileIsThere) {
    m_tree.Groups({"MOVIES", "Recent", "C", "D", "E", "F"});
    m_tree.Write("Movies/order.ini", ProfileTree::Index({{"P0.XML", "p0.png"}, {"GONE.xml", ""}, {"P2.xml", ""}}));
    const CString strBase = m_tree.Folder() / "base";
    std::filesystem::create_directory(strBase);
    std::filesystem::rename(m_tree.Base() + "/Profiles", strBase + "/Profiles");
    const CString strGiven = m_tree.Folder() / "BASE";
    VELDAN_InitProfileMenus(&m_host, strGiven.c_str());
    Show();
    // What a host does with the file meanwhile changes nothing about which row was picked.
    m_host.onPick = [&] { std::filesystem::remove(ToSystemPath(m_host.picks.back())); };
    for (const WPARAM id : {1000, 1001, 1002}) {
        Menu().OnItemClick(id, 0);
    }
    EXPECT_THAT(m_host.picks, ElementsAre(ToHostPath(strBase + "/Profiles/Movies/p0.xml"),
                                          ToHostPath(strGiven + "/Profiles/MOVIES/GONE.xml"),
                                          ToHostPath(strBase + "/Profiles/Movies/p2.xml")));
    EXPECT_THAT(RowsFrom(kFirstRecentID), ElementsAre("P0.XML", "GONE.xml", "P2.xml"));
}

TEST_F(PickTest, GroupIdsAreRememberedAcrossReleaseAndHarmNobody) {
    Init();
    ASSERT_EQ(Menu().GetRecentGroupID(), 4001);
    VELDAN_ReleaseProfileMenus();
    m_tree.Groups({"Recent", "Movies", "C", "D", "E", "F"});
    InitAndShow();
    EXPECT_EQ(Menu().GetRecentGroupID(), 4001);
    Open(1);
    // The rows of the group that now has this id are made anew, the clicked one among them.
    Person().Click(RowPoint(2));
    EXPECT_THAT(m_host.picks, ElementsAre(HostPath("Movies/p2.xml")));
    EXPECT_FALSE(Menu().IsWindowVisible());
    EXPECT_THAT(m_tree.Names("Recent"), ElementsAre("order.ini", "p2.png", "p2.xml"));
    Show();
    Open(1);
    EXPECT_THAT(ShownRows(), ElementsAre("p2.xml"));
}

TEST_F(PickTest, ARightClickOnlyNamesTheRowAndADoubleClickPicksOnce) {
    InitAndShow();
    Open(0);
    Person().Click(RowPoint(1), 3);
    EXPECT_EQ(g_iRightClickID, 1001);
    Person().Click(GroupPoint(0), 3);
    EXPECT_EQ(g_iRightClickID, 1001);
    EXPECT_TRUE(Menu().IsWindowVisible());
    EXPECT_THAT(m_host.picks, IsEmpty());
    Person().DoubleClick(RowPoint(0));
    EXPECT_EQ(m_host.picks.size(), 1U);
}

TEST_F(PickTest, TheTraceGoesWhereTheEnvironmentTells) {
    const testing::TempFolder logs;
    setenv("VELDAN_LOG_DIR", logs.Path().c_str(), 1);
    InitAndShow();
    PickRow(0);
    unsetenv("VELDAN_LOG_DIR");
    const CString strLog = logs.Read("veldan.log");
    EXPECT_NE(strLog.find("OnSmallMenuButtonItemChange m_iSelectedLevel1ID=4000"), CString::npos);
    EXPECT_NE(strLog.find("Z_RecentAdd xml=p0.xml png=p0.png parent=Movies id=1000"), CString::npos);
    EXPECT_NE(strLog.find(":Func=DlgCustomMenu Line="), CString::npos);
    EXPECT_NE(strLog.find(" AddRecent=4550\r\n"), CString::npos);
}

}  // namespace
}  // namespace veldan
