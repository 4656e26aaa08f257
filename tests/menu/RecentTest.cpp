#include "menu/ListsFixture.h"

#include <sys/stat.h>

namespace veldan {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using RecentTest = ListsTest;

TEST_F(RecentTest, AProfileThatIsThereKeepsItsPlaceAndItsCopy) {
    Pick(1000, 2);
    const CString strCopy = m_tree.Read("Recent/p0.xml");
    const CString strIndex = RecentIndex();
    EXPECT_EQ(Menu().FindLevel2Item(4551)->m_strName, "Name p1");
    m_tree.Write("A/p0.xml", "changed");
    Pick(1000);
    // The one of another group with the same file name, and the row of the copy itself.
    Pick(1012);
    Pick(4550);
    EXPECT_EQ(RecentIndex(), strIndex);
    EXPECT_EQ(m_tree.Read("Recent/p0.xml"), strCopy);
}

TEST_F(RecentTest, AListMadeLongerByHandKeepsItsLength) {
    std::vector<TreeEntry> entries;
    for (int i = 0; i < 60; ++i) {
        entries.push_back({Format("x%d.xml", i), "x.png"});
    }
    m_tree.Write("Recent/order.ini", ProfileTree::Index(entries));
    m_tree.Write("Recent/x.png", "icon");
    Pick(1000);
    EXPECT_EQ(Menu().Recent().Size(), 60);
    EXPECT_EQ(Menu().Recent().m_arrXml.front(), "x1.xml");
    EXPECT_EQ(RecentRows().size(), 50U);
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

TEST_F(RecentTest, OnlyFilesThatRowAndListAgreeOnGo) {
    Pick(1000, 3);
    m_tree.Write("Recent/order.ini",
                 ProfileTree::Index({{"p2.xml", "p2.png"}, {"p1.xml", "p1.png"}, {"p0.xml", "p0.png"}}));
    Menu().DeleteRecent(4550);
    EXPECT_THAT(RecentRows(), ElementsAre("p1.xml", "p0.xml"));
    EXPECT_THAT(m_tree.Names("Recent"), Contains("p2.xml"));
    EXPECT_THAT(m_tree.Names("Recent"), Contains("p0.xml"));
    Menu().DeleteRecent(4559);
    EXPECT_EQ(Menu().Recent().m_iCount, 2);
    EXPECT_THAT(RecentRows(), ElementsAre("p1.xml", "p0.xml"));
}

TEST_F(RecentTest, AnEntryWhoseFilesAreGoneOrTooLargeIsOneAllTheSame) {
    std::filesystem::remove(PathOf("A/p0.xml"));
    std::filesystem::remove(PathOf("A/p0.png"));
    std::filesystem::resize_file(PathOf("A/p1.xml"), 16 * 1024 * 1024 + 1);
    std::filesystem::resize_file(PathOf("A/p1.png"), 1024 * 1024 + 1);
    std::filesystem::resize_file(PathOf("A/p2.xml"), 16 * 1024 * 1024);
    std::filesystem::resize_file(PathOf("A/p2.png"), 1024 * 1024);
    for (const char* pszName : {"p0.xml", "p0.png", "p1.xml", "p1.png"}) {
        m_tree.Write(CString("Recent/") + pszName, "left behind");
    }
    Pick(1000, 3);
    EXPECT_EQ(RecentIndex(), ProfileTree::Index({{"p0.xml", "p0.png"}, {"p1.xml", "p1.png"}, {"p2.xml", "p2.png"}}));
    EXPECT_THAT(m_tree.Names("Recent"), ElementsAre("order.ini", "p2.png", "p2.xml"));
    EXPECT_FALSE(Menu().FindLevel2Item(4550)->m_pButton->HasImage());
    EXPECT_EQ(Menu().FindLevel2Item(4552)->m_strName, "Name p2");
}

TEST_F(RecentTest, ReadOnlySourcesGiveCopiesOfThePersonsAndReadOnlyCopiesGo) {
    chmod(PathOf("A/p0.xml").c_str(), 0444);
    Pick(1000, 9);
    EXPECT_EQ(Menu().FindLevel2Item(4550)->m_strName, "Name p0");
    // As copies were before they got a write bit, and what somebody put there by hand.
    chmod(PathOf("Recent/p0.xml").c_str(), 0444);
    chmod(PathOf("Recent/p1.png").c_str(), 0444);
    m_tree.Write("Recent/mine.xml", "mine");
    Pick(1009, 2);
    EXPECT_EQ(m_tree.Names("Recent").count("p0.xml"), 0U) << "it fell out of the list";
    Menu().DeleteRecent(4550);
    EXPECT_EQ(m_tree.Names("Recent").count("p1.png"), 0U);
    EXPECT_EQ(m_tree.Read("Recent/mine.xml"), "mine");
    m_tree.Write("A/p0.xml", ProfileTree::Profile("Renewed", ""));
    Pick(1000);
    EXPECT_EQ(Menu().FindLevel2Item(4559)->m_strName, "Renewed");
}

TEST_F(RecentTest, AFileInTheWayIsNotTakenForTheCopy) {
    const CString strIndex = RecentIndex();
    const CString strXml = m_tree.Write("Recent/p0.xml", "somebody's own");
    const CString strPng = m_tree.Write("Recent/p1.png", "somebody's own");
    chmod(strXml.c_str(), 0444);
    chmod(strPng.c_str(), 0444);
    Pick(1000);
    EXPECT_EQ(RecentIndex(), strIndex);
    std::filesystem::remove(PathOf("A/p0.xml"));
    Pick(1000);
    EXPECT_EQ(RecentIndex(), strIndex) << "nor where there is nothing to copy";
    Pick(1001);
    EXPECT_EQ(RecentIndex(), ProfileTree::Index({{"p1.xml", ""}}));
    EXPECT_EQ(m_tree.Read("Recent/p0.xml") + m_tree.Read("Recent/p1.png"), "somebody's ownsomebody's own");
}

TEST_F(RecentTest, ARowOfItsOwnThatAnotherHostTookOutChangesNothingAndGoes) {
    std::filesystem::create_symlink("Recent", PathOf("C"));
    m_tree.Groups({"A", "Recent", "UserDefine", "B", "C", "RECENT"});
    m_tree.Write("B/order.ini", ProfileTree::Index({{"linked.xml", ""}}));
    std::filesystem::create_hard_link(PathOf("A/p0.xml"), PathOf("B/linked.xml"));
    std::filesystem::create_hard_link(PathOf("A/p0.xml"), PathOf("Recent/linked.xml"));
    m_tree.Write("Recent/q.xml", "picked by the other host");
    const CString strBefore = ProfileTree::Index({{"p0.xml", ""}});
    const CString strAfter = ProfileTree::Index({{"q.xml", ""}});
    // The row itself, one whose file is a link to one there, and those of folders that lead there.
    for (const int id : {4550, 1012, 1013, 1014}) {
        m_tree.Write("Recent/order.ini", strBefore);
        Menu().ReloadCatalogue();
        m_tree.Write("Recent/order.ini", strAfter);
        Pick(id);
        EXPECT_EQ(RecentIndex(), strAfter) << id;
        EXPECT_THAT(RecentRows(), ElementsAre("q.xml")) << id;
        EXPECT_THAT(m_tree.Names("Recent"), ElementsAre("linked.xml", "order.ini", "q.xml")) << id;
    }
}

TEST_F(RecentTest, WithoutItsFolderTheGroupComesOutEmpty) {
    Pick(1000, 2);
    std::filesystem::remove_all(PathOf("Recent"));
    Pick(1005);
    EXPECT_THAT(RecentRows(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(PathOf("Recent")));
}

TEST_F(RecentTest, ACountBeyondAllSenseIsCutToWhatIsThere) {
    const std::pair<const char*, int> cases[] = {{"2147483647\r\n20000=x.xml", 20001}, {"2147483647", 9999}, {"-2", 0}};
    for (const auto& [count, entries] : cases) {
        const CString strIndex =
            m_tree.Write("Recent/order.ini", CString("[Order]\r\n0=p0.xml\r\nNum=") + count + "\r\n");
        EXPECT_TRUE(Menu().LoadRecentList(strIndex));
        EXPECT_EQ(Menu().Recent().m_iCount, entries) << count;
    }
}

TEST_F(RecentTest, AnIndexWhoseEntriesShareAHugeNameStaysAsItIs) {
    CString index = "[Order]\r\nNum=100\r\nx=" + CString(200'000, 'y') + "\r\n";
    for (int i = 0; i < 100; ++i) {
        index += std::to_string(i) + "=x\r\n";
    }
    m_tree.Write("Recent/order.ini", index);
    Pick(1000);
    EXPECT_TRUE(RecentIndex() == index);
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

}  // namespace
}  // namespace veldan
