#include "durability/Actor.h"
#include "durability/ListedTree.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace veldan {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;

namespace fs = std::filesystem;

/// A pick, an entry made and one deleted, on a tree where some of that can't be done. The host must hear of the pick.
class BadTreesTest : public ::testing::Test {
protected:
    BadTreesTest() {
        m_tree.List("Recent", {"p1.xml"});
        m_tree.List("UserDefine", {"u1.xml", "u2.xml"});
        m_tree.Write("UserDefine/u3.xml", ListedTree::Content("u3.xml"));
    }

    [[nodiscard]] CString PathOf(const CString& strName) const { return m_tree.Folder() / ("Profiles/" + strName); }
    void MakeFolder(const CString& strName) const {
        fs::remove_all(PathOf(strName));
        fs::create_directories(PathOf(strName + "/inside"));
    }
    void MoveElsewhere(const CString& strName) const {
        const fs::path elsewhere = m_tree.Folder() / ("elsewhere/" + strName);
        fs::create_directories(elsewhere.parent_path());
        fs::rename(PathOf(strName), elsewhere);
        fs::create_symlink(elsewhere, PathOf(strName));
    }
    void DoEverything() {
        Actor actor(m_tree.Base());
        EXPECT_TRUE(Actor::Pick("Movies", "p2.xml"));
        EXPECT_THAT(actor.Host().picks, ElementsAre(EndsWith("\\Profiles\\Movies\\p2.xml")));
        Actor::Menu().AddUserDefine("u3.xml");
        Actor::Delete("u1.xml");
    }
    /// What both indexes name and nothing else is harmed.
    void ExpectLists(const CString& recent, const CString& own) const {
        EXPECT_EQ(Recent(), recent);
        EXPECT_EQ(Own(), own);
        EXPECT_EQ(m_tree.HarmIn("Recent"), "");
        EXPECT_EQ(m_tree.HarmIn("UserDefine"), "");
        EXPECT_EQ(m_tree.Temporaries(), 0);
    }
    [[nodiscard]] CString Recent() const { return m_tree.Read("Recent/order.ini"); }
    [[nodiscard]] CString Own() const { return m_tree.Read("UserDefine/order.ini"); }

    ListedTree m_tree;
};

TEST_F(BadTreesTest, ReadOnlyIndexesStayAndSoDoTheFilesThatTheyName) {
    const CString recent = Recent();
    const CString own = Own();
    chmod(PathOf("Recent/order.ini").c_str(), 0444);
    chmod(PathOf("UserDefine/order.ini").c_str(), 0444);
    DoEverything();
    ExpectLists(recent, own);
    EXPECT_TRUE(m_tree.Has("UserDefine/u3.xml"));
}

TEST_F(BadTreesTest, AReadOnlyTreeStaysAsItIs) {
    for (const auto& entry : fs::recursive_directory_iterator(m_tree.Folder().Path())) {
        if (entry.is_regular_file()) {
            fs::permissions(entry.path(), fs::perms{0444});
        }
    }
    for (const char* pszGroup : {"Recent", "UserDefine"}) {
        chmod(PathOf(pszGroup).c_str(), 0555);
    }
    const CString recent = Recent();
    const CString own = Own();
    const std::set<CString> files = m_tree.Names("UserDefine");
    DoEverything();
    EXPECT_EQ(Recent(), recent);
    EXPECT_EQ(Own(), own);
    EXPECT_EQ(m_tree.Names("UserDefine"), files);
    EXPECT_EQ(m_tree.Temporaries(), 0);
    for (const char* pszGroup : {"Recent", "UserDefine"}) {
        chmod(PathOf(pszGroup).c_str(), 0755);
    }
}

