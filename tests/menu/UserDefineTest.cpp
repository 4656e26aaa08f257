#include "menu/ListsFixture.h"

namespace veldan {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using UserDefineTest = ListsTest;

TEST_F(UserDefineTest, ANameThatIsThereOnlyRenewsTheIcon) {
    Add("A-1.xml");
    const CString strIndex = OwnIndex();
    const MenuItem* pRow = Menu().FindLevel2Item(4600);
    m_tree.Write("UserDefine/large_DefaultN.png", "spoilt");
    Add("A-1.xml");
    EXPECT_EQ(OwnIndex(), strIndex);
    EXPECT_EQ(Menu().FindLevel2Item(4600), pRow);
    EXPECT_TRUE(pRow->m_pButton->HasImage());
    EXPECT_EQ(m_tree.Read("UserDefine/large_DefaultN.png"), m_tree.Read("UserDefine/large_Default.png"));
}

TEST_F(UserDefineTest, ADeletedProfileTakesItsFilesAndItsRecentEntryAlong) {
    Add("A-1.xml");
    Add("B-1.xml");
    Pick(4600, 2);
    Pick(1000);
    EXPECT_EQ(Menu().RemoveProfileByFile("x\\y/A-1.xml"), 1);
    EXPECT_THAT(OwnRows(), ElementsAre("B-1.xml"));
    EXPECT_THAT(m_tree.Names("UserDefine"),
                ElementsAre("B-1.xml", "large_Default.png", "large_DefaultN.png", "order.ini"));
    EXPECT_THAT(Menu().UserDefine().m_arrXml, ElementsAre("B-1.xml"));
    Menu().RemoveProfileByFile("p0.xml");
    EXPECT_THAT(RecentRows(), ElementsAre("B-1.xml")) << "an entry of another group goes by its name alone";
    EXPECT_THAT(m_tree.Names("A"), Contains("p0.xml"));
    EXPECT_THAT(m_tree.Names("Recent"), ElementsAre("B-1.xml", "large_DefaultN.png", "order.ini"));
    Menu().RemoveProfileByFile("B-1.xml");
    EXPECT_EQ(OwnIndex(), "\xef\xbb\xbf[Order]\r\nNum=0\r\n");
    EXPECT_THAT(m_tree.Names("UserDefine"), ElementsAre("large_Default.png", "order.ini"));
    EXPECT_THAT(m_tree.Names("Recent"), ElementsAre("order.ini"));
}

TEST_F(UserDefineTest, IdsBehindADeletedEntryFall) {
    for (const char* pszName : {"A.xml", "B.xml", "C.xml"}) {
        Add(pszName);
    }
    Menu().DeleteUserDefine(4600);
    EXPECT_THAT(OwnRows(), ElementsAre("B.xml", "C.xml"));
    EXPECT_THAT(Menu().UserDefine().m_arrIDs, ElementsAre(4600U, 4601U));
    EXPECT_NE(OwnIndex().find("1=C.xml"), CString::npos);
    Menu().DeleteUserDefine(4607);
    EXPECT_THAT(OwnRows(), ElementsAre("B.xml", "C.xml"));
}

TEST_F(UserDefineTest, AllBlankRowsGoTogetherAndNothingElse) {
    Add("A-1.xml");
    m_tree.Write("UserDefine/order.ini", "[Order]\r\nNum=5\r\n2=A-1.xml\r\nA-1.xml=large_DefaultN.png\r\n");
    m_tree.Write("Recent/order.ini", "[Order]\r\nNum=3\r\n");
    Menu().ReloadCatalogue();
    EXPECT_EQ(OwnRows().size(), 5U);
    Menu().RemoveProfileByFile(m_tree.Base() + "/Profiles/UserDefine/");
    EXPECT_THAT(OwnRows(), ElementsAre("A-1.xml"));
    EXPECT_THAT(RecentRows(), IsEmpty());
    EXPECT_THAT(m_tree.Names("UserDefine"), Contains("A-1.xml"));
}

TEST_F(UserDefineTest, WithoutTheGroupTheIndexIsKeptAllTheSame) {
    m_tree.Groups({"A", "Recent"});
    VELDAN_ReleaseProfileMenus();
    Init();
    ASSERT_EQ(Menu().GetUserDefineGroupID(), -1);
    Add("A-1.xml");
    EXPECT_THAT(OwnRows(), IsEmpty());
    EXPECT_NE(OwnIndex().find("0=A-1.xml"), CString::npos);
    Menu().OnSmallMenuButtonItemChange(static_cast<WPARAM>(Menu().GetUserDefineGroupID()), 0);
    Menu().RemoveProfileByFile("A-1.xml");
    EXPECT_EQ(OwnIndex(), "\xef\xbb\xbf[Order]\r\nNum=0\r\n");
    EXPECT_THAT(m_tree.Names("UserDefine"), Contains("A-1.xml")) << "no row tells that the file was the entry's";
}

TEST_F(UserDefineTest, APickOfWhatTheHostTakesOutEntersNoOther) {
    Add("A-1.xml");
    Add("B-1.xml");
    Show();
    m_host.onPick = [] { Menu().RemoveProfileByFile("A-1.xml"); };
    Menu().OnItemClick(kFirstUserDefineID, 0);
    EXPECT_THAT(OwnRows(), ElementsAre("B-1.xml"));
    EXPECT_THAT(RecentRows(), IsEmpty());
}

TEST_F(UserDefineTest, NamesThatDifferInCaseShareTheirFileAndNobodyOwnsTheStockIcon) {
    Add("a.xml");
    Add("A.XML");
    EXPECT_EQ(OwnRows().size(), 2U);
    Menu().RemoveProfileByFile("A.XML");
    EXPECT_THAT(OwnRows(), ElementsAre("a.xml"));
    EXPECT_THAT(m_tree.Names("UserDefine"), Contains("a.xml"));
    m_tree.Write("UserDefine/order.ini", ProfileTree::Index({{"a.xml", "large_Default.png"}}));
    Menu().ReloadCatalogue();
    Menu().RemoveProfileByFile("a.xml");
    EXPECT_THAT(m_tree.Names("UserDefine"), Contains("large_Default.png"));
    EXPECT_EQ(m_tree.Names("UserDefine").count("a.xml"), 0U);
}

}  // namespace
}  // namespace veldan
