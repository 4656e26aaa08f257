#include "menu/MenuFixture.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace veldan {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

/// "A" has twelve profiles with the ids 1000 to 1011, "B" two with the same file names as its first.
class RecentTest : public MenuTest {
protected:
    RecentTest() {
        m_tree.Groups({"A", "Recent", "B", "D", "E", "F"});
        m_tree.Fill("A", 12);
        m_tree.Fill("B", 2);
        m_tree.Fill("Recent", 0);
        Init();
    }
    [[nodiscard]] static std::vector<CString> Rows() {
        std::vector<CString> names;
        for (int id = kFirstRecentID; const MenuItem* pItem = Menu().FindLevel2Item(id); ++id) {
            names.push_back(pItem->m_strXml);
        }
        return names;
    }
    [[nodiscard]] CString IndexFile() const { return m_tree.Read("Recent/order.ini"); }
    void Pick(int first, int count) {
        for (int id = first; id < first + count; ++id) {
            Menu().AddRecent(id);
        }
    }
};

TEST_F(RecentTest, APickIsCopiedAndEnteredLast) {
    Pick(1000, 2);
    EXPECT_EQ(IndexFile(),
              "\xef\xbb\xbf[Order]\r\nNum=2\r\n0=p0.xml\r\np0.xml=p0.png\r\n1=p1.xml\r\np1.xml=p1.png\r\n");
    EXPECT_EQ(m_tree.Read("Recent/p1.xml"), m_tree.Read("A/p1.xml"));
    EXPECT_EQ(m_tree.Read("Recent/p1.png"), m_tree.Read("A/p1.png"));
    EXPECT_THAT(Rows(), ElementsAre("p0.xml", "p1.xml"));
    EXPECT_EQ(Menu().FindLevel2Item(4551)->m_strName, "Name p1");
    EXPECT_FALSE(Menu().FindLevel2Item(4551)->m_pButton->IsWindowVisible());
}

TEST_F(RecentTest, AProfileThatIsThereKeepsItsPlaceAndItsCopy) {
    Pick(1000, 2);
    const CString strCopy = m_tree.Read("Recent/p0.xml");
    const CString strIndex = IndexFile();
    m_tree.Write("A/p0.xml", "changed");
    Menu().AddRecent(1000);
    // The one of another group with the same file name, and the row of the copy itself.
    Menu().AddRecent(1012);
    Menu().AddRecent(4550);
    EXPECT_EQ(IndexFile(), strIndex);
    EXPECT_EQ(m_tree.Read("Recent/p0.xml"), strCopy);
}

TEST_F(RecentTest, TheEleventhPickDropsTheOldestWithItsFiles) {
    Pick(1000, 11);
    EXPECT_EQ(Menu().Recent().m_iCount, 10);
    EXPECT_THAT(Rows(), ElementsAre("p1.xml", "p2.xml", "p3.xml", "p4.xml", "p5.xml", "p6.xml", "p7.xml", "p8.xml",
                                    "p9.xml", "p10.xml"));
    EXPECT_EQ(Menu().Recent().m_arrIDs.back(), 4559U);
    EXPECT_EQ(m_tree.Names("Recent").size(), 21U);
    EXPECT_THAT(m_tree.Names("Recent"), Not(Contains("p0.xml")));
}

TEST_F(RecentTest, AListMadeLongerByHandKeepsItsLength) {
    std::vector<TreeEntry> entries;
    for (int i = 0; i < 60; ++i) {
        entries.push_back({Format("x%d.xml", i), "x.png"});
    }
    m_tree.Write("Recent/order.ini", ProfileTree::Index(entries));
    m_tree.Write("Recent/x.png", "icon");
    Menu().AddRecent(1000);
    EXPECT_EQ(Menu().Recent().Size(), 60);
    EXPECT_EQ(Menu().Recent().m_arrXml.front(), "x1.xml");
    EXPECT_EQ(Rows().size(), 50U);
    EXPECT_THAT(m_tree.Names("Recent"), Contains("x.png"));
}

TEST_F(RecentTest, ASharedIconGoesWithTheLastEntryThatNamesIt) {
    m_tree.Write("A/order.ini", ProfileTree::Index({{"p0.xml", "Both.png"}, {"p1.xml", "both.png"}}));
    m_tree.Write("A/both.png", ProfileTree::Icon(RGB(9, 9, 9)));
    Menu().ReloadCatalogue();
    Pick(1000, 2);
    Menu().DeleteRecent(4550);
    EXPECT_THAT(m_tree.Names("Recent"), ElementsAre("Both.png", "order.ini", "p1.xml"));
    EXPECT_TRUE(Menu().FindLevel2Item(4550)->m_pButton->HasImage());
    Menu().DeleteRecent(4550);
    EXPECT_THAT(m_tree.Names("Recent"), ElementsAre("order.ini"));
}

