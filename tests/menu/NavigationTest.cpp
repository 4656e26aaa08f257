#include "menu/MenuFixture.h"
#include "platform/core/Keys.h"

#include <gmock/gmock.h>

namespace veldan {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint32_t kSkin = 0x6f3217;
constexpr std::uint32_t kHovered = 0xb3410f;

class NavigationTest : public MenuTest {
protected:
    /// A menu of so many groups; the first one has `rows` profiles.
    void InitWith(int groups, int rows) {
        std::vector<CString> names;
        for (int i = 0; i < groups; ++i) {
            names.push_back(Format("G%d", i));
        }
        m_tree.Groups(names);
        m_tree.Fill("G0", rows);
        m_tree.Fill("G1", 2, "q");
        InitAndShow();
    }
    void ClickDown() { Person().Click(kMenuAt + CPoint{300, Menu().GetWindowRect().Height() - 8}); }
    void ClickUp() { Person().Click(kMenuAt + CPoint{300, 8}); }
    [[nodiscard]] CPoint MenuCorner() const { return Menu().GetWindowRect().TopLeft(); }
};

TEST_F(NavigationTest, TheNumberOfGroupsSetsTheNumberOfRowsAndUserDefineHasOneFewer) {
    const std::pair<int, int> cases[] = {{1, 2},   {6, 4},   {10, 6},  {16, 9}, {17, 10},
                                         {19, 11}, {20, 11}, {21, 11}, {22, 12}};
    for (const auto& [groups, rows] : cases) {
        InitWith(groups, 13);
        Open(0);
        EXPECT_EQ(Menu().VisibleRows(), rows) << groups;
        EXPECT_EQ(ShownRows().size(), static_cast<std::size_t>(rows)) << groups;
        VELDAN_ReleaseProfileMenus();
    }
    m_tree.Groups({"G0", "UserDefine"});
    m_tree.Fill("UserDefine", 5, "u");
    InitAndShow();
    Open(0);
    EXPECT_EQ(ShownRows().size(), 2U);
    Open(1);
    EXPECT_THAT(ShownRows(), ElementsAre("u0.xml"));
    EXPECT_FALSE(Menu().GetDlgItem(kAddButtonID)->IsWindowVisible());
}

TEST_F(NavigationTest, StripsScrollToTheEndsAndEachGroupKeepsItsPlace) {
    InitWith(6, 6);
    Open(0);
    EXPECT_EQ(StripLooks(), "-d");
    ClickUp();
    EXPECT_THAT(ShownRows(), ElementsAre("p0.xml", "p1.xml", "p2.xml", "p3.xml"));
    ClickDown();
    EXPECT_EQ(StripLooks(), "ud");
    ClickDown();
    ClickDown();
    EXPECT_THAT(ShownRows(), ElementsAre("p2.xml", "p3.xml", "p4.xml", "p5.xml"));
    EXPECT_EQ(StripLooks(), "u-");
    Open(1);
    EXPECT_EQ(StripLooks(), "--") << "it fits";
    ClickDown();
    VELDAN_HideProfileMenus();
    Show();
    EXPECT_THAT(ShownRows(), ElementsAre("q0.xml", "q1.xml"));
    Open(0);
    ClickUp();
    EXPECT_THAT(ShownRows(), ElementsAre("p1.xml", "p2.xml", "p3.xml", "p4.xml"));
}

TEST_F(NavigationTest, ScrollingPutsTheRowUnderTheRestingPointerOn) {
    InitWith(6, 6);
    Open(0);
    Person().Rest(RowPoint(1));
    Person().Wheel(RowPoint(1), -1);
    Person().Wait(20);
    EXPECT_EQ(Menu().HoveredItemID(), 1002);
    EXPECT_FALSE(g_bInWheel);
    EXPECT_EQ(Seen(RowPoint(1)), kHovered);
    EXPECT_EQ(Seen(RowPoint(0)), kSkin);
}

TEST_F(NavigationTest, ThePointersLightEndsWithTheMenusHidingAndSelectionsStay) {
    InitWith(6, 6);
    Open(1);
    Person().Rest(RowPoint(1));
    Person().Rest(GroupPoint(1));
    // As after an edit: another group opens than the one under the pointer.
    Menu().OnSmallMenuButtonItemChange(4000, 0);
    Person().Settle();
    EXPECT_EQ(Seen(GroupPoint(1)), kHovered) << "the pointer";
    EXPECT_EQ(Seen(GroupPoint(0)), kHovered) << "the open group";
    VELDAN_HideProfileMenus();
    constexpr CPoint kElsewhere{0, 400};
    VELDAN_ShowProfileMenus(&m_host, kMenuAt.x, kMenuAt.y + kElsewhere.y, kPickMessage);
    EXPECT_EQ(Seen(GroupPoint(1) + kElsewhere), kSkin) << "in the first frame";
    EXPECT_EQ(Seen(GroupPoint(0) + kElsewhere), kHovered);
    Person().Rest(GroupPoint(1) + kElsewhere);
    EXPECT_EQ(Seen(RowPoint(1) + kElsewhere), kHovered) << "the last hovered row";
    EXPECT_EQ(Menu().HoveredItemID(), 1007);
}

TEST_F(NavigationTest, WheelOverTheGroupsSlidesAMenuThatOverhangsItsOwner) {
    InitWith(6, 6);
    const CPoint overGroups = {149, 60};
    // The owner reaches from 50 to 850, the menu is 184 high.
    VELDAN_ShowProfileMenus(&m_host, 100, 800, kPickMessage);
    Person().Settle();
    for (int i = 0; i < 2; ++i) {
        Person().Wheel(MenuCorner() + overGroups, -120);
        EXPECT_EQ(MenuCorner().y, i == 0 ? 680 : 850 - 184);
    }
    VELDAN_ShowProfileMenus(&m_host, 100, -100, kPickMessage);
    Person().Settle();
    Person().Wheel(MenuCorner() + CPoint{149, 130}, 120);
    EXPECT_EQ(MenuCorner().y, 20);
    Person().Wheel(MenuCorner() + overGroups, 120);
    EXPECT_EQ(MenuCorner(), (CPoint{100, 50}));
    Person().Wheel(MenuCorner() + overGroups, 120);
    Person().Wheel(MenuCorner() + overGroups, -120);
    EXPECT_EQ(MenuCorner(), (CPoint{100, 50})) << "all of it is within the owner";
}

TEST_F(NavigationTest, WithoutAnOwnerTheWheelStopsAtTheMiddleOfTheScreen) {
    m_host.DestroyWindow();
    InitWith(6, 6);
    HostWnd other;
    other.CreateEx(0, CWnd::kPlainClass, "other", WS_VISIBLE, {1500, 0, 1600, 100}, {}, 0);
    Person().Settle();
    VELDAN_ShowProfileMenus(&other, 100, 900, kPickMessage);
    Person().Settle();
    ASSERT_EQ(Menu().GetParent(), nullptr);
    for (int i = 0; i < 9; ++i) {
        Person().Wheel(MenuCorner() + CPoint{100, 100}, -120);
    }
    EXPECT_EQ(MenuCorner().y + 184, 1080 / 2);
}

TEST_F(NavigationTest, TurningOnBringsEveryGroupOntoTheScreenWhereverTheOwnerIs) {
    constexpr CRect kScreen{0, 0, 1920, 1080};
    for (const int groups : {1, 6, 20, 40}) {
        for (const int ownerTop : {-900, -50, 0, 400, 1000, 2000}) {
            for (const int top : {-30 * groups, -100, 0, 700, 1070}) {
                SCOPED_TRACE(Format("%d groups, owner from %d, menu from %d", groups, ownerTop, top));
                const CRect owner{600, ownerTop, 900, ownerTop + 700};
                CRect menu = CRect::FromSize({0, top}, MenuLayout(groups).Size());
                const bool fits = menu.Height() <= kScreen.Height();
                const auto turn = [&](int zDelta) {
                    for (int i = 0; i < 100; ++i) {
                        menu = menu.Offset({0, MenuLayout::SlideOf(menu, owner, kScreen, zDelta)});
                    }
                };
                turn(-120);
                EXPECT_LE(menu.bottom, kScreen.bottom);
                EXPECT_TRUE(!fits || menu.top >= std::min(top, 0)) << "nothing left at the other end";
                turn(120);
                EXPECT_GE(menu.top, kScreen.top);
                EXPECT_TRUE(!fits || menu.bottom <= kScreen.bottom);
            }
        }
    }
}

TEST_F(NavigationTest, StripsLieAboveRowsAlsoAfterARebuild) {
    m_tree.Groups({"Recent", "A", "B", "C", "D", "E"});
    m_tree.Fill("Recent", 6);
    InitAndShow();
    // The fourth row reaches below the down strip.
    const CPoint onBoth = kMenuAt + CPoint{300, 175};
    Open(0);
    EXPECT_EQ(TheDesktop().WindowAt(Menu().GetSafeHwnd(), onBoth), Strip(kScrollDownID).GetSafeHwnd());
    Menu().DeleteRecent(4555);
    Open(1);
    Open(0);
    ASSERT_EQ(ShownRows().size(), 4U);
    EXPECT_EQ(TheDesktop().WindowAt(Menu().GetSafeHwnd(), onBoth), Strip(kScrollDownID).GetSafeHwnd());
}

TEST_F(NavigationTest, AnIdThatNobodyHasChangesOnlyWhatIsSelected) {
    InitWith(6, 4);
    Open(0);
    Menu().SendMessage(kMsgItemHover, 1234);
    EXPECT_EQ(Menu().HoveredItemID(), 1234);
    Menu().OnSmallMenuButtonItemChange(static_cast<WPARAM>(-1), 0);
    EXPECT_EQ(Menu().OpenGroupID(), -1);
    EXPECT_THAT(ShownRows(), IsEmpty());
    Menu().OnScrollDown();
    Menu().OnScrollUp();
    EXPECT_EQ(Menu().SendMessage(kMsgItemClick, kAddButtonID), 1);
    Open(1);
    Open(0);
    EXPECT_EQ(ShownRows().size(), 4U);
}

TEST_F(NavigationTest, AClickElsewhereClosesTheMenuAlsoAfterItsFocusedRowWentAway) {
    InitWith(6, 6);
    Open(0);
    // A press gives the row the focus; released elsewhere it is no click.
    Person().Move(RowPoint(0));
    Person().Press();
    Person().Move(GroupPoint(5));
    Person().Release();
    EXPECT_EQ(CWnd::GetFocus(), Menu().GetDlgItem(1000));
    Person().Type(VK_ESCAPE);
    Person().Type(VK_RETURN);
    EXPECT_TRUE(Menu().IsWindowVisible()) << "these keys do nothing";
    EXPECT_THAT(m_host.picks, IsEmpty());
    Open(1);
    EXPECT_EQ(CWnd::GetFocus(), Menu().GetDlgItem(4000));
    Person().Click(Outside());
    EXPECT_FALSE(Menu().IsWindowVisible());
    Show();
    Open(0);
    Person().Press();
    VELDAN_HideProfileMenus();
    Person().Release();
    Show();
    EXPECT_EQ(CWnd::GetFocus(), Menu().GetDlgItem(4000)) << "the first group has it at every show";
}

}  // namespace
}  // namespace veldan
