#include "durability/Actor.h"
#include "durability/ListedTree.h"
#include "support/FaultyFileCalls.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <random>

#include <sys/mman.h>
#include <sys/wait.h>

namespace veldan {
namespace {

constexpr int kProcesses = 4;
constexpr int kProfiles = 40;
constexpr int kMostRecent = 10;

struct Shared {
    std::atomic<int> begunPicks;
    /// Set once an operation took so long that it may have gone on without its lock, as it is meant to after a second.
    std::atomic<bool> isLockGivenUp;
    char complaint[1000];
};

/// How many operations each process does; more for a longer run.
int Rounds() {
    const char* pszRounds = std::getenv("VELDAN_STRESS_ROUNDS");
    return pszRounds ? std::max(1, std::atoi(pszRounds)) : 80;
}

bool Names(const std::vector<TreeEntry>& entries, const CString& strXml) {
    return std::ranges::find(entries, strXml, &TreeEntry::strXml) != entries.end();
}

/// One of the processes. It works on names that no other one uses, so it knows what has become of them.
class Worker {
public:
    Worker(const ListedTree& tree, Shared& shared, int number)
        : m_tree(tree),
          m_shared(shared),
          m_strGroup(Format("G%d", number)),
          m_iNumber(number),
          m_random(static_cast<unsigned>(number)),
          m_actor(tree.Base()) {}

    bool Work() {
        const testing::FaultyFileCalls calls;
        for (int i = 0; i < Rounds() && m_shared.complaint[0] == '\0'; ++i) {
            const auto begin = std::chrono::steady_clock::now();
            DoSomething(i);
            if (std::chrono::steady_clock::now() - begin >= std::chrono::seconds(1)) {
                m_shared.isLockGivenUp = true;
            }
            CheckRecent();
            CheckOwn();
        }
        return m_shared.complaint[0] == '\0';
    }

private:
    /// A pick that ended, and how many had begun until then.
    struct Picked {
        CString strXml;
        int begun;
    };

    void DoSomething(int round) {
        const unsigned what = m_random() % 10;
        if (what < 6) {
            Pick(m_strGroup + Format("-%d.xml", round % kProfiles));
        } else if (what < 8 && !m_picked.empty()) {
            m_strDeleted = m_picked.front().strXml;
            m_picked.erase(m_picked.begin());
            Actor::Delete(m_strDeleted);
        } else if (what < 9) {
            const CString strXml = Format("u%d-%d.xml", m_iNumber, round);
            m_tree.Write("UserDefine/" + strXml, ListedTree::Content(strXml));
            Actor::Menu().AddUserDefine(strXml);
            m_own.push_back(strXml);
        } else if (!m_own.empty()) {
            Actor::Delete(m_own.front());
            m_own.erase(m_own.begin());
        }
    }

    void Pick(const CString& strXml) {
        std::erase_if(m_picked, [&](const Picked& picked) { return picked.strXml == strXml; });
        m_strDeleted = m_strDeleted == strXml ? CString() : m_strDeleted;
        const int begun = ++m_shared.begunPicks;
        Actor::Pick(m_strGroup, strXml);
        // Where it was in the list already, its place there is older than this pick.
        if (!Names(m_seen, strXml)) {
            m_picked.push_back({strXml, begun});
        }
    }

    /// A pick falls out of the list after as many others as the list holds, of which some may have been under way.
    [[nodiscard]] bool MayBeEvicted(const Picked& picked) const {
        return m_shared.begunPicks - picked.begun + kProcesses - 1 >= kMostRecent;
    }

    void CheckRecent() {
        const CString index = m_tree.Read("Recent/order.ini");
        const std::optional<std::vector<TreeEntry>> entries = EntriesOf(index);
        if (!entries) {
            Complain("torn: " + index);
            return;
        }
        m_seen = *entries;
        for (const Picked& picked : m_picked) {
            if (!Names(*entries, picked.strXml) && !MayBeEvicted(picked)) {
                ComplainOfLoss("lost " + picked.strXml);
            }
        }
        std::erase_if(m_picked, [this](const Picked& picked) { return MayBeEvicted(picked); });
        if (!m_strDeleted.empty() && Names(*entries, m_strDeleted)) {
            ComplainOfLoss("back again: " + m_strDeleted);
        }
    }

    void CheckOwn() {
        const std::optional<std::vector<TreeEntry>> entries = EntriesOf(m_tree.Read("UserDefine/order.ini"));
        std::vector<CString> own;
        for (const TreeEntry& entry : entries.value_or(std::vector<TreeEntry>())) {
            if (entry.strXml.starts_with(Format("u%d-", m_iNumber))) {
                own.push_back(entry.strXml);
            }
        }
        if (!entries || own != m_own) {
            ComplainOfLoss("profiles of the user's aren't as they were left");
        }
    }

    void ComplainOfLoss(const CString& what) {
        if (!m_shared.isLockGivenUp) {
            Complain(what);
        }
    }
    void Complain(const CString& what) {
        std::snprintf(m_shared.complaint, sizeof m_shared.complaint, "%s", what.c_str());
    }

    const ListedTree& m_tree;
    Shared& m_shared;
    CString m_strGroup;
    int m_iNumber;
    std::mt19937 m_random;
    Actor m_actor;
    std::vector<Picked> m_picked;
    std::vector<TreeEntry> m_seen;
    std::vector<CString> m_own;
    CString m_strDeleted;
};

TEST(ManyProcessesTest, LoseNoEntryOfEachOtherAndTearNothing) {
    const ListedTree tree({"G0", "G1", "G2", "G3"}, kProfiles);
    void* pMemory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto& shared = *new (pMemory) Shared{};
    for (int number = 0; number < kProcesses; ++number) {
        if (fork() == 0) {
            _exit(Worker(tree, shared, number).Work() ? 0 : 1);
        }
    }
    int good = 0;
    for (int left = kProcesses; left > 0;) {
        for (const CString& strGroup : {CString("Recent"), CString("UserDefine")}) {
            const CString before = tree.Read(strGroup + "/order.ini");
            const CString harm = tree.HarmIn(strGroup);
            ASSERT_TRUE(EntriesOf(before)) << before;
            // Files may go between two looks, but not while the index names them.
            ASSERT_TRUE(harm.empty() || before != tree.Read(strGroup + "/order.ini")) << harm;
        }
        usleep(500);
        int status = 0;
        if (waitpid(-1, &status, WNOHANG) > 0) {
            --left;
            good += WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 1 : 0;
        }
    }
    EXPECT_EQ(good, kProcesses) << shared.complaint;
    EXPECT_EQ(tree.Temporaries(), 0);
    RecordProperty("LockGivenUp", shared.isLockGivenUp ? 1 : 0);
    RecordProperty("Picks", shared.begunPicks);
}

}  // namespace
}  // namespace veldan
