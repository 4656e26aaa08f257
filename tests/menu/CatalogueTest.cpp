#include "menu/MenuFixture.h"
#include "platform/core/Path.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <random>
#include <set>

#include <sys/stat.h>

namespace veldan {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class CatalogueTest : public MenuTest {
protected:
    [[nodiscard]] static const MenuItem& Group(int number) { return *Menu().FindLevel1Item(kFirstGroupID + number); }
    [[nodiscard]] static const MenuItem& Item(int id) { return *Menu().FindLevel2Item(id); }
    [[nodiscard]] static std::vector<int> IDsOf(int group) {
        std::vector<int> ids;
        for (const auto& [strKey, pItem] : Group(group).m_mapLevel2Menu) {
            EXPECT_EQ(strKey, Format("%d", pItem->m_iID));
            ids.push_back(pItem->m_iID);
        }
        std::ranges::sort(ids);
        return ids;
    }
    [[nodiscard]] static CRect PlaceOf(const CWnd& window) { return Menu().ScreenToClient(window.GetWindowRect()); }
};

TEST_F(CatalogueTest, GroupsAndProfilesStandWhereTheirNumbersTell) {
    m_tree.Groups({"Recent", "Movies", "Music"});
    m_tree.Fill("Movies", 3);
    Init();
    EXPECT_EQ(Menu().GetWindowRect().Size(), (CSize{507, 94}));
    EXPECT_FALSE(Menu().IsWindowVisible());
    EXPECT_EQ(PlaceOf(*Group(2).m_pButton), (CRect{2, 62, 152, 92}));
    const MenuItem& item = Item(1002);
    EXPECT_EQ(PlaceOf(*item.m_pButton), (CRect{155, 117, 505, 167}));
    EXPECT_EQ(item.m_iIndex, 2);
    EXPECT_EQ(item.m_pParent, &Group(1));
    EXPECT_EQ(item.m_strName, "Name p2");
    EXPECT_EQ(item.m_pButton->GetDescription(), "Comment p2");
    EXPECT_EQ(item.m_pButton->GetWindowText(), "p2.xml");
    EXPECT_TRUE(item.m_pButton->HasImage());
}

TEST_F(CatalogueTest, RewrittenGroupsTakeNoOrdinaryIdsAndStarsAtTheEndAreAMark) {
    m_tree.Groups({"A**", "Recent*", "Th*ree", "UserDefine"});
    m_tree.Fill("A", 2);
    m_tree.Fill("Recent", 4);
    m_tree.Fill("Th*ree", 3);
    m_tree.Fill("UserDefine", 1);
    Init();
    EXPECT_THAT(IDsOf(0), ElementsAre(1000, 1001));
    EXPECT_THAT(IDsOf(1), ElementsAre(4550, 4551, 4552, 4553));
    EXPECT_THAT(IDsOf(2), ElementsAre(1002, 1003, 1004));
    EXPECT_THAT(IDsOf(3), ElementsAre(4600));
    EXPECT_EQ(Menu().GetRecentGroupID(), 4001);
    EXPECT_EQ(Menu().GetUserDefineGroupID(), 4003);
    EXPECT_EQ(Group(0).m_strFolder, "A");
    EXPECT_EQ(Group(0).m_pButton->GetCaption(), "A*");
    EXPECT_EQ(Group(1).m_pButton->GetCaption(), "Recent*");
    EXPECT_EQ(Group(2).m_pButton->GetCaption(), "Th*ree");
}

TEST_F(CatalogueTest, AMissingEntryIsABlankRowInItsPlace) {
    m_tree.Groups({"A"});
    m_tree.Fill("A", 3);
    m_tree.Write("A/order.ini", "[Order]\r\n7=p1.xml\r\n2=p2.xml\r\n0=p0.xml\r\nNum=3\r\np2.xml=p2.png\r\n");
    Init();
    EXPECT_EQ(Item(1000).m_strName, "Name p0");
    EXPECT_EQ(Item(1001).m_strXml, "");
    EXPECT_EQ(Item(1001).m_pButton->GetCaption(), "");
    EXPECT_FALSE(Item(1001).m_pButton->HasImage());
    EXPECT_EQ(Item(1002).m_iIndex, 2);
    EXPECT_TRUE(Item(1002).m_pButton->HasImage());
    EXPECT_EQ(Menu().Items().size(), 3U);
}

TEST_F(CatalogueTest, TextsWithoutAnIconFileStandBesideANeutralPicture) {
    constexpr std::uint32_t kSkin = 0x6f3217;
    m_tree.Groups({"A", "B", "C", "D", "E", "F"});
    m_tree.Fill("A", 3);
    for (const char* file : {"Picture/A.png", "A/p0.png", "A/p2.png", "A/p2.xml"}) {
        std::filesystem::remove(m_tree.Folder() / (CString("Profiles/") + file));
    }
    m_tree.Write("A/p1.png", "damaged");
    InitAndShow();
    const auto coloursFrom = [this](CPoint at, int side) {
        std::set<std::uint32_t> colours;
        for (int i = 0; i < side * side; ++i) {
            colours.insert(Seen(kMenuAt + at + CPoint{i % side, i / side}));
        }
        return colours;
    };
    EXPECT_THAT(coloursFrom({9, 9}, 16), AllOf(Contains(kSkin), SizeIs(Gt(1))));
    Open(0);
    EXPECT_THAT(coloursFrom({162, 24}, 35), AllOf(Contains(kSkin), SizeIs(Gt(1))));
    EXPECT_THAT(coloursFrom({162, 74}, 35), ElementsAre(kSkin)) << "damaged";
    EXPECT_THAT(coloursFrom({162, 124}, 35), ElementsAre(0U)) << "blank";
}

TEST_F(CatalogueTest, CountsAreTakenAsFarAsTheyMakeSenseAndIdsReach) {
    const std::pair<const char*, const char*> counts[] = {
        {"Minus", "-4"},        {"Text", "many"}, {"A", "2000"},        {"Recent", "80"},
        {"UserDefine", "4000"}, {"None", ""},     {"B", "99999999999"}, {"C", "1"}};
    std::vector<CString> names;
    for (const auto& [name, count] : counts) {
        names.emplace_back(name);
        m_tree.Write(names.back() + "/order.ini", CString("[Order]\r\n0=a.xml\r\nNum=") + count + "\r\n");
    }
    m_tree.Groups(names);
    Init();
    std::vector<int> rows;
    for (int group = 0; group < 8; ++group) {
        rows.push_back(Group(group).m_iMenuNum);
    }
    EXPECT_THAT(rows, ElementsAre(0, 0, 2000, 50, 2900, 0, 997, 0));
    EXPECT_TRUE(Menu().FindLevel2Item(3996));
    EXPECT_EQ(Menu().Items().size(), 2997U + 50 + 2900);
}

TEST_F(CatalogueTest, GroupsAreMadeAsFarAsIdsReach) {
    m_tree.Write("order.ini", "[Order]\r\nNum=2147483647\r\n");
    m_tree.Write("Recent/order.ini", "[Order]\r\nNum=1\r\n");
    Init();
    EXPECT_EQ(Menu().Groups().size(), 549U);
    EXPECT_EQ(Menu().GetWindowRect().Height(), 549 * 30 + 4);
}

TEST_F(CatalogueTest, WhatIsNamedAgainAndAgainIsLoadedAFewTimes) {
    const CString lines(1'000'000, '\n');
    const std::pair<CString, int> indexes[] = {{"[Order]\r\nNum=2000\r\n", 6397}, {"[Order]\nNum=1" + lines, 9}};
    for (const auto& [index, most] : indexes) {
        m_tree.Groups(std::vector<CString>(100, "UserDefine"));
        m_tree.Write("UserDefine/order.ini", index);
        Init();
        int rows = 0;
        for (int group = 0; group < 100; ++group) {
            rows += Group(group).m_iMenuNum;
        }
        EXPECT_EQ(rows, most);
        Menu().AddUserDefine("a.xml");
        EXPECT_GT(Group(0).m_iMenuNum, 1) << "that is about one group";
        VELDAN_ReleaseProfileMenus();
    }
}

TEST_F(CatalogueTest, AnIconsNameLongerThanAnyFileHasIsNotKept) {
    m_tree.Groups({"A"});
    m_tree.Write("A/order.ini", ProfileTree::Index({{"a.xml", CString(4096, 'x')}, {"b.xml", CString(4097, 'x')}}));
    Init();
    EXPECT_EQ(Item(1000).m_strPng.size(), 4096U);
    EXPECT_EQ(Item(1001).m_strPng, "");
}

TEST_F(CatalogueTest, NothingIsOpenedOutsideOfAGroupsFolder) {
    m_tree.Folder().Write("secret.xml", ProfileTree::Profile("Secret", ""));
    m_tree.Folder().Write("secret.png", ProfileTree::Icon(RGB(1, 2, 3)));
    m_tree.Folder().Write("order.ini", "[Order]\r\nNum=1\r\n0=secret.xml\r\nsecret.xml=secret.png\r\n");
    m_tree.Groups({"A", "..", "A/../.."});
    m_tree.Write("A/order.ini", ProfileTree::Index({{"../../secret.xml", "..\\..\\secret.png"}}));
    Init();
    EXPECT_EQ(Item(1000).m_strXml, "../../secret.xml");
    EXPECT_EQ(Item(1000).m_strName, "");
    EXPECT_FALSE(Item(1000).m_pButton->HasImage());
    EXPECT_EQ(Group(1).m_iMenuNum, 0);
    EXPECT_EQ(Group(2).m_iMenuNum, 0);
}

TEST_F(CatalogueTest, OfTwoGroupsOfOneNameTheLaterHasTheRowsAndANamelessOneHasARowPerGroup) {
    m_tree.Groups({"Recent", "Recent*", "", "B"});
    m_tree.Fill("Recent", 2);
    m_tree.Fill("B", 1);
    Init();
    EXPECT_THAT(IDsOf(0), IsEmpty());
    EXPECT_THAT(IDsOf(1), ElementsAre(4550, 4551));
    EXPECT_EQ(Menu().GetRecentGroupID(), 4000);
    EXPECT_THAT(IDsOf(2), ElementsAre(1000, 1001, 1002, 1003));
    EXPECT_EQ(Item(1003).m_strXml, "B");
    EXPECT_EQ(Item(1003).m_strName, "");
    EXPECT_THAT(IDsOf(3), ElementsAre(1004));
    // The dialog, four groups, seven rows, two strips with their tips, the add button, and the host.
    EXPECT_EQ(TheDesktop().WindowCount(), 18U);
}

TEST_F(CatalogueTest, NamesAreShownAsTheyStandInTheFile) {
    m_tree.Groups({"A"});
    m_tree.Fill("A", 4);
    m_tree.Write(
        "A/p0.xml",
        "\t <ProfileComment value=\"a &amp; \xe4\"/> \r\n  <ProfileName value=\"\"/>\n<ProfileName value=\"x\"/>\n");
    m_tree.Write("A/p1.xml", "<Profile><ProfileName value=\"inside\"/>\n<ProfileName value=\"a\n");
    m_tree.Write("A/p2.xml", "");
    chmod(m_tree.Write("A/p3.xml", ProfileTree::Profile("read only", "")).c_str(), 0444);
    Init();
    EXPECT_EQ(Item(1000).m_strComment, "a &amp; \xe4");
    for (int id = 1000; id < 1004; ++id) {
        EXPECT_EQ(Item(id).m_strName, "") << id;
    }
}

TEST_F(CatalogueTest, FilesThatAreNoneGiveASmallerMenu) {
    m_tree.Groups({"A", "B"});
    m_tree.Fill("A", 3);
    std::filesystem::create_directories(m_tree.Folder() / "Profiles/B/order.ini");
    std::filesystem::remove(m_tree.Folder() / "Profiles/A/p0.xml");
    std::filesystem::create_directories(m_tree.Folder() / "Profiles/A/p0.xml");
    m_tree.Write("A/p1.png", "no picture");
    std::filesystem::resize_file(m_tree.Write("A/p2.xml", ""), 100'000'000);
    std::filesystem::resize_file(m_tree.Write("A/p2.png", ""), 100'000'000);
    InitAndShow();
    Open(0);
    EXPECT_THAT(ShownRows(), ElementsAre("p0.xml", "p1.xml"));
    EXPECT_EQ(Group(1).m_iMenuNum, 0);
    EXPECT_TRUE(Item(1001).m_pButton->HasImage());
}

TEST_F(CatalogueTest, IconsBeyondAllMeasureAreNotKept) {
    Surface noise(256, 256);
    std::mt19937 random(1);
    std::generate_n(noise.Row(0), 256 * 256, [&] { return random() | 0xff000000; });
    m_tree.Groups({"A"});
    m_tree.Write("A/noise.png", EncodePng(noise, PngAlpha::Keep));
    m_tree.Write("A/order.ini", ProfileTree::Index(std::vector<TreeEntry>(600, {"p.xml", "noise.png"})));
    Init();
    std::size_t kept = 0;
    for (const auto& [strKey, pItem] : Menu().Items()) {
        EXPECT_TRUE(pItem->m_pButton->HasImage());
        kept += pItem->m_pButton->GetImageBytes();
    }
    EXPECT_GT(kept, 90'000'000U);
    EXPECT_LT(kept, 102'000'000U);
    Menu().ClearGroupItems(kFirstGroupID);
    Menu().ReloadCatalogue();
    EXPECT_GT(Item(1000).m_pButton->GetImageBytes(), 190'000U);
}

TEST_F(CatalogueTest, ReloadReadsEverythingAnewAndHidesTheMenu) {
    m_tree.Groups({"A", "B"});
    m_tree.Fill("A", 9);
    InitAndShow();
    Open(0);
    Person().Click(kMenuAt + CPoint{300, 55});
    Menu().OnScrollDown();
    m_tree.Groups({"C", "A", "B"});
    EXPECT_EQ(Menu().ReloadCatalogue(), TRUE);
    EXPECT_FALSE(Menu().IsWindowVisible());
    EXPECT_EQ(Menu().OpenGroupID(), kFirstGroupID);
    EXPECT_EQ(Menu().GetWindowRect().Height(), 94);
    Show();
    EXPECT_THAT(ShownRows(), IsEmpty());
    Open(1);
    EXPECT_THAT(ShownRows(), ElementsAre("p0.xml", "p1.xml", "p2.xml"));
    EXPECT_EQ(PlaceOf(Strip(kScrollDownID)).top, 47);
}

TEST_F(CatalogueTest, WithoutABaseFolderProfilesStandBesideTheProgramAndWithoutAnIndexThereAreNone) {
    VELDAN_InitProfileMenus(&m_host, "");
    CString strBase;
    Menu().GetBasePath(strBase);
    EXPECT_EQ(strBase, ToHostPath(std::filesystem::read_symlink("/proc/self/exe").parent_path().string()));
    EXPECT_EQ(Menu().GetWindowRect().Size(), (CSize{507, 4}));
    Show();
    EXPECT_TRUE(Menu().IsWindowVisible());
    EXPECT_THAT(Menu().Groups(), IsEmpty());
    EXPECT_EQ(CWnd::GetFocus(), &Strip(kScrollUpID));
}

}  // namespace
}  // namespace veldan