TEST_F(RecentTest, AnEntryWithoutItsFilesIsOneAllTheSame) {
    m_tree.Write("Recent/p0.png", "left behind");
    std::filesystem::remove(m_tree.Folder() / "Profiles/A/p0.xml");
    std::filesystem::remove(m_tree.Folder() / "Profiles/A/p0.png");
    Menu().AddRecent(1000);
    EXPECT_THAT(Rows(), ElementsAre("p0.xml"));
    EXPECT_THAT(m_tree.Names("Recent"), ElementsAre("order.ini"));
    EXPECT_FALSE(Menu().FindLevel2Item(4550)->m_pButton->HasImage());
}

TEST_F(RecentTest, ARowWhoseEntryIsGoneKeepsItsOnlyCopy) {
    Pick(1000, 2);
    const CString strCopy = m_tree.Read("Recent/p0.xml");
    m_tree.Write("Recent/order.ini", "[Order]\r\nNum=0\r\n");
    Menu().AddRecent(4550);
    EXPECT_EQ(m_tree.Read("Recent/p0.xml"), strCopy);
    EXPECT_THAT(Rows(), ElementsAre("p0.xml"));
}

TEST_F(RecentTest, OnlyFilesThatRowAndListAgreeOnGo) {
    Pick(1000, 3);
    m_tree.Write("Recent/order.ini",
                 ProfileTree::Index({{"p2.xml", "p2.png"}, {"p1.xml", "p1.png"}, {"p0.xml", "p0.png"}}));
    Menu().DeleteRecent(4550);
    EXPECT_THAT(Rows(), ElementsAre("p1.xml", "p0.xml"));
    EXPECT_THAT(m_tree.Names("Recent"), Contains("p2.xml"));
    EXPECT_THAT(m_tree.Names("Recent"), Contains("p0.xml"));
    Menu().DeleteRecent(4559);
    EXPECT_EQ(Menu().Recent().m_iCount, 2);
    EXPECT_THAT(Rows(), ElementsAre("p1.xml", "p0.xml"));
}

TEST_F(RecentTest, NamesThatLeadElsewhereTouchNothingThere) {
    m_tree.Write("A/order.ini",
                 ProfileTree::Index({{"../B/p0.xml", "..\\B\\p0.png"}, {"order.ini", ""}, {"", ""}, {"..", "."}}));
    Menu().ReloadCatalogue();
    const CString strProfile = m_tree.Read("B/p0.xml");
    Pick(1000, 4);
    EXPECT_THAT(Rows(), ElementsAre("../B/p0.xml", "order.ini", "", ".."));
    while (!Rows().empty()) {
        Menu().DeleteRecent(4550);
    }
    EXPECT_EQ(m_tree.Read("B/p0.xml"), strProfile);
    EXPECT_THAT(m_tree.Names("B"), Contains("p0.png"));
    EXPECT_THAT(m_tree.Names("Recent"), ElementsAre("order.ini"));
    EXPECT_EQ(IndexFile(), "\xef\xbb\xbf[Order]\r\nNum=0\r\n");
}

TEST_F(RecentTest, NamesInEveryScriptAreKept) {
    const CString strLong(250, 'n');
    const std::vector<TreeEntry> entries = {{"\xd0\x9c\xd0\xb8\xd1\x80 \xe2\x99\xab.xml", "\xe7\x94\xbb.png"},
                                            {"a & b's.v2.xml", "a b.png"},
                                            {strLong + ".xml", "a b.png"},
                                            {"x=y.xml", "a b.png"},
                                            {"bad\xff.xml", "a b.png"}};
    for (const TreeEntry& entry : entries) {
        m_tree.Write("A/" + entry.strXml, ProfileTree::Profile("N " + entry.strXml, ""));
        m_tree.Write("A/" + entry.strPng, ProfileTree::Icon(RGB(7, 7, 7)));
    }
    m_tree.Write("A/order.ini", ProfileTree::Index(entries));
    Menu().ReloadCatalogue();
    Pick(1000, 5);
    ASSERT_EQ(Rows().size(), entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const MenuItem& item = *Menu().FindLevel2Item(kFirstRecentID + static_cast<int>(i));
        EXPECT_EQ(item.m_strXml, entries[i].strXml);
        EXPECT_EQ(item.m_strName, "N " + entries[i].strXml);
        // A line's key ends at the first "=", so that icon's can't be found.
        EXPECT_EQ(item.m_pButton->HasImage(), entries[i].strXml != "x=y.xml");
    }
}

TEST_F(RecentTest, KeysOfTheIndexAsFileNamesDoNoHarm) {
    m_tree.Write("A/order.ini", ProfileTree::Index({{";c.xml", "c.png"}, {"p0.xml", "p0.png"}, {"[h].xml", "h.png"}}));
    m_tree.Write("A/[h].xml", ProfileTree::Profile("H", ""));
    Menu().ReloadCatalogue();
    for (const int id : {1000, 1002, 1001}) {
        Menu().AddRecent(id);
    }
    EXPECT_THAT(Rows(), ElementsAre(";c.xml", "[h].xml", "p0.xml"));
    EXPECT_EQ(Menu().FindLevel2Item(4551)->m_strName, "H");
    EXPECT_TRUE(Menu().FindLevel2Item(4552)->m_pButton->HasImage());
}

