#include "durability/Actor.h"
#include "durability/ListedTree.h"
#include "support/FaultyFileCalls.h"

#include <gmock/gmock.h>

namespace veldan {
namespace {

using ::testing::ElementsAre;

/// A group of given names, each with its files.
class NamesTest : public ::testing::Test {
protected:
    void Fill(const std::vector<CString>& xmls) {
        std::vector<TreeEntry> entries;
        for (const CString& strXml : xmls) {
            entries.push_back({strXml, ListedTree::EntryOf(strXml).strPng});
            m_tree.Write("Movies/" + strXml, ListedTree::Content(strXml));
            m_tree.Write("Movies/" + entries.back().strPng, ListedTree::Content("x.png"));
        }
        m_tree.Write("Movies/order.ini", ProfileTree::Index(entries));
        m_pActor = std::make_unique<Actor>(m_tree.Base());
    }
    void PickAll(const std::vector<CString>& xmls) {
        const testing::FaultyFileCalls calls;
        for (const CString& strXml : xmls) {
            EXPECT_TRUE(Actor::Pick("Movies", strXml)) << strXml;
        }
    }

    ListedTree m_tree;
    std::unique_ptr<Actor> m_pActor;
};

TEST_F(NamesTest, EveryNameThatAnIndexCanHoldIsKeptExactly) {
    const std::vector<CString> xmls = {"Übung – 日本語 – العربية.xml",
                                       "with  blanks .. and.dots..xml",
                                       "R&D 'quoted' & `more`.xml",
                                       "100%d%s%n.xml",
                                       "]close[.xml",
                                       CString(251, 'x') + ".xml",
                                       "\xff\xfe not text.xml",
                                       "#hash!.xml",
                                       "(1) {2} [3].xml"};
    Fill(xmls);
    PickAll(xmls);
    EXPECT_EQ(m_tree.Read("Recent/order.ini"), ListedTree::IndexOf(xmls));
    EXPECT_EQ(m_tree.HarmIn("Recent"), "");
    EXPECT_EQ(RowsFrom(kFirstRecentID), xmls);
    for (const CString& strXml : xmls) {
        Actor::Delete(strXml);
    }
    EXPECT_EQ(m_tree.Read("Recent/order.ini"), ListedTree::IndexOf({}));
    EXPECT_EQ(m_tree.Names("Recent"), (std::set<CString>{"order.ini"}));
}

TEST_F(NamesTest, NamesThatTakeTheirIconsKeyAwayKeepTheirRowsAndHarmNoOther) {
    const std::vector<CString> xmls = {"p0.xml",    "a=b.xml", ";comment.xml", "[header].xml",
                                       "Num=7.xml", "2=x.xml", "p1.xml"};
    // By hand such a line is written last, since it ends the list for a reader.
    Fill({"p0.xml", "a=b.xml", ";comment.xml", "Num=7.xml", "2=x.xml", "p1.xml", "[header].xml"});
    PickAll(xmls);
    EXPECT_EQ(RowsFrom(kFirstRecentID), xmls);
    EXPECT_EQ(Actor::Menu().FindLevel2Item(kFirstRecentID + 6)->m_strPng, "p1.png");
    EXPECT_EQ(Actor::Menu().FindLevel2Item(kFirstRecentID + 1)->m_strPng, "");
    for (const CString& strXml : xmls) {
        EXPECT_EQ(m_tree.Read("Recent/" + strXml), ListedTree::Content(strXml));
    }
    Actor::Delete("[header].xml");
    Actor::Delete("a=b.xml");
    EXPECT_THAT(RowsFrom(kFirstRecentID), ElementsAre("p0.xml", ";comment.xml", "Num=7.xml", "2=x.xml", "p1.xml"));
    EXPECT_TRUE(m_tree.Has("Recent/p0.png"));
}

TEST_F(NamesTest, NamesThatAreKeysThemselvesLeaveTheOtherRows) {
    const std::vector<CString> xmls = {"p0.xml", "0", "1", "Num", "p1.xml"};
    Fill({"p0.xml", "p1.xml"});
    m_tree.Write("UserDefine/0", ListedTree::Content("0"));
    const testing::FaultyFileCalls calls;
    for (const CString& strXml : xmls) {
        Actor::Menu().AddUserDefine(strXml);
    }
    EXPECT_EQ(RowsFrom(kFirstUserDefineID), xmls);
    Actor::Delete("0");
    EXPECT_THAT(RowsFrom(kFirstUserDefineID), ElementsAre("p0.xml", "1", "Num", "p1.xml"));
}

TEST_F(NamesTest, NamesThatLeadElsewhereTouchNothingThere) {
    Fill({"p0.xml"});
    m_tree.Write("keep.xml", "keep");
    const std::vector<TreeEntry> entries = {{"../keep.xml", "..\\keep.xml"}, {"order.ini", "ORDER.INI"}, {"..", "."}};
    m_tree.Write("Movies/order.ini", ProfileTree::Index(entries));
    Actor::Menu().ReloadCatalogue();
    PickAll({"../keep.xml", "order.ini", ".."});
    EXPECT_EQ(m_tree.Read("Recent/order.ini"), ProfileTree::Index(entries));
    Actor::Delete("order.ini");
    Actor::Delete("..");
    EXPECT_EQ(m_tree.Read("Recent/order.ini"), ProfileTree::Index({entries[0]}));
    EXPECT_EQ(m_tree.Read("keep.xml"), "keep");
    EXPECT_EQ(m_tree.Names("Recent"), (std::set<CString>{"order.ini"}));
}

}  // namespace
}  // namespace veldan
