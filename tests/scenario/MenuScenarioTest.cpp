#include "menu/DlgCustomMenu.h"
#include "menu/HostWnd.h"
#include "menu/ProfileTree.h"
#include "support/Stage.h"
#include "veldan/veldan.h"

#include "platform/core/Path.h"
#include "platform/window/Desktop.h"

#include <gtest/gtest.h>

#include <climits>

namespace veldan {

namespace {

constexpr std::uint32_t kSkin = 0x6f3217;
constexpr std::uint32_t kHoverSkin = 0xb3410f;
constexpr std::uint32_t kIcon = 0x0000c8;

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
        m_host = std::make_unique<HostWnd>();
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
    /// Opens a group anew on the shown menu; the files of its first rows that are there, of three at the most.
    [[nodiscard]] std::vector<CString> RowsOf(int group) {
        Show();
        OpenGroup(4);
        OpenGroup(group);
        std::vector<CString> files;
        for (int row = 0; row < 3 && !FileAt(row).empty(); ++row) {
            files.push_back(FileAt(row));
        }
        return files;
    }
    /// What a host does that lets the menu go and makes another.
    void Renew() {
        VELDAN_ReleaseProfileMenus();
        VELDAN_InitProfileMenus(m_host.get(), m_tree.Base().c_str());
    }
    void PickRow(int group, int row) {
        Show();
        OpenGroup(group);
        m_stage->Click(Row(row));
    }
    /// Fills a group and shows the menu that was made anew from it.
    void Refill(const CString& group, int count, const CString& stem) {
        m_tree.Fill(group, count, stem);
        g_pMenuDialog->ReloadCatalogue();
    }
    [[nodiscard]] CString IndexFile(const CString& group = "Recent") const { return m_tree.Read(group + "/order.ini"); }
    /// The index that names these profiles.
    [[nodiscard]] static CString IndexOf(const std::vector<CString>& stems) {
        std::vector<TreeEntry> entries;
        for (const CString& stem : stems) {
            entries.push_back({stem + ".xml", stem + ".png"});
        }
        return ProfileTree::Index(entries);
    }