TEST_F(BadTreesTest, MissingIndexesComeIntoBeingAndMissingFoldersDont) {
    fs::remove(PathOf("Recent/order.ini"));
    fs::remove(PathOf("UserDefine/order.ini"));
    DoEverything();
    ExpectLists(ListedTree::IndexOf({"p2.xml"}), ListedTree::IndexOf({"u3.xml"}));
    EXPECT_TRUE(m_tree.Has("UserDefine/u1.xml")) << "no entry named it";
    fs::remove_all(PathOf("Recent"));
    fs::remove_all(PathOf("UserDefine"));
    DoEverything();
    EXPECT_FALSE(m_tree.Has("Recent") || m_tree.Has("UserDefine"));
}

TEST_F(BadTreesTest, FoldersInPlaceOfFilesStayWithAllThatIsInThem) {
    MakeFolder("Recent/p2.xml");
    MakeFolder("UserDefine/u1.xml");
    MakeFolder("UserDefine/large_DefaultN.png");
    DoEverything();
    EXPECT_EQ(Recent(), ListedTree::IndexOf({"p1.xml"}));
    EXPECT_EQ(Own(), ListedTree::IndexOf({"u2.xml", "u3.xml"}));
    for (const char* pszFolder : {"Recent/p2.xml", "UserDefine/u1.xml", "UserDefine/large_DefaultN.png"}) {
        EXPECT_TRUE(m_tree.Has(CString(pszFolder) + "/inside")) << pszFolder;
    }
    EXPECT_EQ(m_tree.HarmIn("Recent"), "");
}

TEST_F(BadTreesTest, ProfileThatIsNamedLikeATemporaryFileIsNoTemporaryFile) {
    const CString strNamed = ".veldan-tmp-7-0123456789abcdef";
    m_tree.Write("UserDefine/" + strNamed, ListedTree::Content(strNamed));
    m_tree.Write("UserDefine/order.ini", ListedTree::IndexOf({strNamed}));
    m_tree.Write("UserDefine/.veldan-tmp-8-0123456789abcdef", "left behind");
    DoEverything();
    EXPECT_TRUE(m_tree.Has("UserDefine/" + strNamed));
    EXPECT_FALSE(m_tree.Has("UserDefine/.veldan-tmp-8-0123456789abcdef"));
}

TEST_F(BadTreesTest, GroupsThatAreLinksAreReadAndNothingIsWrittenThere) {
    m_tree.Write("Recent/.veldan-tmp-1-0123456789abcdef", "somebody's own");
    for (const char* pszGroup : {"Recent", "UserDefine"}) {
        MoveElsewhere(pszGroup);
    }
    const CString recent = Recent();
    const CString own = Own();
    const std::set<CString> files = m_tree.Names("Recent");
    DoEverything();
    EXPECT_EQ(Recent(), recent);
    EXPECT_EQ(Own(), own);
    EXPECT_EQ(m_tree.Names("Recent"), files);
    EXPECT_TRUE(m_tree.Has("UserDefine/u1.xml"));
}

TEST_F(BadTreesTest, IndexesThatAreLinksStayLinksToTheSame) {
    const CString recent = Recent();
    const CString own = Own();
    for (const char* pszIndex : {"Recent/order.ini", "UserDefine/order.ini"}) {
        MoveElsewhere(pszIndex);
    }
    DoEverything();
    ExpectLists(recent, own);
    EXPECT_TRUE(fs::is_symlink(PathOf("Recent/order.ini")));
    EXPECT_TRUE(fs::is_symlink(PathOf("UserDefine/order.ini")));
}

TEST_F(BadTreesTest, FoldersInPlaceOfIndexesAreEmptyLists) {
    MakeFolder("Recent/order.ini");
    MakeFolder("UserDefine/order.ini");
    DoEverything();
    EXPECT_TRUE(m_tree.Has("Recent/order.ini/inside"));
    EXPECT_TRUE(m_tree.Has("UserDefine/order.ini/inside"));
    EXPECT_TRUE(m_tree.Has("UserDefine/u1.xml"));
    EXPECT_EQ(m_tree.Temporaries(), 0);
}

}  // namespace
}  // namespace veldan
