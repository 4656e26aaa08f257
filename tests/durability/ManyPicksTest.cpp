#include "durability/Actor.h"
#include "durability/ListedTree.h"
#include "support/FaultyFileCalls.h"

#include <cstdlib>

#include <malloc.h>

namespace veldan {
namespace {

/// How many picks; the full number takes a while.
int Picks() {
    const char* pszPicks = std::getenv("VELDAN_STRESS_PICKS");
    return pszPicks ? std::max(1, std::atoi(pszPicks)) : 1'200;
}

std::set<CString> FilesOf(const std::vector<CString>& xmls) {
    std::set<CString> files = {"order.ini"};
    for (const CString& strXml : xmls) {
        files.insert({strXml, ListedTree::EntryOf(strXml).strPng});
    }
    return files;
}

TEST(ManyPicksTest, ListRowsAndFilesAgreeAfterEachAndMemoryStays) {
    const ListedTree tree;
    Actor actor(tree.Base());
    const testing::FaultyFileCalls calls;
    std::vector<CString> expected;
    std::size_t used = 0;
    for (int i = 0; i < Picks() && !::testing::Test::HasFailure(); ++i) {
        SCOPED_TRACE(i);
        // Steps of five visit all twelve; every thirteenth pick finds its profile in the list.
        const CString strXml = Format("p%d.xml", (i % 13 == 12 ? i - 1 : i) * 5 % 12);
        ASSERT_TRUE(Actor::Pick("Movies", strXml));
        EXPECT_EQ(std::exchange(actor.Host().picks, {}).size(), 1U);
        Desktop::Get().Dispatch();
        if (std::ranges::count(expected, strXml) == 0) {
            expected.push_back(strXml);
            expected.erase(expected.begin(), expected.end() - std::min<std::ptrdiff_t>(std::ssize(expected), 10));
        }
        EXPECT_EQ(tree.Read("Recent/order.ini"), ListedTree::IndexOf(expected));
        EXPECT_EQ(tree.Names("Recent"), FilesOf(expected));
        EXPECT_EQ(RowsFrom(kFirstRecentID), expected);
        EXPECT_EQ(Actor::Menu().Recent().m_iCount, std::ssize(expected));
        EXPECT_EQ(Actor::Menu().Recent().m_arrIDs.back(), kFirstRecentID + expected.size() - 1);
        if (i == 500) {
            used = mallinfo2().uordblks;
        }
    }
    EXPECT_EQ(tree.HarmIn("Recent"), "");
    if (Picks() > 500) {
        // A small thing lost at every pick would come to more.
        EXPECT_LT(mallinfo2().uordblks, used + 16'384);
    }
}

}  // namespace
}  // namespace veldan