    ProfileTree m_tree;
    std::unique_ptr<Stage> m_stage;
    std::unique_ptr<HostWnd> m_host;
    CPoint m_at{60, 60};
};

INSTANTIATE_TEST_SUITE_P(Displays, MenuScenario,
                         ::testing::Values(StageKind::Memory, StageKind::X11, StageKind::X11WithManager),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(MenuScenario, RestingOnAGroupOpensIt) {
    EXPECT_EQ(m_stage->Seen(m_at), 0x000000U) << "the frame";
    EXPECT_EQ(m_stage->Seen(m_at + CPoint{153, 100}), 0x000000U) << "the separator";
    EXPECT_EQ(m_stage->Seen(m_at + CPoint{300, 100}), kSkin);
    EXPECT_EQ(IconSeen(0), kSkin) << "nothing is open yet";
    OpenGroup(1);
    EXPECT_EQ(m_stage->Seen(Group(1) + CPoint{40, 0}), kHoverSkin);
    EXPECT_EQ(IconSeen(0), kIcon);
    EXPECT_EQ(IconSeen(2), kIcon);
    OpenGroup(4);
    EXPECT_EQ(m_stage->Seen(Group(1) + CPoint{40, 0}), kSkin);
    EXPECT_EQ(IconSeen(0), kSkin) << "a group without profiles";
    EXPECT_EQ(RowsOf(3), (std::vector<CString>{"p0.xml", "p1.xml"}));
    m_stage->Click(Group(3));
    EXPECT_TRUE(m_host->picks.empty()) << "a group's click is no pick";
    EXPECT_TRUE(IsShown());
    m_stage->Move(m_at + CPoint{-20, -20});
    m_stage->Wait(20);
    EXPECT_EQ(m_stage->Seen(Group(3) + CPoint{40, 0}), kHoverSkin) << "it stays open";
    VELDAN_HideProfileMenus();
    m_stage->Move(Group(1));
    Show();
    EXPECT_TRUE(m_stage->Eventually([] { return g_pMenuDialog->OpenGroupID() == 4001; }))
        << "under the resting pointer";
    VELDAN_HideProfileMenus();
    m_at.y -= 60;
    Show();
    EXPECT_TRUE(m_stage->Eventually([] { return g_pMenuDialog->OpenGroupID() == 4003; })) << "another one there now";
    EXPECT_EQ(m_stage->Seen(Group(1) + CPoint{40, 0}), kSkin);
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
    const auto roundTrips = Desktop::Get().GetDisplay().RoundTrips();
    g_pMenuDialog->Invalidate();
    Desktop::Get().Dispatch();
    EXPECT_EQ(Desktop::Get().GetDisplay().RoundTrips(), roundTrips) << "a paint waits for no answer";
}

TEST_P(MenuScenario, WheelAndStripsScrollTheRowsAndTheWheelOverTheGroupsSlides) {
    OpenGroup(1);
    m_stage->Move(m_at + CPoint{150, 1});
    m_stage->Wheel(-1);
    EXPECT_EQ(FileAt(0), "f1.xml");
    m_stage->Wheel(2);
    EXPECT_EQ(FileAt(0), "f0.xml") << "no further than the top";
    m_stage->Wheel(-9);
    EXPECT_EQ(FileAt(0), "f4.xml") << "four rows are left";
    m_stage->Click(m_at + CPoint{330, 174});
    EXPECT_EQ(FileAt(0), "f4.xml");
    m_stage->Click(m_at + CPoint{330, 9});
    EXPECT_EQ(FileAt(0), "f3.xml");
    // A menu that overhangs its owner's bottom is slid up by the wheel's own distance.
    const CRect owner = m_host->GetWindowRect();
    m_at.y = owner.bottom;
    Show();
    m_stage->Move(m_at + CPoint{149, 1});
    m_stage->Wheel(-1);
    EXPECT_EQ(g_pMenuDialog->GetWindowRect().top, m_at.y - 120);
    EXPECT_EQ(g_pMenuDialog->OpenGroupID(), 4001);
}

TEST_P(MenuScenario, APickTellsTheHostEntersRecentAndClosesTheMenu) {
    m_host->onPick = [this] {
        EXPECT_TRUE(IsShown()) << "the host hears first";
        EXPECT_EQ(IndexFile(), IndexOf({}));
    };
    PickRow(1, 1);
    m_host->onPick = nullptr;
    ASSERT_EQ(m_host->picks, std::vector{HostPath("Films/f1.xml")});
    EXPECT_FALSE(IsShown());
    m_stage->Wait(20);
    EXPECT_NE(m_stage->Seen(Group(4) + CPoint{40, 0}), kSkin);
    EXPECT_EQ(IndexFile(), IndexOf({"f1"}));
    PickRow(0, 0);
    EXPECT_EQ(m_host->picks.back(), HostPath("Recent/f1.xml")) << "a recent pick is its own copy";
}

TEST_P(MenuScenario, TheLatestShowCountsAndALaterInitDoesNot) {
    VELDAN_InitProfileMenus(m_host.get(), "/nowhere");
    m_at = {200, 300};
    Show(kPickMessage + 3);
    EXPECT_EQ(m_stage->Seen(m_at), 0x000000U);
    OpenGroup(2);
    m_stage->Click(Row(0));
    EXPECT_EQ(m_host->picks, std::vector{HostPath("Music/m0.xml")});
    EXPECT_EQ(m_host->lastMessage, kPickMessage + 3);
}

TEST_P(MenuScenario, AMenuThatAnotherProgramUnmappedIsHiddenAndTheNextShowBringsItBack) {
    const HWND menu = g_pMenuDialog->GetSafeHwnd();
    m_stage->Unmap(menu);
    EXPECT_TRUE(m_stage->Eventually([] { return !IsShown(); }));
    Show();
    OpenGroup(1);
    EXPECT_EQ(IconSeen(0), kIcon);
    constexpr int kFar = 16384;
    for (const int beyond : {INT_MAX, INT_MIN}) {
        VELDAN_ShowProfileMenus(m_host.get(), beyond, beyond, kPickMessage);
        EXPECT_EQ(g_pMenuDialog->GetWindowRect().TopLeft(), beyond > 0 ? CPoint(kFar, kFar) : CPoint(-kFar, -kFar));
    }
    Show();
    EXPECT_TRUE(m_stage->Eventually([this] { return IconSeen(0) == kIcon; }));
}

TEST_P(MenuScenario, TheHostMayReplaceTheMenuInsideItsPick) {
    m_host->onPick = [this] { Renew(); };
    PickRow(1, 0);
    EXPECT_EQ(m_host->picks.size(), 1U);
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(IndexFile(), IndexOf({})) << "the rest of that pick is left undone";
    m_host->onPick = [this] {
        Renew();
        Show();
    };
    PickRow(1, 0);
    EXPECT_TRUE(IsShown());
    m_host->onPick = [] { VELDAN_ReleaseProfileMenus(); };
    PickRow(2, 1);
    EXPECT_EQ(m_host->picks.back(), HostPath("Music/m1.xml"));
    EXPECT_EQ(g_pMenuDialog, nullptr);
    EXPECT_EQ(Desktop::Get().WindowCount(), 1U);
}

TEST_P(MenuScenario, APickIsEnteredWhateverTheHostCallsInsideIt) {
    const std::pair<const char*, std::function<void()>> calls[] = {
        {"Hide", [] { VELDAN_HideProfileMenus(); }},
        {"Hide and Show elsewhere",
         [this] {
             VELDAN_HideProfileMenus();
             m_at = {90, 30};
             Show();
         }},
        {"a reload", [] { g_pMenuDialog->ReloadCatalogue(); }},
    };
    std::vector<CString> entered;
    for (const auto& [name, call] : calls) {
        SCOPED_TRACE(name);
        m_host->onPick = call;
        entered.push_back(Format("f%zu", entered.size()));
        PickRow(1, static_cast<int>(entered.size()) - 1);
        EXPECT_EQ(m_host->picks.size(), entered.size());
        EXPECT_FALSE(IsShown());
        EXPECT_EQ(IndexFile(), IndexOf(entered));
        EXPECT_TRUE(m_stage->Eventually([this] { return m_stage->Seen(Group(5)) != kSkin; }));
    }
    EXPECT_EQ(RowsOf(0), (std::vector<CString>{"f0.xml", "f1.xml", "f2.xml"}));
}

TEST_P(MenuScenario, APickInsideAPickMayEvictTheOuterRow) {
    Refill("Recent", 10, "r");
    m_host->onPick = [this] {
        if (m_host->picks.size() == 1) {
            PickRow(1, 0);
            EXPECT_FALSE(IsShown());
        }
    };
    PickRow(0, 0);
    EXPECT_EQ(m_host->picks, (std::vector{HostPath("Recent/r0.xml"), HostPath("Films/f0.xml")}));
    EXPECT_EQ(IndexFile(), IndexOf({"r1", "r2", "r3", "r4", "r5", "r6", "r7", "r8", "r9", "f0"}));
    EXPECT_FALSE(m_tree.Names("Recent").contains("r0.xml"));
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(RowsOf(0), (std::vector<CString>{"r1.xml", "r2.xml", "r3.xml"}));
}

TEST_P(MenuScenario, ARowWhoseEntryGoesFromTheFileInsideItsPickChangesNothing) {
    Refill("Recent", 3, "r");
    const CString copy = m_tree.Read("Recent/r1.xml");
    m_host->onPick = [this] { m_tree.Write("Recent/order.ini", IndexOf({"r2"})); };
    PickRow(0, 1);
    EXPECT_EQ(IndexFile(), IndexOf({"r2"}));
    EXPECT_EQ(m_tree.Read("Recent/r1.xml"), copy);
    EXPECT_EQ(RowsOf(0), std::vector<CString>{"r2.xml"}) << "the rows are made anew";
}

TEST_P(MenuScenario, ARowThatGoesInsideItsPickLeavesNothingBehind) {
    for (const auto& [group, id] : {std::pair{"Recent", 0}, std::pair{"UserDefine", 5}}) {
        SCOPED_TRACE(group);
        Refill(group, 1, "x");
        m_host->picks.clear();
        m_host->onPick = [] { g_pMenuDialog->RemoveProfileByFile("x0.xml"); };
        PickRow(id, 0);
        EXPECT_EQ(m_host->picks.size(), 1U);
        EXPECT_FALSE(IsShown());
        EXPECT_EQ(IndexFile(group), IndexOf({}));
        EXPECT_EQ(IndexFile(), IndexOf({})) << "it is no recent profile either";
        EXPECT_EQ(RowsOf(id), std::vector<CString>{});
        m_stage->Click(Row(0));
        EXPECT_EQ(m_host->picks.size(), 1U) << "where it was is nothing";
    }
}

TEST_P(MenuScenario, AHostMayDestroyItsWindowInsideItsPick) {
    HostWnd other;
    other.CreateEx(0, CWnd::kPlainClass, "other", WS_VISIBLE, {620, 500, 960, 740}, {}, 0);
    m_stage->LetFramesSettle();
    VELDAN_ShowProfileMenus(&other, m_at.x, m_at.y, kPickMessage);
    other.onPick = [&other] { other.DestroyWindow(); };
    OpenGroup(1);
    m_stage->Click(Row(0));
    EXPECT_EQ(other.picks.size(), 1U);
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(IndexFile(), IndexOf({"f0"}));
    EXPECT_EQ(RowsOf(0), std::vector<CString>{"f0.xml"});
}

TEST_P(MenuScenario, AnOwnerDestroyedInsideThePickTakesTheMenuAlong) {
    Refill("Recent", 2, "r");
    m_host->onPick = [this] { m_host->DestroyWindow(); };
    PickRow(0, 0);
    EXPECT_EQ(Desktop::Get().WindowCount(), 0U);
    EXPECT_TRUE(m_stage->Eventually([this] { return m_stage->Seen(Group(5)) != kSkin; }));
    m_stage->Click(Row(0));
    g_pMenuDialog->ReloadCatalogue();
    g_pMenuDialog->OnSmallMenuButtonItemChange(4001, 0);
    g_pMenuDialog->OnScrollDown();
    VELDAN_HideProfileMenus();
    Show();
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(m_host->picks.size(), 1U);
    EXPECT_EQ(IndexFile(), IndexOf({"r0", "r1"}));
}

TEST_P(MenuScenario, APressOutsideClosesTheMenuAndPicksNothing) {
    m_stage->Click({900, 700});
    EXPECT_TRUE(m_stage->Eventually([] { return !IsShown(); })) << "the bare screen";
    Show();
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
    EXPECT_TRUE(m_host->picks.empty());
}

TEST_P(MenuScenario, ASwitchToAnotherProgramWithThePointerInsideLeavesTheMenuToTheNextPressOutside) {
    OpenGroup(1);
    m_stage->OpenForeignWindow({620, 500, 900, 740});
    m_stage->Wait(400);
    m_stage->SwitchToForeignWindow();
    EXPECT_TRUE(m_stage->Eventually([] { return !Desktop::Get().Active(); }));
    EXPECT_TRUE(IsShown());
    m_stage->Click(Group(2));
    EXPECT_TRUE(IsShown()) << "a press inside is none outside";
    const std::pair<const char*, CPoint> places[] = {
        {"the other program", {700, 700}}, {"the bare screen", {1000, 760}}, {"the host", {900, 200}}};
    for (const auto& [name, place] : places) {
        SCOPED_TRACE(name);
        Show();
        OpenGroup(1);
        m_stage->Wait(400);
        m_stage->SwitchToForeignWindow();
        EXPECT_TRUE(m_stage->Eventually([] { return !Desktop::Get().Active(); }));
        EXPECT_TRUE(IsShown());
        m_stage->Click(place);
        EXPECT_TRUE(m_stage->Eventually([] { return !IsShown(); }));
    }
}

}  // namespace veldan