TEST_F(RecentTest, WithoutFolderOrGroupNothingHappens) {
    std::filesystem::remove_all(m_tree.Folder() / "Profiles/Recent");
    Menu().AddRecent(1000);
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_THAT(m_tree.Names(""), Not(Contains("Recent")));
}

TEST_F(RecentTest, AReadOnlyIndexKeepsTheListAndItsFiles) {
    Pick(1000, 10);
    const CString strIndex = IndexFile();
    chmod((m_tree.Folder() / "Profiles/Recent/order.ini").c_str(), 0444);
    Menu().AddRecent(1010);
    Menu().DeleteRecent(4551);
    EXPECT_EQ(IndexFile(), strIndex);
    EXPECT_EQ(Rows().size(), 10U);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(m_tree.Read(Format("Recent/p%d.xml", i)), m_tree.Read(Format("A/p%d.xml", i)));
    }
}

TEST_F(RecentTest, AFolderInTheIndexsPlaceIsLeftAlone) {
    std::filesystem::remove(m_tree.Folder() / "Profiles/Recent/order.ini");
    std::filesystem::create_directories(m_tree.Folder() / "Profiles/Recent/order.ini/x");
    Menu().AddRecent(1000);
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_TRUE(std::filesystem::is_directory(m_tree.Folder() / "Profiles/Recent/order.ini/x"));
}

TEST_F(RecentTest, CopiesOfReadOnlyProfilesAreReadOnly) {
    chmod((m_tree.Folder() / "Profiles/A/p0.xml").c_str(), 0444);
    Menu().AddRecent(1000);
    EXPECT_THAT(Rows(), ElementsAre("p0.xml"));
    EXPECT_EQ(Menu().FindLevel2Item(4550)->m_strName, "");
    Menu().DeleteRecent(4550);
    EXPECT_THAT(m_tree.Names("Recent"), Contains("p0.xml"));
}

TEST_F(RecentTest, ACountBeyondAllSenseIsCutToWhatIsThere) {
    m_tree.Write("Recent/order.ini", "[Order]\r\nNum=2147483647\r\n0=p0.xml\r\n20000=x.xml\r\n");
    EXPECT_TRUE(Menu().LoadRecentList(m_tree.Folder() / "Profiles/Recent/order.ini"));
    EXPECT_EQ(Menu().Recent().m_iCount, 20001);
    m_tree.Write("Recent/order.ini", "[Order]\r\nNum=2147483647\r\n0=p0.xml\r\n");
    Menu().LoadRecentList(m_tree.Folder() / "Profiles/Recent/order.ini");
    EXPECT_EQ(Menu().Recent().m_iCount, 9999);
    m_tree.Write("Recent/order.ini", "[Order]\r\nNum=-2\r\n0=p0.xml\r\n");
    Menu().LoadRecentList(m_tree.Folder() / "Profiles/Recent/order.ini");
    EXPECT_EQ(Menu().Recent().m_iCount, 0);
}

TEST_F(RecentTest, AScrolledGroupStaysWithinItsRowsAfterARebuild) {
    Pick(1000, 10);
    Show();
    Open(1);
    for (int i = 0; i < 6; ++i) {
        Menu().OnScrollDown();
    }
    EXPECT_EQ(Menu().FindLevel1Item(4001)->m_iMenuCurSelectedPos, -6);
    Menu().DeleteRecent(4550);
    EXPECT_THAT(ShownRows(), IsEmpty());
    EXPECT_EQ(Menu().FindLevel1Item(4001)->m_iMenuCurSelectedPos, -5);
    Open(0);
    Open(1);
    EXPECT_THAT(ShownRows(), ElementsAre("p6.xml", "p7.xml", "p8.xml", "p9.xml"));
    EXPECT_EQ(StripLooks(), "u-");
}

TEST_F(RecentTest, ListRowsIdsAndFilesAgreeThroughManyPicks) {
    const std::size_t windows = TheDesktop().WindowCount();
    for (int i = 0; i < 150; ++i) {
        Menu().AddRecent(1000 + i * 7 % 12);
        std::set<CString> files = {"order.ini"};
        for (int k = 0; k < Menu().Recent().Size(); ++k) {
            const auto place = static_cast<std::size_t>(k);
            ASSERT_EQ(Menu().Recent().m_arrIDs[place], static_cast<UINT>(kFirstRecentID + k));
            files.insert(Menu().Recent().m_arrXml[place]);
            files.insert(Menu().Recent().m_arrPng[place]);
        }
        ASSERT_EQ(Rows(), Menu().Recent().m_arrXml);
        ASSERT_EQ(m_tree.Names("Recent"), files);
    }
    EXPECT_EQ(TheDesktop().WindowCount(), windows + 10);
}

}  // namespace
}  // namespace veldan
