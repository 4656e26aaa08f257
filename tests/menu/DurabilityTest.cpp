#include "menu/MenuFixture.h"
#include "support/FaultyFileCalls.h"

#include <gmock/gmock.h>

#include <array>
#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

namespace veldan {
namespace {

using ::testing::Each;
using testing::FaultyFileCalls;
using ::testing::Not;
using ::testing::StartsWith;
using Fault = FaultyFileCalls::Fault;

/// The ways in which the call of this number is made to fail: without success for one reason or another, and with some.
std::array<Fault, 3> FaultsOf(int call) {
    constexpr std::array kReasons = {Fault::NoSpace, Fault::InputOutput, Fault::NoPermission};
    return {kReasons[static_cast<std::size_t>(call) % kReasons.size()], Fault::Short, Fault::Interrupted};
}

/// "A" has fifteen profiles with the ids from 1000, "Recent" nine of them, "UserDefine" three of its own, of which the
/// first is a recent one, too.
class DurabilityTest : public MenuTest {
protected:
    DurabilityTest() {
        m_tree.Groups({"A", "Recent", "UserDefine"});
        m_tree.Fill("A", 15);
        m_tree.Write("UserDefine/large_Default.png", ProfileTree::Icon(RGB(1, 1, 1)));
        std::filesystem::create_directories(m_tree.Folder() / "Profiles/Recent");
        Init();
        for (const char* pszName : {"U0.xml", "U1.xml", "U2.xml"}) {
            m_tree.Write(CString("UserDefine/") + pszName, ProfileTree::Profile(pszName, ""));
            Menu().AddUserDefine(pszName);
        }
        Menu().AddRecent(4600);
        for (int id = 1000; id < 1009; ++id) {
            Menu().AddRecent(id);
        }
        std::filesystem::copy(m_tree.Folder() / "Profiles", m_tree.Folder() / "Backup",
                              std::filesystem::copy_options::recursive);
    }

    /// Puts the files back as they were at the start.
    void Restore() {
        for (const char* pszGroup : {"Recent", "UserDefine"}) {
            const CString strTarget = m_tree.Folder() / CString("Profiles/") + pszGroup;
            std::filesystem::remove_all(strTarget);
            // Files are only ever replaced, so links keep the originals.
            std::filesystem::copy(
                m_tree.Folder() / CString("Backup/") + pszGroup, strTarget,
                std::filesystem::copy_options::recursive | std::filesystem::copy_options::create_hard_links);
        }
        Menu().ReloadCatalogue();
    }

    /// Whether every file that a group's index names is there and whole.
    void ExpectWhole(const CString& strGroup, ProfileList list) {
        ASSERT_TRUE(list.Load(m_tree.Folder() / ("Profiles/" + strGroup + "/order.ini")));
        for (std::size_t i = 0; i < list.m_arrXml.size(); ++i) {
            const CString& strXml = list.m_arrXml[i];
            EXPECT_EQ(m_tree.Read(strGroup + "/" + strXml), Original(strXml)) << strGroup << strXml;
            EXPECT_EQ(m_tree.Read(strGroup + "/" + list.m_arrPng[i]), Original(list.m_arrPng[i])) << strGroup;
        }
    }

    /// Runs an operation with each of its file calls failing in each way, and looks at what then stands on the disk.
    void FailEveryCall(const CString& strGroup, const std::function<void()>& operation) {
        Restore();
        const CString strBefore = m_tree.Read(strGroup + "/order.ini");
        int calls = 0;
        {
            const FaultyFileCalls counter;
            operation();
            calls = counter.Calls();
            EXPECT_FALSE(counter.WasUnsyncedRename());
        }
        const CString strAfter = m_tree.Read(strGroup + "/order.ini");
        ASSERT_GT(calls, 10);
        ASSERT_NE(strAfter, strBefore);
        for (int call = 1; call <= calls; ++call) {
            for (const Fault fault : FaultsOf(call)) {
                Restore();
                {
                    const FaultyFileCalls faulty(fault, call);
                    operation();
                }
                const CString strIndex = m_tree.Read(strGroup + "/order.ini");
                ASSERT_TRUE(strIndex == strBefore || strIndex == strAfter) << call << strIndex;
                ExpectWhole("Recent", RecentList());
                ExpectWhole("UserDefine", UserDefineList());
                ASSERT_FALSE(HasFailure()) << "call " << call << " fault " << static_cast<int>(fault);
            }
            const FaultyFileCalls sound;
            Menu().AddRecent(1013);
            ASSERT_THAT(m_tree.Names("Recent"), Each(Not(StartsWith("."))));
        }
    }

