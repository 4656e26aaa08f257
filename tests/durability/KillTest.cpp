#include "durability/Actor.h"
#include "durability/ListedTree.h"
#include "support/FaultyFileCalls.h"

#include <atomic>
#include <random>

#include <sys/mman.h>
#include <sys/wait.h>

namespace veldan {
namespace {

enum class StepKind { Pick, Add, Delete };

struct Step {
    StepKind kind;
    CString strXml;
};

/// What a process that is about to be killed tells of its work, in memory that outlives it.
struct Report {
    std::atomic<int> begun;
    std::atomic<int> done;
    /// Files in the making that the first operation left, or -1 before it ended.
    std::atomic<int> leftovers;
};

/// The lists as they must be.
struct Lists {
    std::vector<CString> recent;
    std::vector<CString> own;

    void Apply(const Step& step) {
        if (step.kind == StepKind::Pick) {
            const bool isKnown = !step.strXml.starts_with("u") || std::ranges::count(own, step.strXml) > 0;
            if (isKnown && std::ranges::count(recent, step.strXml) == 0) {
                recent.push_back(step.strXml);
                recent.erase(recent.begin(), recent.end() - std::min<std::ptrdiff_t>(std::ssize(recent), 10));
            }
        } else if (step.kind == StepKind::Add) {
            own.push_back(step.strXml);
        } else {
            std::erase(own, step.strXml);
            std::erase(recent, step.strXml);
        }
    }
};

class KillTest : public ::testing::Test {
protected:
    static constexpr int kPicks = 500;
    static constexpr int kOwn = 100;
    /// A process ends between two steps after so many, or a fast machine would get through with a few kills.
    static constexpr int kMostSteps = 12;

    KillTest() {
        for (int i = 0; i < kOwn; ++i) {
            m_tree.Write("UserDefine/" + Own(i), ListedTree::Content(Own(i)));
        }
        void* pMemory = mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        m_pReport = new (pMemory) Report{};
        PlanSteps();
    }

    static CString Own(int number) { return Format("u%d.xml", number); }
    int Random(std::ptrdiff_t below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }

    /// Every profile of the user's is added once and later deleted once, with picks everywhere between.
    void PlanSteps() {
        std::vector<CString> standing;
        for (int added = 0, picks = 0; picks < kPicks || !standing.empty();) {
            const CString strOwn =
                standing.empty() ? "" : standing[static_cast<std::size_t>(Random(std::ssize(standing)))];
            if (picks < kPicks && Random(5) > 0) {
                const bool isOwn = !standing.empty() && Random(3) == 0;
                m_steps.push_back({StepKind::Pick, isOwn ? strOwn : Format("p%d.xml", Random(12))});
                ++picks;
            } else if (added < kOwn && standing.size() < 8) {
                standing.push_back(Own(added++));
                m_steps.push_back({StepKind::Add, standing.back()});
            } else if (!standing.empty()) {
                m_steps.push_back({StepKind::Delete, strOwn});
                std::erase(standing, strOwn);
            }
        }
    }

    /// Works from a step on until it has done its share or the process is killed.
    [[noreturn]] void Work(int first, int fatalCall) {
        const Actor actor(m_tree.Base());
        const testing::FaultyFileCalls calls(testing::FaultyFileCalls::Fault::Killed, fatalCall);
        const int end = std::min(first + kMostSteps, static_cast<int>(std::ssize(m_steps)));
        for (int i = first; i < end; ++i) {
            m_pReport->begun = i + 1;
            const bool isDone = Perform(m_steps[static_cast<std::size_t>(i)]);
            m_pReport->done = i + 1;
            if (isDone && m_pReport->leftovers < 0) {
                m_pReport->leftovers = m_tree.Temporaries();
            }
        }
        _exit(0);
    }
    static bool Perform(const Step& step) {
        if (step.kind == StepKind::Pick) {
            return Actor::Pick(step.strXml.starts_with("u") ? "UserDefine" : "Movies", step.strXml);
        }
        if (step.kind == StepKind::Add) {
            Actor::Menu().AddUserDefine(step.strXml);
        } else {
            Actor::Delete(step.strXml);
        }
        return true;
    }

    /// Leaves it to be waited for, so that its number can't come to another process meanwhile.
    static bool HasEnded(pid_t child) {
        siginfo_t info = {};
        return waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid != 0;
    }

    /// Lets a process work until it is killed, at a call about a file or at any moment. Returns the first step that
    /// isn't done.
    int WorkUntilKilled(int first) {
        m_pReport->begun = m_pReport->done = first;
        m_pReport->leftovers = -1;
        const int fatalCall = Random(3) == 0 ? 0 : 1 + Random(500);
        const int pause = Random(8000);
        const pid_t child = fork();
        if (child == 0) {
            Work(first, fatalCall);
        }
        if (fatalCall == 0) {
            while (m_pReport->begun == first && !HasEnded(child)) {
                usleep(100);
            }
            usleep(static_cast<useconds_t>(pause));
            kill(child, SIGKILL);
        }
        waitpid(child, nullptr, 0);
        return m_pReport->done;
    }

    /// Brings the model up to what was done, and to the better of the two sides of the step that was cut short.
    void Follow(int first) {
        for (int i = first; i < m_pReport->done; ++i) {
            m_lists.Apply(m_steps[static_cast<std::size_t>(i)]);
        }
        const CString recent = m_tree.Read("Recent/order.ini");
        const CString own = m_tree.Read("UserDefine/order.ini");
        if (m_pReport->begun > m_pReport->done) {
            Lists after = m_lists;
            after.Apply(m_steps[static_cast<std::size_t>(m_pReport->done)]);
            if (own == ListedTree::IndexOf(after.own)) {
                m_lists.own = after.own;
                if (recent == ListedTree::IndexOf(after.recent)) {
                    m_lists.recent = after.recent;
                }
            }
        }
        EXPECT_EQ(recent, ListedTree::IndexOf(m_lists.recent));
        EXPECT_EQ(own, ListedTree::IndexOf(m_lists.own));
    }

    void ExpectNothingLost() {
        EXPECT_EQ(m_tree.HarmIn("Recent"), "");
        EXPECT_EQ(m_tree.HarmIn("UserDefine"), "");
        EXPECT_LE(m_pReport->leftovers, 0);
        for (auto step = m_steps.begin() + m_pReport->begun; step != m_steps.end(); ++step) {
            if (step->kind == StepKind::Delete) {
                EXPECT_EQ(m_tree.Read("UserDefine/" + step->strXml), ListedTree::Content(step->strXml));
            }
        }
    }

    std::mt19937 m_random{20'221};
    ListedTree m_tree;
    Report* m_pReport = nullptr;
    std::vector<Step> m_steps;
    Lists m_lists;
};

TEST_F(KillTest, NothingIsLostWhateverMomentTheProcessIsKilledAt) {
    int kills = 0;
    int stepsCutShort = 0;
    for (int first = 0; first < std::ssize(m_steps) && !HasFailure();) {
        SCOPED_TRACE(Format("after kill %d, from step %d", ++kills, first));
        const int next = WorkUntilKilled(first);
        Follow(first);
        ExpectNothingLost();
        stepsCutShort += m_pReport->begun > next ? 1 : 0;
        // A step that was cut short isn't tried again.
        first = std::max(next, m_pReport->begun.load());
    }
    EXPECT_GT(stepsCutShort, 50);
    EXPECT_EQ(m_steps.size(), 700U);
}

}  // namespace
}  // namespace veldan
