#include "durability/Actor.h"
#include "durability/ListedTree.h"
#include "support/FaultyFileCalls.h"

namespace veldan {
namespace {

using testing::FaultyFileCalls;
using Fault = FaultyFileCalls::Fault;

/// One operation on given lists; `act` finds its rows by name, so that it can be done again.
struct Operation {
    const char* pszName;
    std::vector<CString> recent;
    std::vector<CString> own;
    std::function<void()> act;
    /// Brings the same about where the operation was cut short halfway.
    std::function<void()> again;
    bool isPick = false;
};

std::ostream& operator<<(std::ostream& stream, const Operation& operation) {
    return stream << operation.pszName;
}

const std::vector<CString> kTen = {"p0.xml", "p1.xml", "p2.xml", "p3.xml", "p4.xml",
                                   "p5.xml", "p6.xml", "p7.xml", "p8.xml", "p9.xml"};

void RemoveU1() {
    Actor::Delete("u1.xml");
}

const Operation kOperations[] = {
    {"Append", {"p1.xml", "u1.xml"}, {"u1.xml"}, [] { Actor::Pick("Movies", "p2.xml"); }, {}, true},
    {"Evict", kTen, {}, [] { Actor::Pick("Movies", "p10.xml"); }, {}, true},
    {"PickOwn", {"p1.xml"}, {"u1.xml"}, [] { Actor::Pick("UserDefine", "u1.xml"); }, {}, true},
    {"DeleteRecent",
     {"p1.xml", "p2.xml"},
     {},
     [] { Actor::Menu().DeleteRecent(Actor::IDOf("Recent", "p1.xml")); },
     [] { Actor::Delete("p1.xml"); }},
    {"AddUserDefine", {}, {"u1.xml"}, [] { Actor::Menu().AddUserDefine("u2.xml"); }, {}},
    {"DeleteUserDefine",
     {"u1.xml", "u2.xml"},
     {"u1.xml", "u2.xml"},
     [] { Actor::Menu().DeleteUserDefine(Actor::IDOf("UserDefine", "u1.xml")); },
     RemoveU1},
    {"RemoveProfileByFile", {"p1.xml", "u1.xml"}, {"u1.xml", "u2.xml"}, RemoveU1, {}},
};

class FaultTest : public ::testing::TestWithParam<Operation> {
protected:
    void Restore() {
        m_tree.List("Recent", GetParam().recent);
        m_tree.List("UserDefine", GetParam().own);
        m_tree.Write("UserDefine/u2.xml", ListedTree::Content("u2.xml"));
        Actor::Menu().ReloadCatalogue();
        m_actor.Host().picks.clear();
    }
    [[nodiscard]] CString Recent() const { return m_tree.Read("Recent/order.ini"); }
    [[nodiscard]] CString Own() const { return m_tree.Read("UserDefine/order.ini"); }
    void ExpectNoHarm(bool withIcons = true) const {
        EXPECT_EQ(m_tree.HarmIn("Recent"), "");
        EXPECT_EQ(m_tree.HarmIn("UserDefine", withIcons), "");
        EXPECT_EQ(m_tree.Temporaries(), 0);
    }
    void ExpectAllDone() const {
        EXPECT_EQ(Recent(), m_recentAfter);
        EXPECT_EQ(Own(), m_ownAfter);
        ExpectNoHarm();
    }
    [[nodiscard]] std::set<CString> Files() const {
        std::set<CString> files = m_tree.Names("Recent");
        for (const CString& strName : m_tree.Names("UserDefine")) {
            files.insert("own " + strName);
        }
        return files;
    }

    /// Runs the operation without a fault and keeps both sides of it.
    int Learn() {
        Restore();
        m_recentBefore = Recent();
        m_ownBefore = Own();
        const FaultyFileCalls counted;
        GetParam().act();
        m_recentAfter = Recent();
        m_ownAfter = Own();
        if (GetParam().isPick) {
            m_recentBare = WithoutLastIcon(m_recentAfter);
        }
        m_filesAfter = Files();
        return counted.Calls();
    }

    void ActWithFault(Fault fault, int call) {
        Restore();
        const FaultyFileCalls faulty(fault, call);
        GetParam().act();
        EXPECT_FALSE(faulty.WasUnsyncedRename());
        EXPECT_EQ(m_actor.Host().picks.size(), GetParam().isPick ? 1U : 0U);
    }

    [[nodiscard]] static CString WithoutLastIcon(const CString& index) {
        std::vector<TreeEntry> entries = EntriesOf(index).value();
        entries.back().strPng.clear();
        return ProfileTree::Index(entries);
    }

    /// A profile whose icon can't be copied is entered without one. One of the user's names its icon all the same, so
    /// that may be missing.
    void ExpectOneOfBothSides() {
        EXPECT_TRUE(Recent() == m_recentBefore || Recent() == m_recentAfter || Recent() == m_recentBare) << Recent();
        EXPECT_TRUE(Own() == m_ownBefore || Own() == m_ownAfter) << Own();
        ExpectNoHarm(false);
    }

    void ExpectToSucceedAgain() {
        if (Recent() == m_recentBare) {
            return;
        }
        const FaultyFileCalls calls;
        Actor::Menu().ReloadCatalogue();
        (GetParam().again ? GetParam().again : GetParam().act)();
        ExpectAllDone();
        EXPECT_TRUE(std::ranges::includes(Files(), m_filesAfter)) << "a file is missing";
    }

    ListedTree m_tree{{"Movies"}, 11};
    Actor m_actor{m_tree.Base()};
    CString m_recentBefore;
    CString m_recentAfter;
    std::optional<CString> m_recentBare;  // the same without the icon of the profile picked
    CString m_ownBefore;
    CString m_ownAfter;
    std::set<CString> m_filesAfter;
};

TEST_P(FaultTest, ACallThatFailsLeavesOneSideOrTheOtherAndOneDoneInPartIsGoneOnWith) {
    const int calls = Learn();
    ASSERT_NE(m_recentBefore + m_ownBefore, m_recentAfter + m_ownAfter);
    for (const Fault fault :
         {Fault::NoSpace, Fault::NoPermission, Fault::InputOutput, Fault::Interrupted, Fault::Short}) {
        for (int call = 1; call <= calls && !HasFailure(); ++call) {
            SCOPED_TRACE(Format("fault %d at call %d", static_cast<int>(fault), call));
            ActWithFault(fault, call);
            if (fault == Fault::Interrupted || fault == Fault::Short) {
                ExpectAllDone();
                EXPECT_EQ(Files(), m_filesAfter);
            } else {
                ExpectOneOfBothSides();
                ExpectToSucceedAgain();
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, FaultTest, ::testing::ValuesIn(kOperations),
                         [](const auto& operation) { return std::string(operation.param.pszName); });

}  // namespace
}  // namespace veldan
