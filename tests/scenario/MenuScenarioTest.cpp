#include "menu/DlgCustomMenu.h"
#include "menu/ProfileTree.h"
#include "support/Stage.h"
#include "veldan/veldan.h"

#include "platform/core/Path.h"
#include "platform/window/Desktop.h"

#include <gtest/gtest.h>

#include <functional>

namespace veldan {

namespace {

constexpr UINT kPickMessage = 7000;
constexpr std::uint32_t kSkin = 0x6f3217;
constexpr std::uint32_t kHoverSkin = 0xb3410f;
constexpr std::uint32_t kIcon = 0x0000c8;

class Host : public CWnd {
public:
    std::vector<CString> picks;
    std::function<void()> onPick;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message >= kPickMessage && message < kPickMessage + 10) {
            picks.push_back(Format("%u ", message - kPickMessage) + reinterpret_cast<const char*>(lParam));
            if (onPick) {
                onPick();
            }
            return 0;
        }
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

}  // namespace

/// What a person does with the menu; on every display with the same outcome. Six groups: four rows fit.
class MenuScenario : public ::testing::TestWithParam<StageKind> {
protected:
    void SetUp() override {
        m_tree.Groups({"Recent", "Films*", "Music", "Pairs", "Empty", "UserDefine"});
        m_tree.Fill("Films", 8, "f");
        m_tree.Fill("Music", 3, "m");
        m_tree.Fill("Pairs", 2, "p");
        m_tree.Fill("Recent", 0);
        m_stage = Stage::Make(GetParam());
        ASSERT_TRUE(m_stage);
        m_host = std::make_unique<Host>();
        m_host->CreateEx(0, CWnd::kPlainClass, "host", WS_VISIBLE, {620, 60, 960, 460}, {}, 0);
        m_stage->LetFramesSettle();
        VELDAN_InitProfileMenus(m_host.get(), m_tree.Base().c_str());
        Show();
    }
    void TearDown() override {
        VELDAN_ReleaseProfileMenus();
        m_host.reset();
        m_stage.reset();
    }
    void Show(UINT message = kPickMessage) {
        VELDAN_ShowProfileMenus(m_host.get(), m_at.x, m_at.y, message);
        m_stage->Wait(20);
    }
    [[nodiscard]] CPoint Group(int group) const { return m_at + CPoint{100, 17 + 30 * group}; }
    [[nodiscard]] CPoint Row(int row) const { return m_at + CPoint{450, 42 + 50 * row}; }
    [[nodiscard]] std::uint32_t IconSeen(int row) const { return m_stage->Seen(m_at + CPoint{170, 32 + 50 * row}); }
    [[nodiscard]] static bool IsShown() { return g_pMenuDialog->IsWindowVisible(); }
    void OpenGroup(int group) {
        m_stage->Move(Group(group));
        ASSERT_TRUE(m_stage->Eventually([=] { return g_pMenuDialog->OpenGroupID() == 4000 + group; }));
        m_stage->Wait(10);
    }
    /// File of the row at a place of the screen, by what a click on it would pick.
    [[nodiscard]] CString FileAt(int row) const {
        const HWND window = Desktop::Get().WindowAt(g_pMenuDialog->GetSafeHwnd(), Row(row));
        const CWnd* button = CWnd::FromHandle(window);
        const MenuItem* item = g_pMenuDialog->FindLevel2Item(button != nullptr ? int(button->GetDlgCtrlID()) : 0);
        return item != nullptr ? item->m_strXml : CString();
    }
    [[nodiscard]] CString HostPath(const CString& file) const {
        return ToHostPath(m_tree.Base() + "/Profiles/" + file);
    }