    /// Lets a child do something over and over until it is killed.
    static pid_t Start(const std::function<void(int round)>& work) {
        const pid_t child = fork();
        if (child == 0) {
            for (int round = 0;; ++round) {
                work(round);
            }
        }
        return child;
    }

    [[nodiscard]] CString Original(const CString& strName) const {
        const CString strA = m_tree.Read("A/" + strName);
        if (!strA.empty()) {
            return strA;
        }
        return strName.ends_with(".png") ? m_tree.Read("UserDefine/large_Default.png")
                                         : ProfileTree::Profile(strName, "");
    }
};

TEST_F(DurabilityTest, AFailingCallLeavesTheRecentListWhole) {
    FailEveryCall("Recent", [] { Menu().AddRecent(1012); });
    FailEveryCall("Recent", [] { Menu().DeleteRecent(4550); });
}

TEST_F(DurabilityTest, AFailingCallLeavesTheUserDefinedListWhole) {
    m_tree.Folder().Write("Backup/UserDefine/U3.xml", ProfileTree::Profile("U3.xml", ""));
    FailEveryCall("UserDefine", [] { Menu().AddUserDefine("U3.xml"); });
    FailEveryCall("UserDefine", [] { Menu().RemoveProfileByFile("U0.xml"); });
}

TEST_F(DurabilityTest, AProcessThatIsKilledLeavesWholeLists) {
    for (int i = 0; i < 30; ++i) {
        const pid_t child = Start([](int round) {
            const CString strName = Format("U%d.xml", round % 3);
            Menu().AddRecent(1000 + round % 15);
            Menu().AddUserDefine(strName);
            Menu().AddRecent(4600);
            Menu().DeleteRecent(4550);
        });
        ASSERT_GT(child, 0);
        usleep(static_cast<useconds_t>(1000 + i * 1733 % 20000));
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
        ExpectWhole("Recent", RecentList());
        ExpectWhole("UserDefine", UserDefineList());
    }
    Menu().ReloadCatalogue();
    Menu().DeleteRecent(4550);
    Menu().AddUserDefine("U0.xml");
    EXPECT_THAT(m_tree.Names("Recent"), Each(Not(StartsWith("."))));
    EXPECT_THAT(m_tree.Names("UserDefine"), Each(Not(StartsWith("."))));
}

TEST_F(DurabilityTest, PicksOfSeveralProcessesAreAllEntered) {
    m_tree.Write("Recent/order.ini", "");
    std::vector<pid_t> children;
    for (int i = 0; i < 4; ++i) {
        children.push_back(fork());
        if (children.back() == 0) {
            for (int round = 0; round < 20; ++round) {
                Menu().AddRecent(1000 + 2 * i + round % 2);
            }
            _exit(0);
        }
    }
    for (const pid_t child : children) {
        // The index is whole at every look, whoever writes.
        int status = 0;
        while (waitpid(child, &status, WNOHANG) == 0) {
            ExpectWhole("Recent", RecentList());
        }
        EXPECT_EQ(status, 0);
    }
    RecentList list;
    ASSERT_TRUE(list.Load(m_tree.Folder() / "Profiles/Recent/order.ini"));
    std::ranges::sort(list.m_arrXml);
    EXPECT_THAT(list.m_arrXml,
                ::testing::ElementsAre("p0.xml", "p1.xml", "p2.xml", "p3.xml", "p4.xml", "p5.xml", "p6.xml", "p7.xml"));
}

}  // namespace
}  // namespace veldan