    ProfileTree m_tree;
    std::unique_ptr<Stage> m_stage;
    std::unique_ptr<Host> m_host;
    CPoint m_at{60, 60};
};

INSTANTIATE_TEST_SUITE_P(Displays, MenuScenario,
                         ::testing::Values(StageKind::Memory, StageKind::X11, StageKind::X11WithManager),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(MenuScenario, RestingOnAGroupOpensIt) {
    EXPECT_EQ(m_stage->Seen(m_at), 0x000000U) << "the frame";
    EXPECT_EQ(m_stage->Seen(m_at + CPoint{300, 100}), kSkin);
    OpenGroup(1);
    EXPECT_EQ(m_stage->Seen(Group(1) + CPoint{40, 0}), kHoverSkin);
    EXPECT_EQ(IconSeen(0), kIcon);
    EXPECT_EQ(IconSeen(2), kIcon);
    OpenGroup(4);
    EXPECT_EQ(m_stage->Seen(Group(1) + CPoint{40, 0}), kSkin);
    EXPECT_EQ(IconSeen(0), kSkin) << "a group without profiles";
    OpenGroup(3);
    EXPECT_EQ(IconSeen(1), kIcon);
    EXPECT_EQ(IconSeen(2), kSkin);
}

TEST_P(MenuScenario, ARestedRowLooksSelectedUntilAnother) {
    OpenGroup(1);
    m_stage->Move(Row(1));
    EXPECT_TRUE(m_stage->Eventually([this] { return m_stage->Seen(Row(1)) == kHoverSkin; }));
    m_stage->Move(Group(5));
    m_stage->Move(m_at + CPoint{-20, -20});
    m_stage->Wait(20);
    m_stage->Move(Row(2));
    EXPECT_TRUE(m_stage->Eventually([this] { return m_stage->Seen(Row(2)) == kHoverSkin; }));
    EXPECT_EQ(m_stage->Seen(Row(1)), kSkin);
}

TEST_P(MenuScenario, WheelOverTheRowsScrollsAndOverTheGroupsSlides) {
    OpenGroup(1);
    m_stage->Move(m_at + CPoint{150, 1});
    m_stage->Wheel(-1);
    EXPECT_EQ(FileAt(0), "f1.xml");
    m_stage->Wheel(2);
    EXPECT_EQ(FileAt(0), "f0.xml") << "no further than the top";
    m_stage->Wheel(-9);
    EXPECT_EQ(FileAt(0), "f4.xml") << "four rows are left";
    // A menu that overhangs its owner's bottom is slid up by the wheel's own distance.
    const CRect owner = m_host->GetWindowRect();
    m_at.y = owner.bottom;
    Show();
    m_stage->Move(m_at + CPoint{149, 1});
    m_stage->Wheel(-1);
    EXPECT_EQ(g_pMenuDialog->GetWindowRect().top, m_at.y - 120);
    EXPECT_EQ(g_pMenuDialog->OpenGroupID(), 4001);
}

TEST_P(MenuScenario, StripsScrollAndTellTheirLimits) {
    OpenGroup(1);
    const CPoint up = m_at + CPoint{330, 9};
    const CPoint down = m_at + CPoint{330, 174};
    m_stage->Click(up);
    EXPECT_EQ(FileAt(0), "f0.xml");
    m_stage->Click(down);
    EXPECT_EQ(FileAt(0), "f1.xml");
    m_stage->Click(down);
    m_stage->Wait(10);
    m_stage->Click(up);
    EXPECT_EQ(FileAt(0), "f1.xml");
    OpenGroup(2);
    OpenGroup(1);
    EXPECT_EQ(FileAt(0), "f1.xml") << "each group keeps its place";
}

TEST_P(MenuScenario, APickTellsTheHostEntersRecentAndClosesTheMenu) {
    OpenGroup(1);
    m_stage->Click(Row(1));
    ASSERT_EQ(m_host->picks, std::vector{"0 " + HostPath("Films/f1.xml")});
    EXPECT_FALSE(IsShown());
    m_stage->Wait(20);
    EXPECT_NE(m_stage->Seen(Group(4) + CPoint{40, 0}), kSkin);
    EXPECT_EQ(m_tree.Read("Recent/order.ini").find("0=f1.xml\r\n") != CString::npos, true);
    Show();
    OpenGroup(0);
    m_stage->Click(Row(0));
    EXPECT_EQ(m_host->picks.back(), "0 " + HostPath("Recent/f1.xml")) << "a recent pick is its own copy";
}

TEST_P(MenuScenario, TheLatestShowCountsAndALaterInitDoesNot) {
    VELDAN_InitProfileMenus(m_host.get(), "/nowhere");
    m_at = {200, 300};
    Show(kPickMessage + 3);
    EXPECT_EQ(m_stage->Seen(m_at), 0x000000U);
    OpenGroup(2);
    m_stage->Click(Row(0));
    EXPECT_EQ(m_host->picks, std::vector{"3 " + HostPath("Music/m0.xml")});
}

TEST_P(MenuScenario, TheHostMayReplaceTheMenuInsideItsPick) {
    m_host->onPick = [this] {
        VELDAN_ReleaseProfileMenus();
        VELDAN_InitProfileMenus(m_host.get(), m_tree.Base().c_str());
    };
    OpenGroup(1);
    m_stage->Click(Row(0));
    EXPECT_EQ(m_host->picks.size(), 1U);
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(m_tree.Read("Recent/order.ini").find("f0.xml"), CString::npos) << "the rest of that pick is left undone";
    m_host->onPick = [] { VELDAN_ReleaseProfileMenus(); };
    Show();
    OpenGroup(2);
    m_stage->Click(Row(1));
    EXPECT_EQ(m_host->picks.back(), "0 " + HostPath("Music/m1.xml"));
    EXPECT_EQ(g_pMenuDialog, nullptr);
}

TEST_P(MenuScenario, AGroupsClickIsNoPick) {
    OpenGroup(2);
    m_stage->Click(Group(2));
    EXPECT_TRUE(m_host->picks.empty());
    EXPECT_TRUE(IsShown());
}

TEST_P(MenuScenario, APressOnTheBareScreenClosesTheMenu) {
    m_stage->Click({900, 700});
    EXPECT_TRUE(m_stage->Eventually([] { return !IsShown(); }));
    EXPECT_TRUE(m_host->picks.empty());
    Show();
    EXPECT_TRUE(IsShown());
}

TEST_P(MenuScenario, APressOnAnotherWindowClosesTheMenu) {
    m_stage->OpenForeignWindow({620, 500, 900, 740});
    m_stage->Wait(400);
    if (!IsShown()) {
        Show();
    }
    OpenGroup(1);
    OpenGroup(2);
    m_stage->Click({700, 700});
    EXPECT_TRUE(m_stage->Eventually([] { return !IsShown(); }));
    Show();
    m_stage->Click(m_host->ClientToScreen({100, 100}));
    EXPECT_TRUE(m_stage->Eventually([] { return !IsShown(); })) << "the host's own window";
}

TEST_P(MenuScenario, ASwitchToAnotherProgramWithThePointerInsideLeavesTheMenu) {
    OpenGroup(1);
    m_stage->OpenForeignWindow({620, 500, 900, 740});
    m_stage->Wait(400);
    m_stage->SwitchToForeignWindow();
    EXPECT_TRUE(m_stage->Eventually([] { return !Desktop::Get().Active(); }));
    EXPECT_TRUE(IsShown());
    m_stage->Click({900, 480});
    EXPECT_TRUE(IsShown()) << "none of its controls has the focus any more";
    VELDAN_HideProfileMenus();
    EXPECT_FALSE(IsShown());
}

TEST_P(MenuScenario, ARestOnAStripShowsItsTip) {
    OpenGroup(1);
    m_stage->Move(m_at + CPoint{330, 9});
    const CPoint tip = m_at + CPoint{330, 9} + CPoint{1, 21};
    EXPECT_NE(m_stage->Seen(tip), 0xffffe1U);
    EXPECT_TRUE(m_stage->Eventually([=, this] { return m_stage->Seen(tip) == 0xffffe1U; }));
}

}  // namespace veldan
